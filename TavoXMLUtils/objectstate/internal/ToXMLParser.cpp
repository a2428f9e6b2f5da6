// ToXMLParser: one event of Tavo::ObjectState::Enumerate becomes elements on the output channel.
#include "TavoXMLUtils/objectstate/internal/ToXMLParser.hpp"

#include "TavoRoot/Numbers.hpp"
#include "TavoRoot/XMLTag.hpp"
#include "TavoXMLUtils/objectstate/internal/ObjectStateChecks.hpp"

namespace TavoXML::detail {

namespace {

// The element name of a scalar or structure in a plain-dialect list.
constexpr char gListValue[] = "list_value";

} // namespace

ToXMLParser::ToXMLParser(Tavo::XMLOChannel& channel, TypeInfoProvider const* provider)
    : channel(channel), provider(provider), listUntouched(false), objectUntouched(false) {
    channel.WriteStartDocument();
}

ToXMLParser::~ToXMLParser() {
    channel.WriteEndDocument();
}

void ToXMLParser::BoolFound(Tavo::String const& name, bool value) {
    ScalarFound(name, Tavo::UniString(value ? "true" : "false"),
                TypeName(&TypeInfoProvider::GetBoolTypeName));
}

void ToXMLParser::IntFound(Tavo::String const& name, long long value) {
    ScalarFound(name, Tavo::ValueToUniString(value), TypeName(&TypeInfoProvider::GetIntTypeName));
}

void ToXMLParser::UIntFound(Tavo::String const& name, unsigned long long value) {
    ScalarFound(name, Tavo::ValueToUniString(value), TypeName(&TypeInfoProvider::GetUIntTypeName));
}

void ToXMLParser::RealFound(Tavo::String const& name, double value) {
    ScalarFound(name, Tavo::ValueToUniString(value), TypeName(&TypeInfoProvider::GetRealTypeName));
}

void ToXMLParser::StringFound(Tavo::String const& name, Tavo::UniString const& value) {
    ScalarFound(name, value, TypeName(&TypeInfoProvider::GetStringTypeName));
}

void ToXMLParser::ObjectEntered(Tavo::String const& name) {
    CheckObjectStateDepth(openContainers.GetSize());
    // In the plain dialect a list element's own name is dropped; the typed dialect keeps the name that
    // Enumerate gives it ("list_value" for every list element).
    if (!provider && InList()) {
        WriteStructureStartElement(gListValue, nullptr);
    } else {
        WriteStructureStartElement(name.ToCStr(), TypeName(&TypeInfoProvider::GetObjectTypeName));
    }
    openContainers.Push(ObjectTouched);
    objectUntouched = true;
}

void ToXMLParser::ObjectExited(Tavo::String const&) {
    Exit(objectUntouched);
}

void ToXMLParser::ListEntered(Tavo::String const& name) {
    CheckObjectStateDepth(openContainers.GetSize());
    openContainers.Push(ListTouched);
    listUntouched = true;
    // A list keeps its name inside a list in both dialects; the reader takes it for a list by content.
    WriteStructureStartElement(name.ToCStr(), TypeName(&TypeInfoProvider::GetListTypeName));
}

void ToXMLParser::ListExited(Tavo::String const&) {
    Exit(listUntouched);
}

bool ToXMLParser::InList() const noexcept {
    return !openContainers.IsEmpty() && openContainers[openContainers.GetSize() - 1] == ListTouched;
}

char const* ToXMLParser::TypeName(char const* (TypeInfoProvider::*word)() const) const {
    return provider ? RequiredProviderWord((provider->*word)(), "a type name") : nullptr;
}

void ToXMLParser::ScalarFound(Tavo::String const& name, Tavo::UniString const& text, char const* typeName) {
    if (InList()) {
        WriteListElement(text, typeName);
    } else {
        WriteElement(name.ToCStr(), text, typeName);
    }
}

void ToXMLParser::WriteElement(char const* name, Tavo::UniString const& text, char const* typeName) {
    if (!provider) {
        channel.WriteXML(name, text);
    } else {
        bool const byType = provider->GetTagContent() != 0;
        Tavo::Array<Tavo::XMLTag::XMLAttribute> attributes;
        attributes.Push(Tavo::XMLTag::XMLAttribute(
            RequiredProviderWord(provider->GetTypeAttributeName(), "GetTypeAttributeName"),
            byType ? name : typeName));
        Tavo::XMLTag tag(channel, byType ? typeName : name, &attributes);
        channel.WriteXMLTextNode(text);
    }
    objectUntouched = false;
}

void ToXMLParser::WriteListElement(Tavo::UniString const& text, char const* typeName) {
    if (!provider) {
        channel.WriteXML(gListValue, text);
    } else {
        bool const byType = provider->GetTagContent() != 0;
        char const* elementName =
            byType ? typeName : RequiredProviderWord(provider->GetListValueTag(), "GetListValueTag");
        Tavo::Array<Tavo::XMLTag::XMLAttribute> attributes;
        if (provider->AreListsHomogeneous()) {
            // The common type goes once onto the list's own element, the innermost one open now.
            if (listUntouched) {
                channel.WriteXMLAttr(
                    RequiredProviderWord(provider->GetListSubtypeAttribute(), "GetListSubtypeAttribute"),
                    typeName, 0);
            }
        } else if (!byType) {
            attributes.Push(Tavo::XMLTag::XMLAttribute(
                RequiredProviderWord(provider->GetTypeAttributeName(), "GetTypeAttributeName"), typeName));
        }
        Tavo::XMLTag tag(channel, elementName, &attributes);
        channel.WriteXMLTextNode(text);
    }
    listUntouched = false;
    objectUntouched = false;
}

void ToXMLParser::WriteStructureStartElement(char const* name, char const* typeName) {
    if (!provider) {
        channel.WriteStartElement(name);
        return;
    }
    bool const byType = provider->GetTagContent() != 0;
    channel.WriteStartElement(byType ? typeName : name);
    channel.WriteXMLAttr(RequiredProviderWord(provider->GetTypeAttributeName(), "GetTypeAttributeName"),
                         byType ? name : typeName, 0);
}

void ToXMLParser::Exit(bool& untouched) {
    openContainers.Pop();
    // An empty structure holds an empty text node.
    if (untouched) {
        channel.WriteXMLTextNode("", 0);
    }
    untouched = false;
    channel.WriteEndElement();
}

} // namespace TavoXML::detail
