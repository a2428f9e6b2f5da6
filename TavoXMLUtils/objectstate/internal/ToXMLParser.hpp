// ToXMLParser: the Tavo::ObjectState::Processor behind CreateFromObjectState. It writes each event of
// Enumerate to an output channel in the plain dialect (no provider) or the typed dialect.
//
// State: a stack of the containers now open (a value is a list element exactly when the top is
// ListTouched; the state's root, with an empty stack, counts as an object) and two single flags:
// listUntouched (a list was entered and no scalar list element written since) and objectUntouched (an
// object was entered and no scalar written since). The flags decide the subtype attribute of homogeneous
// lists and the empty text node of empty structures; they are single members, so a nested entry
// overwrites what the outer level set.
//
// The constructor writes WriteStartDocument, the destructor WriteEndDocument. Channel statuses are not
// looked at; exceptions of the channel pass through. Entering a container beyond MaxObjectStateDepth
// levels, or a provider word that is null where one is needed, throws XMLObjectStateException.
#pragma once

#include "TavoRoot/Array.hpp"
#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/String.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"

#include <cstdint>

namespace TavoXML::detail {

class ToXMLParser final : public Tavo::ObjectState::Processor {
public:
    enum LastTouched : std::int32_t { ListTouched = 0, ObjectTouched = 1 };

    ToXMLParser(Tavo::XMLOChannel& channel, TypeInfoProvider const* provider);
    ToXMLParser(ToXMLParser const&) = delete;
    ToXMLParser& operator=(ToXMLParser const&) = delete;
    // An exception from WriteEndDocument ends the process: a destructor can't let it pass.
    ~ToXMLParser() override;

    void BoolFound(Tavo::String const& name, bool value) override;
    void IntFound(Tavo::String const& name, long long value) override;
    void UIntFound(Tavo::String const& name, unsigned long long value) override;
    void RealFound(Tavo::String const& name, double value) override;
    void StringFound(Tavo::String const& name, Tavo::UniString const& value) override;
    void ObjectEntered(Tavo::String const& name) override;
    void ObjectExited(Tavo::String const& name) override;
    void ListEntered(Tavo::String const& name) override;
    void ListExited(Tavo::String const& name) override;

private:
    bool InList() const noexcept;
    // Type name of a kind in the typed dialect (null in the plain one); `word` is the provider's getter.
    char const* TypeName(char const* (TypeInfoProvider::*word)() const) const;
    void ScalarFound(Tavo::String const& name, Tavo::UniString const& text, char const* typeName);
    void WriteElement(char const* name, Tavo::UniString const& text, char const* typeName);
    void WriteListElement(Tavo::UniString const& text, char const* typeName);
    void WriteStructureStartElement(char const* name, char const* typeName);
    void Push(LastTouched kind);
    void Exit(bool& untouched);

    Tavo::XMLOChannel& channel;
    TypeInfoProvider const* provider;
    Tavo::Array<LastTouched> openContainers;
    bool listUntouched;
    bool objectUntouched;
};

} // namespace TavoXML::detail
