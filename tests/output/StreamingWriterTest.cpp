// The streaming writer: its declaration, indentation, escaping and UTF-8, the attribute list, the lower-case
// events, surplus end tags, a refusing channel; and the two format-target adapters.
#include "TavoXMLUtils/output/OBinaryChannelXMLFormatTarget.hpp"
#include "TavoXMLUtils/output/OChannelXMLFormatTarget.hpp"
#include "TavoXMLUtils/output/TavoSAX2Writer.hpp"

#include "RecordingChannel.hpp"
#include "common/GoldenFile.hpp"

#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/UniString.hpp"

#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

XERCES_CPP_NAMESPACE_USE

namespace {

using Tavo::UniString;
using TavoXML::TavoSAX2Writer;

std::string const gDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// The text after the declaration, which must stand first.
std::string Body(std::string const& bytes) {
    EXPECT_EQ(bytes.substr(0, gDeclaration.size()), gDeclaration);
    return bytes.substr(gDeclaration.size());
}

std::string Write(std::function<void(TavoSAX2Writer&)> const& events) {
    Tavo::MemoryOChannel channel;
    {
        TavoSAX2Writer writer(channel);
        events(writer);
    }
    return Body(channel.GetData());
}

// Plays blank-separated steps on a fresh writer: "+N" starts element N, "-N" ends it, "N=t" writes a simple
// element N holding t, and ".t" writes the characters t.
std::string Play(std::string const& steps) {
    return Write([&](TavoSAX2Writer& w) {
        std::istringstream in(steps);
        for (std::string step; in >> step;) {
            UniString const rest(step.substr(1).c_str());
            std::size_t const equals = step.find('=');
            if (step[0] == '+') {
                w.StartElement(rest);
            } else if (step[0] == '-') {
                w.EndElement(rest);
            } else if (step[0] == '.') {
                w.Characters(rest);
            } else {
                w.SimpleElement(UniString(step.substr(0, equals).c_str()),
                                UniString(step.substr(equals + 1).c_str()));
            }
        }
    });
}

} // namespace

TEST(StreamingWriter, IndentationAndLineEndsFollowTheStateTable) {
    // Row 1 (nothing just opened, start): indentation only, here none at depth 0. Row 2 (just opened,
    // start): line end, then indentation. Row 3 (just opened, end): the end tag at once, then a line end.
    // Row 4 (a child closed, end): indentation at the new depth, the tag, a line end.
    EXPECT_EQ(Play("+A +B +C -C -B -A"), "<A>\n  <B>\n    <C></C>\n  </B>\n</A>\n");
    // Siblings share their indentation; text is not indented and keeps the element open for a line end.
    EXPECT_EQ(Play("+P C=text C=more +M .mixed +I -I -M -P"),
              "<P>\n  <C>text</C>\n  <C>more</C>\n  <M>mixed\n    <I></I>\n  </M>\n</P>\n");
}

TEST(StreamingWriter, EscapesTextAndAttributesAndWritesUTF8) {
    EXPECT_EQ(Write([](TavoSAX2Writer& w) {
                  TavoSAX2Writer::Attrs attributes;
                  attributes.Add(UniString("q"), UniString("say \"hi\" & <go>"));
                  w.SimpleElement(UniString(u"Z\u00FCrich"), attributes,
                                  UniString(u"a<b & c>d \"e\" \u20AC \U0001F600 \u00E6"));
              }),
              "<Z\xC3\xBCrich q=\"say &quot;hi&quot; &amp; &lt;go>\">a&lt;b &amp; c&gt;d \"e\" \xE2\x82\xAC "
              "\xF0\x9F\x98\x80 \xC3\xA6</Z\xC3\xBCrich>\n");
}

TEST(StreamingWriter, WholeDocumentMatchesItsGoldenFile) {
    Tavo::MemoryOChannel channel;
    {
        TavoSAX2Writer writer(channel);
        writer.StartDocument();
        TavoSAX2Writer::Attrs rootAttributes;
        rootAttributes.Add(UniString("version"), UniString("2"));
        rootAttributes.Add(UniString("lang"), UniString(u"fran\u00E7ais"));
        writer.StartElement(UniString("Catalog"), rootAttributes);
        for (int i = 0; i < 3; ++i) {
            TavoSAX2Writer::Attrs itemAttributes;
            itemAttributes.Add(UniString("id"), UniString::PrintfFwd("%d", i));
            writer.StartElement(UniString("Item"), itemAttributes);
            writer.SimpleElement(UniString("Name"), UniString::PrintfFwd("Item <%d> & co", i));
            writer.StartElement(UniString("Empty"));
            writer.EndElement(UniString("Empty"));
            writer.EndElement(UniString("Item"));
        }
        writer.SimpleElement(UniString("Note"), UniString(u"\u00BD \u2264 \u03C0"));
        writer.EndElement(UniString("Catalog"));
        writer.EndDocument();
    }
    TavoTest::ExpectGolden(channel.GetData(), "output/streaming_document.expected");
}

TEST(StreamingWriter, AttrsIsWalkedByIndexOnly) {
    TavoSAX2Writer::Attrs attributes;
    EXPECT_EQ(attributes.getLength(), 0u);
    std::string expected = "<E";
    for (int i = 0; i < 9; ++i) { // past the first room of four
        attributes.Add(UniString::PrintfFwd("a%d", i), UniString::PrintfFwd("v%d", i));
        expected += " a" + std::to_string(i) + "=\"v" + std::to_string(i) + "\"";
    }
    ASSERT_EQ(attributes.getLength(), 9u);
    for (XMLSize_t i = 0; i < 9; ++i) {
        std::u16string const digit(1, char16_t(u'0' + i));
        EXPECT_EQ(std::u16string(attributes.getLocalName(i)), u"a" + digit);
        EXPECT_EQ(std::u16string(attributes.getQName(i)), u"a" + digit);
        EXPECT_EQ(std::u16string(attributes.getValue(i)), u"v" + digit);
        EXPECT_EQ(std::u16string(attributes.getType(i)), u"CDATA");
        ASSERT_NE(attributes.getURI(i), nullptr);
        EXPECT_EQ(attributes.getURI(i)[0], 0) << "a zero-length URI, not the keyword EMPTY";
    }
    // Lookups by name find nothing; past the end gives null rather than a read out of bounds.
    XMLSize_t index = 3, qualifiedIndex = 3;
    EXPECT_FALSE(attributes.getIndex(u"a1", index));
    EXPECT_FALSE(attributes.getIndex(u"", u"a1", qualifiedIndex));
    EXPECT_EQ(index, ~XMLSize_t(0));
    EXPECT_EQ(qualifiedIndex, ~XMLSize_t(0));
    EXPECT_EQ(attributes.getIndex(u"a1"), -1);
    EXPECT_EQ(attributes.getIndex(u"", u"a1"), -1);
    for (XMLCh const* found :
         {attributes.getType(u"a1"), attributes.getType(u"", u"a1"), attributes.getValue(u"a1"),
          attributes.getValue(u"", u"a1"), attributes.getValue(9), attributes.getQName(100)}) {
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(Write([&](TavoSAX2Writer& w) {
                  w.StartElement(UniString("E"), attributes);
                  w.EndElement(UniString("E"));
              }),
              expected + "></E>\n");
}

TEST(StreamingWriter, LowerCaseEventsForwardWithoutTouchingTheLayout) {
    EXPECT_EQ(Write([](TavoSAX2Writer& w) {
                  w.StartElement(UniString("Root"));
                  TavoSAX2Writer::Attrs none;
                  w.startElement(XMLUni::fgZeroLenString, u"Raw", u"Raw", none);
                  w.characters(u"x<y", 3);
                  w.endElement(XMLUni::fgZeroLenString, u"Raw", u"Raw");
                  w.processingInstruction(u"pi", nullptr);
                  w.processingInstruction(u"pi", u"data");
                  w.ignorableWhitespace(u" <&", 3);
                  w.startPrefixMapping(u"p", u"urn:p");
                  w.endPrefixMapping(u"p");
                  w.skippedEntity(u"e");
                  w.setDocumentLocator(nullptr);
                  // Still just opened and at depth 1, as far as the capitalised operations know.
                  w.StartElement(UniString("Child"));
                  w.EndElement(UniString("Child"));
                  w.EndElement(UniString("Root"));
              }),
              "<Root><Raw>x&lt;y</Raw><?pi?><?pi data?> <&\n  <Child></Child>\n</Root>\n");
}

TEST(StreamingWriter, SurplusEndElementsAndOpenElementsAreNotRepaired) {
    // Depth goes below zero: no indentation, and the next start tag stands at the margin too.
    EXPECT_EQ(Play("-X -Y +A +B"), "</X>\n</Y>\n<A>\n<B>");
    // The destructor closes nothing, and the channel stays the caller's.
    PlainChannel channel;
    {
        TavoSAX2Writer writer(channel);
        writer.StartElement(UniString("Open"));
        writer.SimpleElement(UniString("V"), UniString("1"));
    }
    EXPECT_EQ(channel.WriteBin("!", 1, nullptr), 0);
    EXPECT_EQ(Body(channel.bytes), "<Open>\n  <V>1</V>\n!");
}

TEST(StreamingWriter, RefusingChannelThrowsAndReceivesNothingMore) {
    PlainChannel channel;
    channel.refuseAt = 4;
    TavoSAX2Writer writer(channel); // the declaration takes the first three calls
    ASSERT_EQ(channel.bytes, gDeclaration);
    try {
        writer.StartElement(UniString("A"));
        FAIL() << "a refused write must throw";
    } catch (Tavo::RunTimeErrorException const& e) {
        EXPECT_EQ(e.GetErrorCode(), 5);
    }
    EXPECT_THROW(writer.EndElement(UniString("A")), Tavo::RunTimeErrorException);
    EXPECT_EQ(channel.bytes, gDeclaration);
    EXPECT_GT(channel.attempts, 4);
    // A channel that refuses the declaration makes the constructor throw, and nothing is leaked.
    BinaryChannel refusing;
    refusing.refuseAt = 1;
    EXPECT_THROW(TavoSAX2Writer{refusing}, Tavo::RunTimeErrorException);
    EXPECT_TRUE(refusing.calls.empty());
}

TEST(FormatTargetAdapters, HandOnExactlyTheFormattersBytes) {
    // The same formatter calls into a reference target and into each adapter give the same bytes; each
    // block the formatter hands over arrives as one WriteBin call.
    auto const feed = [](XMLFormatTarget& target, XMLCh const* encoding) {
        XMLFormatter formatter(encoding, &target, XMLFormatter::NoEscapes, XMLFormatter::UnRep_CharRef);
        formatter << XMLFormatter::CharEscapes << u"a<b\u00E9\u20AC\U0001F600" << XMLFormatter::NoEscapes
                  << u"\n\t\r" << XMLFormatter::AttrEscapes << u"\"'&";
        std::u16string const large(40000, u'\u00FF'); // more than one transcoding block
        formatter << large.c_str();
    };
    for (XMLCh const* encoding :
         {XMLUni::fgUTF8EncodingString, XMLUni::fgUTF16LEncodingString, XMLUni::fgISO88591EncodingString}) {
        MemBufFormatTarget reference;
        feed(reference, encoding);
        std::string const expected(reinterpret_cast<char const*>(reference.getRawBuffer()),
                                   reference.getLen());
        PlainChannel plain;
        BinaryChannel binary;
        {
            TavoXML::OChannelXMLFormatTarget onPlain(plain);
            TavoXML::OBinaryChannelXMLFormatTarget onBinary(binary);
            feed(onPlain, encoding);
            feed(onBinary, encoding);
            onPlain.flush();
            onBinary.flush();
        }
        EXPECT_EQ(plain.bytes, expected);
        EXPECT_EQ(binary.bytes, expected);
        EXPECT_GT(plain.calls.size(), 1u);
    }
    // Direct calls: NUL and high bytes pass unchanged, one call per block, and an empty block adds nothing.
    PlainChannel channel;
    TavoXML::OChannelXMLFormatTarget adapter(channel);
    XMLByte const block[] = {0x00, 0xFF, 0x80, '<', 0x00};
    adapter.writeChars(block, sizeof block, nullptr);
    adapter.writeChars(block, 0, nullptr);
    adapter.writeChars(block + 1, 2, nullptr);
    ASSERT_EQ(channel.calls.size(), 2u);
    EXPECT_EQ(channel.calls[0], std::string("\0\xFF\x80<\0", 5));
    EXPECT_EQ(channel.calls[1], std::string("\xFF\x80"));
}
