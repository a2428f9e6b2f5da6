// Inputs that the reader's fuzz target found, walked as it walks them: peeking, HasXMLTag and the value
// readers leave the cursor where it was, and the walk ends on the document.
#include "reader/ReaderTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::string NameOf(XMLCh const* name) {
    return std::string(Tavo::UniString(name).ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0).Get());
}

// Every value reader at a start token: those on attributes and sections must not move the cursor.
void ReadEverythingAt(TavoXML::DOMReader& reader) {
    xercesc::DOMNode* const node = reader.GetActualNode();
    Tavo::UniString text;
    reader.ReadXMLCDATAString(text);
    char bytes[8];
    reader.ReadXMLCDATAHexToBin(bytes, sizeof bytes);
    xercesc::DOMNamedNodeMap* const attributes = node->getAttributes();
    for (XMLSize_t index = 0; attributes != nullptr && index < attributes->getLength(); ++index) {
        double real = 0;
        reader.ReadXMLAttr(NameOf(attributes->item(index)->getNodeName()).c_str(), real);
    }
    EXPECT_EQ(reader.GetActualNode(), node);
}

void Walk(std::string const& bytes) {
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(
        reinterpret_cast<unsigned char const*>(bytes.data()), static_cast<unsigned int>(bytes.size()),
        Tavo::XMLNoTopLevelTag, TavoXML::ReturnNullOnError);
    if (channel == nullptr) {
        return;
    }
    auto& reader = static_cast<TavoXML::DOMReader&>(*channel);
    do {
        std::string const before = ReaderTest::Token(reader);
        Tavo::UniString name;
        reader.GetNextTokenTypeName(name);
        reader.HasXMLTag(NameOf(name.GetU16Str()).c_str());
        ASSERT_EQ(ReaderTest::Token(reader), before);
        if (reader.GetTokenTypeName(name) == Tavo::XMLStartToken) {
            ReadEverythingAt(reader);
        }
    } while (reader.ReadToken() == Tavo::NoError);
    EXPECT_EQ(ReaderTest::Token(reader), "E:#document");
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
