// The input factories under both exception policies, their exception ladder, disposal, and the channel
// guards that harvest messages.
#include "reader/ReaderTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMException.hpp>

#include <gtest/gtest.h>

#include <new>

using ReaderTest::Utf8;

namespace {

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

// A reader that counts GetLocation calls, to see when a guard asks for the location.
class CountingReader : public TavoXML::DOMReader {
public:
    CountingReader(std::string const& xml, int& calls)
        : DOMReader(reinterpret_cast<unsigned char const*>(xml.data()), static_cast<unsigned int>(xml.size()),
                    Tavo::XMLNoTopLevelTag),
          calls(calls) {}
    bool GetLocation(Vesk::Location& location) override {
        ++calls;
        return DOMReader::GetLocation(location);
    }

private:
    int& calls;
};

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

    // Another root than the tag given still gives a working channel.
    Tavo::XMLIChannel* channel = FromText("<data><n>4</n></data>", "other", TavoXML::ThrowOnError);
    ASSERT_NE(channel, nullptr);
    int value = 0;
    EXPECT_EQ(channel->ReadXML("n", value), Tavo::NoError);
    EXPECT_EQ(value, 4);
    TavoXML::DisposeXMLIChannel(channel);
    EXPECT_EQ(channel, nullptr);
    TavoXML::DisposeXMLIChannel(channel);
    EXPECT_EQ(channel, nullptr);
}

TEST(InputFactories, TextFormsParseUTF8AndStopAtZero) {
    Tavo::UniString const text(u"<r><t>Gr\u00FC\u00DFe \u20AC \U0001F600</t></r>");
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(text, "r", TavoXML::ThrowOnError);
    Tavo::UniString read;
    EXPECT_EQ(channel->ReadXML("t", read), Tavo::NoError);
    EXPECT_EQ(Utf8(read), "Gr\xC3\xBC\xC3\x9F"
                          "e \xE2\x82\xAC \xF0\x9F\x98\x80");
    TavoXML::DisposeXMLIChannel(channel);

    // What follows a zero character is not parsed: here it would break the document.
    std::u16string const withZero(u"<r/>\0<broken", 12);
    channel = TavoXML::CreateXMLIChannelFromMemory(Tavo::UniString(withZero), Tavo::XMLNoTopLevelTag,
                                                   TavoXML::ThrowOnError);
    EXPECT_NE(channel, nullptr);
    TavoXML::DisposeXMLIChannel(channel);

    EXPECT_EQ(TavoXML::CreateXMLIChannelFromMemory(Tavo::UniString(u"<r>"), "r", TavoXML::ReturnNullOnError),
              nullptr);
    std::string const report = ThrownText([](TavoXML::ExceptionPolicy policy) {
        return TavoXML::CreateXMLIChannelFromMemory(Tavo::UniString(u"<r>"), Tavo::XMLNoTopLevelTag, policy);
    });
    EXPECT_EQ(report.rfind("ParseXMLDoc () failed.", 0), 0u);
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
    // Without ThrowOnError every rung gives null.
    EXPECT_EQ(TavoXML::CreateXMLIChannelInternal([]() -> TavoXML::DOMReader* { throw std::bad_alloc(); },
                                                 TavoXML::ReturnNullOnError),
              nullptr);
}

TEST(ChannelGuards, InputGuardHarvestsMessages) {
    std::string const xml = "<r>\n<a/>\n<b/>\n</r>";
    int locationCalls = 0;
    Tavo::Array<Tavo::UniString> harvested{Tavo::UniString("kept")};
    Tavo::XMLIChannel* channel = nullptr;
    {
        TavoXML::XMLIChannelGuard guard(&channel, &harvested);
        // Assigned after the guard was built: still guarded.
        channel = new CountingReader(xml, locationCalls);
        channel->AddMessage(Tavo::UniString(u"first \u20AC"));
        ASSERT_EQ(channel->ReadStartElement("b"), Tavo::NoError);
        channel->AddMessage(Tavo::UniString("second"));
    }
    EXPECT_EQ(channel, nullptr);
    EXPECT_EQ(locationCalls, 1);
    std::string const logText =
        Utf8(Vesk::Location(Tavo::UniString("DOMReaderCreationFromMemory")).ToLogText());
    ASSERT_EQ(harvested.GetSize(), 3u);
    EXPECT_EQ(Utf8(harvested[0]), "kept");
    EXPECT_EQ(Utf8(harvested[1]), logText + " (1):  first \xE2\x82\xAC\n");
    EXPECT_EQ(Utf8(harvested[2]), logText + " (3):  second\n");

    // Without messages: the array stays as it is and the location is not asked for.
    {
        channel = new CountingReader(xml, locationCalls);
        TavoXML::XMLIChannelGuard guard(&channel, &harvested);
    }
    EXPECT_EQ(channel, nullptr);
    EXPECT_EQ(harvested.GetSize(), 3u);
    EXPECT_EQ(locationCalls, 1);
}

TEST(ChannelGuards, NullDisposedAndOutputChannels) {
    Tavo::Array<Tavo::UniString> harvested;
    {
        TavoXML::XMLIChannelGuard nullAddress(nullptr, &harvested);
        TavoXML::XMLOChannelGuard nullOutputAddress(nullptr, &harvested);
        Tavo::XMLIChannel* input = nullptr;
        Tavo::XMLOChannel* output = nullptr;
        TavoXML::XMLIChannelGuard nullInput(&input, &harvested);
        TavoXML::XMLOChannelGuard nullOutput(&output, &harvested);
    }
    // Disposed of within the scope: the guard finds null and does nothing.
    Tavo::XMLIChannel* input = ReaderTest::Open("<r/>").release();
    Tavo::XMLOChannel* output = TavoXML::CreateXMLOChannel("r", TavoXML::ThrowOnError);
    {
        TavoXML::XMLIChannelGuard inputGuard(&input, &harvested);
        TavoXML::XMLOChannelGuard outputGuard(&output, &harvested);
        input->AddMessage(Tavo::UniString("lost"));
        output->AddMessage(Tavo::UniString("lost"));
        TavoXML::DisposeXMLIChannel(input);
        TavoXML::DisposeXMLOChannel(output);
    }
    EXPECT_EQ(harvested.GetSize(), 0u);
    // Without an array the guard only deletes (the sanitizer build sees a leak otherwise).
    input = ReaderTest::Open("<r/>").release();
    input->AddMessage(Tavo::UniString("dropped"));
    { TavoXML::XMLIChannelGuard guard(&input); }
    EXPECT_EQ(input, nullptr);

    // An output channel has no location: the log text of the empty location, and line 1 for every message.
    output = TavoXML::CreateXMLOChannel("r", TavoXML::ThrowOnError);
    {
        TavoXML::XMLOChannelGuard guard(&output, &harvested);
        output->AddMessage(Tavo::UniString("one"));
        output->AddMessage(Tavo::UniString("two"));
    }
    EXPECT_EQ(output, nullptr);
    std::string const logText = Utf8(Vesk::Location().ToLogText());
    ASSERT_EQ(harvested.GetSize(), 2u);
    EXPECT_EQ(Utf8(harvested[0]), logText + " (1):  one\n");
    EXPECT_EQ(Utf8(harvested[1]), logText + " (1):  two\n");
}
