// XMLContentProcessor: the receiver of the events of EnumerateXML. A caller derives from it and
// overrides the events it wants; every event has an empty body here.
//
// The provider given to the constructor selects the dialect of the walk (null: plain) and is not owned.
// Events come in document order: NameFound before the value or the entry of each field (never inside a
// list), then one value event, or an entry, the content and the matching exit. An exception thrown by
// an event passes to the caller of EnumerateXML, except in the plain dialect's text path, where it counts
// as a failed value (see EnumerateXML.hpp).
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

namespace TavoXML {
class TypeInfoProvider;
}

class TAVOXMLUTILS_API XMLContentProcessor {
public:
    explicit XMLContentProcessor(TavoXML::TypeInfoProvider const* provider) noexcept;
    virtual ~XMLContentProcessor();

    TavoXML::TypeInfoProvider const* GetAttributeProvider() const noexcept;

    virtual void NameFound(Tavo::UniString const& name);
    virtual void BoolFound(bool value);
    virtual void IntFound(long long value);
    virtual void UIntFound(unsigned long long value);
    virtual void RealFound(double value);
    virtual void StringFound(Tavo::UniString const& value);
    virtual void ObjectEntered();
    virtual void ObjectExited();
    virtual void ListEntered();
    virtual void ListExited();

protected:
    XMLContentProcessor(XMLContentProcessor const&) = default;
    XMLContentProcessor& operator=(XMLContentProcessor const&) = default;

private:
    TavoXML::TypeInfoProvider const* provider;
};
