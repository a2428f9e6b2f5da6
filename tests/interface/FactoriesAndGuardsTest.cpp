// The input factories under both exception policies, their exception ladder, and the channel guards.
#include "common/TestText.hpp"

#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMException.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string_view>

using TavoTest::Utf8;

namespace {

// A reader over the UTF-8 document `xml`, built directly, not through a factory.
std::unique_ptr<TavoXML::DOMReader> Open(std::string_view xml) {
    return std::make_unique<TavoXML::DOMReader>(reinterpret_cast<unsigned char const*>(xml.data()),
                                                static_cast<unsigned int>(xml.size()),
                                                Tavo::XMLNoTopLevelTag);
}

Tavo::XMLIChannel* FromText(std::string const& xml, char const* tag, TavoXML::ExceptionPolicy policy) {
    return TavoXML::CreateXMLIChannelFromMemory(reinterpret_cast<unsigned char const*>(xml.data()),
                                                static_cast<unsigned int>(xml.size()), tag, policy);
}

// The message of the XMLIChannelException that `create` throws under ThrowOnError.
template <class Create>
std::string ThrownText(Create const& create) {
    try {
        Tavo::XMLIChannel* channel = create(TavoXML::ThrowOnError);
        TavoXML::DisposeXMLIChannel(channel);
    } catch (TavoXML::XMLIChannelException const& exception) {
        EXPECT_STREQ(exception.GetName(), "XMLIChannelException");
        EXPECT_EQ(exception.GetErrorCode(), -36);
        EXPECT_EQ(exception.GetPrevious(), nullptr);
        return Utf8(exception.GetMessage());
    }
    ADD_FAILURE() << "nothing thrown";
    return {};
}

} // namespace

TEST(InputFactories, BothPoliciesOnGoodAndBadDocuments) {
    std::string const broken = "<r><a></r>";
    for (int policy : {0, 2}) {
        EXPECT_EQ(FromText(broken, "r", TavoXML::ExceptionPolicy(policy)), nullptr);
        EXPECT_EQ(TavoXML::CreateXMLIChannel(Vesk::Location("/no/such/file.xml"), Tavo::XMLNoTopLevelTag,
                                             TavoXML::ExceptionPolicy(policy)),
                  nullptr);
    }
    // The reader's composed report goes on as the message.
    std::string const report =
        ThrownText([&](TavoXML::ExceptionPolicy policy) { return FromText(broken, "r", policy); });
    EXPECT_EQ(report.rfind("ParseXMLDoc () failed.\n  - XML file is in the memory. Start address: ", 0), 0u);
    EXPECT_NE(report.find("\n  - Line number:  1\n  - Xerces error: "), std::string::npos) << report;

    // The text form parses as UTF-8; another root than the tag given still gives a channel.
    Tavo::UniString const text(u"<data><t>Gr\u00FC\u00DFe \u20AC \U0001F600</t></data>");
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(text, "other", TavoXML::ThrowOnError);
    Tavo::UniString read;
    EXPECT_EQ(channel->ReadXML("t", read), Tavo::NoError);
    EXPECT_EQ(Utf8(read), "Gr\xC3\xBC\xC3\x9F"
                          "e \xE2\x82\xAC \xF0\x9F\x98\x80");
    // Disposal nulls the pointer and takes null.
    TavoXML::DisposeXMLIChannel(channel);
    EXPECT_EQ(channel, nullptr);
    TavoXML::DisposeXMLIChannel(channel);
}

TEST(InputFactories, ExceptionLadder) {
    auto thrown = [](auto exception) {
        return ThrownText([&](TavoXML::ExceptionPolicy policy) {
            return TavoXML::CreateXMLIChannelInternal([&]() -> TavoXML::DOMReader* { throw exception; },
                                                      policy);
        });
    };
    EXPECT_EQ(thrown(std::bad_alloc()), "Not enough memory in CreateXMLIChannel");
    EXPECT_EQ(thrown(xercesc::DOMException(xercesc::DOMException::NOT_FOUND_ERR)), "XercesC DOMException");
    EXPECT_EQ(thrown(TavoXML::DOMReaderException("the reader's own text", "here", 1, -36)),
              "the reader's own text");
    EXPECT_EQ(thrown(42), "Unknown Exception in CreateXMLIChannel");
}

TEST(ChannelGuards, HarvestMessagesAndDelete) {
    std::string const xml = "<r>\n<a/>\n<b/>\n</r>";
    Tavo::Array<Tavo::UniString> harvested{Tavo::UniString("kept")};
    Tavo::XMLIChannel* channel = nullptr;
    {
        TavoXML::XMLIChannelGuard guard(&channel, &harvested);
        // Assigned after the guard was built: still guarded.
        channel = Open(xml).release();
        channel->AddMessage(Tavo::UniString(u"first \u20AC"));
        ASSERT_EQ(channel->ReadStartElement("b"), Tavo::NoError);
        channel->AddMessage(Tavo::UniString("second"));
    }
    EXPECT_EQ(channel, nullptr);
    std::string const logText =
        Utf8(Vesk::Location(Tavo::UniString("DOMReaderCreationFromMemory")).ToLogText());
    ASSERT_EQ(harvested.GetSize(), 3u);
    EXPECT_EQ(Utf8(harvested[0]), "kept");
    EXPECT_EQ(Utf8(harvested[1]), logText + " (1):  first \xE2\x82\xAC\n");
    EXPECT_EQ(Utf8(harvested[2]), logText + " (3):  second\n");

    harvested.Clear();
    { TavoXML::XMLIChannelGuard nullAddress(nullptr, &harvested); }
    // Disposed of within the scope: the guard finds null and does nothing.
    Tavo::XMLIChannel* input = Open("<r/>").release();
    {
        TavoXML::XMLIChannelGuard inputGuard(&input, &harvested);
        input->AddMessage(Tavo::UniString("lost"));
        TavoXML::DisposeXMLIChannel(input);
    }
    EXPECT_EQ(harvested.GetSize(), 0u);
    // Without an array the guard only deletes (the sanitizer build sees a leak otherwise).
    input = Open("<r/>").release();
    { TavoXML::XMLIChannelGuard guard(&input); }
    EXPECT_EQ(input, nullptr);

    // An output channel has no location: the log text of the empty location, and line 1 for every message.
    Tavo::XMLOChannel* output = TavoXML::CreateXMLOChannel("r", TavoXML::ThrowOnError);
    {
        TavoXML::XMLOChannelGuard guard(&output, &harvested);
        output->AddMessage(Tavo::UniString("one"));
    }
    EXPECT_EQ(output, nullptr);
    ASSERT_EQ(harvested.GetSize(), 1u);
    EXPECT_EQ(Utf8(harvested[0]), Utf8(Vesk::Location().ToLogText()) + " (1):  one\n");
}
