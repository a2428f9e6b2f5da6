// Inputs that the fuzz target of the reader found or that stress it, walked as the fuzz target walks
// them, with the cursor rules checked on every token: peeking and HasXMLTag leave the cursor where it
// was, and every token is an element or the document's end.
#include "reader/ReaderTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"

#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>
#include <xercesc/util/XMLString.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

// Names that survive the way to 8-bit text: those the reader can be asked for by name.
bool Survives(std::string const& name, XMLCh const* original) {
    return Tavo::UniString(name.c_str()) == Tavo::UniString(original);
}

std::string NameOf(XMLCh const* name) {
    return std::string(Tavo::UniString(name).ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0).Get());
}

void ReadEverythingAt(TavoXML::DOMReader& reader, std::string const& name) {
    xercesc::DOMNode* const node = reader.GetActualNode();
    Tavo::UniString text;
    reader.ReadXMLCDATAString(text);
    char bytes[8];
    reader.ReadXMLCDATAHexToBin(bytes, sizeof bytes);
    if (xercesc::DOMNamedNodeMap* attributes = node->getAttributes()) {
        for (XMLSize_t index = 0; index < attributes->getLength(); ++index) {
            std::string const attribute = NameOf(attributes->item(index)->getNodeName());
            double real = 0;
            bool flag = false;
            char buffer[3];
            XMLCh const* const original = attributes->item(index)->getNodeName();
            bool const ascii = std::all_of(original, original + xercesc::XMLString::stringLen(original),
                                           [](XMLCh c) { return c < 0x80; });
            EXPECT_TRUE(reader.HasXMLAttr(attribute.c_str()) || !ascii) << attribute;
            reader.ReadXMLAttr(attribute.c_str(), real);
            reader.ReadXMLAttr(attribute.c_str(), flag);
            reader.ReadXMLAttr(attribute.c_str(), buffer, sizeof buffer);
        }
    }
    Tavo::ClassVersion version;
    reader.ReadXMLVersionAttr(version);
    EXPECT_EQ(reader.GetActualNode(), node) << "attribute and section reads do not move the cursor";

    // Values by name through a reader on the parent, where the ring holds this element.
    xercesc::DOMNode* const parent = node->getParentNode();
    if (parent != nullptr && parent->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
        TavoXML::DOMReader onParent(static_cast<xercesc::DOMElement*>(parent), nullptr);
        int number = 0;
        char buffer[4];
        Tavo::Guid guid;
        EXPECT_TRUE(onParent.HasXMLTag(name.c_str()) || !Survives(name, node->getNodeName())) << name;
        onParent.ReadXML(name.c_str(), text);
        onParent.ReadXML(name.c_str(), number);
        onParent.ReadXML(name.c_str(), buffer, sizeof buffer);
        onParent.ReadXML(name.c_str(), guid);
    }
}

void Walk(std::string const& bytes) {
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(
        reinterpret_cast<unsigned char const*>(bytes.data()), static_cast<unsigned int>(bytes.size()),
        Tavo::XMLNoTopLevelTag, TavoXML::ReturnNullOnError);
    if (channel == nullptr) {
        return;
    }
    auto& reader = static_cast<TavoXML::DOMReader&>(*channel);
    int tokens = 0;
    do {
        ++tokens;
        std::string const before = ReaderTest::Token(reader);
        Tavo::UniString name;
        reader.GetNextTokenTypeName(name);
        reader.HasXMLTag(NameOf(name.GetU16Str()).c_str());
        ASSERT_EQ(ReaderTest::Token(reader), before);
        if (reader.GetTokenTypeName(name) == Tavo::XMLStartToken) {
            ReadEverythingAt(reader, NameOf(name.GetU16Str()));
        }
    } while (reader.ReadToken() == Tavo::NoError);
    EXPECT_EQ(ReaderTest::Token(reader), "E:#document");
    EXPECT_GE(tokens, 2);
    TavoXML::DisposeXMLIChannel(channel);
}

} // namespace

TEST(FuzzRegression, StoredInputsWalkCleanly) {
    // No stored input may reach the network: without a net accessor, URLs of external entities fail.
    delete xercesc::XMLPlatformUtils::fgNetAccessor;
    xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;

    int inputs = 0;
    for (auto const& entry : std::filesystem::directory_iterator(TAVO_TEST_DATA_DIR "/reader/fuzz")) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream in(entry.path(), std::ios::binary);
        Walk(std::string(std::istreambuf_iterator<char>(in), {}));
        ++inputs;
    }
    EXPECT_GE(inputs, 2);
}
