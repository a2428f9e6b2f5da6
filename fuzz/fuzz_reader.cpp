// libFuzzer target of the input channel: arbitrary bytes are opened with CreateXMLIChannelFromMemory,
// and every token is walked. On each start token the element's name is read back as text, as numbers,
// as bool, as a bounded 8-bit text and as a Guid (by a second reader standing on the parent, so that the
// walk itself is not moved), its attributes are read in every form and its CDATA section as text and as
// hex bytes. The channel's messages are harvested by a guard at the end.
#include "TavoRoot/Array.hpp"
#include "TavoRoot/Guid.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

// The name of a node as 8-bit text in the default character code, as the channel takes names.
std::string NameOf(XMLCh const* name) {
    Tavo::UniString::CStrHolder const text =
        Tavo::UniString(name).ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0);
    return std::string(text.Get());
}

// Every element reader on `name`; the cursor of `reader` moves as the reads say.
void ReadElementValues(Tavo::XMLIChannel& reader, char const* name) {
    Tavo::UniString text;
    reader.ReadXML(name, text);
    int number = 0;
    reader.ReadXML(name, number);
    unsigned long long wide = 0;
    reader.ReadXML(name, wide);
    double real = 0;
    reader.ReadXML(name, real);
    char small = 0;
    reader.ReadXML(name, small);
    bool flag = false;
    reader.ReadXML(name, flag);
    char buffer[8];
    reader.ReadXML(name, buffer, sizeof buffer);
    Tavo::Guid guid;
    reader.ReadXML(name, guid);
    reader.HasXMLTag(name);
}

// Every attribute reader on every attribute of the element under the cursor, plus one that is missing.
void ReadAttributes(TavoXML::DOMReader& reader) {
    std::vector<std::string> names{"Mv", "no-such-attribute"};
    if (xercesc::DOMNamedNodeMap* attributes = reader.GetActualNode()->getAttributes()) {
        for (XMLSize_t index = 0; index < attributes->getLength(); ++index) {
            names.push_back(NameOf(attributes->item(index)->getNodeName()));
        }
    }
    for (std::string const& name : names) {
        reader.HasXMLAttr(name.c_str());
        Tavo::UniString text;
        reader.ReadXMLAttr(name.c_str(), text);
        int number = 0;
        reader.ReadXMLAttr(name.c_str(), number);
        unsigned char byte = 0;
        reader.ReadXMLAttr(name.c_str(), byte);
        double real = 0;
        reader.ReadXMLAttr(name.c_str(), real);
        bool flag = false;
        reader.ReadXMLAttr(name.c_str(), flag);
        char buffer[4];
        reader.ReadXMLAttr(name.c_str(), buffer, sizeof buffer);
        Tavo::Guid guid;
        reader.ReadXMLAttr(name.c_str(), guid);
    }
    Tavo::ClassVersion version;
    reader.ReadXMLVersionAttr(version);
}

void ReadSections(TavoXML::DOMReader& reader) {
    Tavo::UniString text;
    reader.ReadXMLCDATAString(text);
    char bytes[16];
    reader.ReadXMLCDATAHexToBin(bytes, sizeof bytes);
    char shortText[6];
    reader.ReadXMLCDATAString(shortText, sizeof shortText);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(
        data, static_cast<unsigned int>(size), Tavo::XMLNoTopLevelTag, TavoXML::ReturnNullOnError);
    Tavo::Array<Tavo::UniString> messages;
    TavoXML::XMLIChannelGuard guard(&channel, &messages);
    if (channel == nullptr) {
        return 0;
    }
    auto& reader = static_cast<TavoXML::DOMReader&>(*channel);
    Vesk::Location location;
    reader.GetLocation(location);
    // The root is read by its own name from its end token, where the ring holds it; a second reader
    // does that, so that the walk below starts at the beginning.
    if (auto* root = static_cast<xercesc::DOMElement*>(reader.GetActualNode())) {
        TavoXML::DOMReader onRoot(root, nullptr);
        std::string const rootName = NameOf(root->getNodeName());
        onRoot.ReadEndElement(rootName.c_str());
        ReadElementValues(onRoot, rootName.c_str());
    }
    do {
        reader.GetActLineNumber();
        reader.GetNextTokenType();
        Tavo::UniString name;
        if (reader.GetTokenTypeName(name) != Tavo::XMLStartToken) {
            continue;
        }
        std::string const name8 = NameOf(name.GetU16Str());
        ReadAttributes(reader);
        ReadSections(reader);
        reader.HasXMLTag(name8.c_str());
        xercesc::DOMNode* parent = reader.GetActualNode()->getParentNode();
        if (parent != nullptr && parent->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
            TavoXML::DOMReader onParent(static_cast<xercesc::DOMElement*>(parent), nullptr);
            ReadElementValues(onParent, name8.c_str());
        }
    } while (reader.ReadToken() == Tavo::NoError);
    return 0;
}
