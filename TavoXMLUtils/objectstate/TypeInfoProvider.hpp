// TavoXML::TypeInfoProvider: the caller's description of the typed XML vocabulary of an object state.
//
// Passing a provider to CreateFromObjectState, EnumerateXML or ConvertToObjectState selects the typed
// dialect; null selects the plain dialect, where element names are field names and no type is written.
// In the typed dialect every element carries one attribute, GetTypeAttributeName(). With
// GetTagContent() 0 the element is named after the field and the attribute holds the type name; with
// any other value the element is named after the type and the attribute holds the field name.
//
// A provider is only read, through const operations without arguments; it keeps no state that the
// library changes, and may serve several conversions at once. The names it returns must stay valid for
// the provider's life. A provider with GetTagContent() 0 that serves lists must override
// GetListValueTag; a homogeneous one must override GetListSubtypeAttribute. The writer refuses a null
// name where it needs one with an XMLObjectStateException.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

namespace TavoXML {

class TAVOXMLUTILS_API TypeInfoProvider {
public:
    TypeInfoProvider() = default;
    virtual ~TypeInfoProvider();

    // All elements of a list have one type, told once by GetListSubtypeAttribute on the list's element.
    // False by default.
    virtual bool AreListsHomogeneous() const;
    // 0 (the default): element name = field name, attribute = type name. Otherwise the reverse.
    virtual int GetTagContent() const;
    virtual char const* GetTypeAttributeName() const = 0;
    virtual char const* GetBoolTypeName() const = 0;
    virtual char const* GetIntTypeName() const = 0;
    virtual char const* GetUIntTypeName() const = 0;
    virtual char const* GetRealTypeName() const = 0;
    virtual char const* GetStringTypeName() const = 0;
    virtual char const* GetObjectTypeName() const = 0;
    virtual char const* GetListTypeName() const = 0;
    // Element name of a list element when GetTagContent() is 0; null by default.
    virtual char const* GetListValueTag() const;
    // Attribute on a homogeneous list's element that tells the common type; null by default.
    virtual char const* GetListSubtypeAttribute() const;

protected:
    TypeInfoProvider(TypeInfoProvider const&) = default;
    TypeInfoProvider& operator=(TypeInfoProvider const&) = default;
};

} // namespace TavoXML
