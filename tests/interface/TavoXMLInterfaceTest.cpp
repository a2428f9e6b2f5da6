#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <string>

using namespace TavoXML;

namespace {

std::string const kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>";

// The message of the XMLOChannelException that `factory` throws, or "no exception".
template <class Factory>
std::string ThrownMessage(Factory const& factory) {
    try {
        Tavo::XMLOChannel* channel = factory();
        DisposeXMLOChannel(channel);
        return "no exception";
    } catch (XMLOChannelException const& e) {
        EXPECT_EQ(e.GetErrorCode(), -36);
        EXPECT_STREQ(e.GetFile(), "TavoXMLInterface");
        EXPECT_EQ(e.GetPrevious(), nullptr) << "the caught exception is not attached";
        return e.GetMessage().ToCStr().Get();
    }
}

} // namespace

TEST(OutputFactories, ChannelsExportTheirDocumentAndFileChannelsWriteWhenDisposed) {
    Tavo::XMLOChannel* channel = CreateXMLOChannel("root", ReturnNullOnError);
    ASSERT_NE(channel, nullptr);
    channel->WriteXML("v", 1);
    channel->WriteEndDocument();
    std::string const expected = kDeclaration + "\n<root>\n\t<v>1</v>\n</root>\n";
    EXPECT_EQ(ExportOChannelToUniString(channel), Tavo::UniString(expected.c_str()));
    std::string bytes;
    ExportOChannel(channel, [&](char const* data, unsigned int length) { bytes.append(data, length); });
    EXPECT_EQ(bytes, expected);
    DisposeXMLOChannel(channel);
    EXPECT_EQ(channel, nullptr);

    DisposeXMLOChannel(channel); // null: nothing happens

    std::filesystem::path const file = std::filesystem::temp_directory_path() / "outputFactoriesTest.xml";
    channel = CreateXMLOChannel(Vesk::Location(file.c_str()), Tavo::XMLNoTopLevelTag, ThrowOnError);
    channel->WriteStartElement("top");
    EXPECT_FALSE(std::filesystem::exists(file));
    DisposeXMLOChannel(channel);
    std::ifstream in(file, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), kDeclaration + "\n<top/>");
    std::filesystem::remove(file);
}

TEST(OutputFactories, FailuresByPolicy) {
    EXPECT_EQ(CreateXMLOChannel("a b", ReturnNullOnError), nullptr);
    EXPECT_EQ(CreateXMLOChannel(Vesk::Location(), "<", ReturnNullOnError), nullptr);
    EXPECT_EQ(CreateXMLOChannel("a b", static_cast<ExceptionPolicy>(2)), nullptr) << "only 1 throws";
    EXPECT_EQ(ThrownMessage([] { return CreateXMLOChannel("a b", ThrowOnError); }), "XercesC DOMException");
    EXPECT_EQ(ThrownMessage([] { return CreateXMLOChannel(Vesk::Location(), "", ThrowOnError); }),
              "XercesC DOMException");

    // Each rung of the worker's catch ladder has its fixed text; the caught exception's own text is not used.
    auto throwing = [](auto exception) { return [exception]() -> DOMBuilder* { throw exception; }; };
    auto viaWorker = [](auto construct) {
        return [construct] { return CreateXMLOChannelInternal(construct, ThrowOnError); };
    };
    EXPECT_EQ(ThrownMessage(viaWorker(throwing(std::bad_alloc()))), "Not enough memory in CreateXMLOChannel");
    EXPECT_EQ(
        ThrownMessage(viaWorker(throwing(DOMBuilderException("Creating document failed.", "F", 1, -36)))),
        "TavoXML DOMBuilderException");
    EXPECT_EQ(ThrownMessage(viaWorker(throwing(42))), "Unknown Exception in CreateXMLOChannel");
}
