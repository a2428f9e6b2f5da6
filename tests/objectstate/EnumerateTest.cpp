// EnumerateXML: the events of both dialects, the numbers as Xerces-C++ reads them, and the shapes that
// fail (on the plain dialect's failure path, or by exception in the typed dialect).
#include "TavoXMLUtils/objectstate/EnumerateXML.hpp"

#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"
#include "TavoXMLUtils/objectstate/ObjectStateException.hpp"
#include "common/ParsedDocument.hpp"
#include "common/TestText.hpp"
#include "objectstate/TestProviders.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/NumberFormatException.hpp>

#include <string>

namespace {

using ObjectStateTest::Provider;
using ObjectStateTest::Recorder;

struct Walk {
    int status;
    std::string events;
};

// The events of EnumerateXML on the document element of `xml`.
Walk Enumerate(std::string const& xml, TavoXML::TypeInfoProvider const* provider = nullptr) {
    auto const document = TavoTest::ParsedDocument::FromText(xml);
    Recorder recorder(provider);
    int const status = EnumerateXML(document.Root(), recorder);
    return {status, recorder.Joined()};
}

// The events of a value element in the plain dialect.
std::string Plain(std::string const& text) {
    return Enumerate("<r><v>" + text + "</v></r>").events;
}

TEST(EnumerateXMLTest, PlainDialectEvents) {
    EXPECT_EQ(Enumerate("<r/>").events, "{ }");
    EXPECT_EQ(Enumerate("<r/>").status, Tavo::NoError);
    // The writer's own output of a field and a list of one word.
    Tavo::ObjectState state;
    state.AddUInt("a", 5);
    state.AddList("l").PushString("x");
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(state, text, nullptr);
    EXPECT_EQ(Enumerate(TavoTest::Utf8(text)).events, "{ a= u:5 l= [ s:x ] }");

    // Kinds come from the text: booleans with regard to case, strings untrimmed.
    EXPECT_EQ(Plain("true"), "{ v= b:true }");
    EXPECT_EQ(Plain("false"), "{ v= b:false }");
    EXPECT_EQ(Plain("TRUE"), "{ v= s:TRUE }");
    EXPECT_EQ(Plain(" x "), "{ v= s: x  }");
    EXPECT_EQ(Plain("1.5"), "{ v= r:1.5 }");
    EXPECT_EQ(Plain("-5"), "{ v= i:-5 }");
    EXPECT_EQ(Plain("5"), "{ v= u:5 }");
    EXPECT_EQ(Plain("1e5"), "{ v= s:1e5 }");
    EXPECT_EQ(Plain("<![CDATA[7]]>"), "{ v= u:7 }");
    // Elements without children and text between fields are skipped.
    EXPECT_EQ(Enumerate("<r> <e/><f></f> <g>1</g></r>").events, "{ g= u:1 }");
    // A structure is a list when all its non-empty children are "list_value", also an object's.
    EXPECT_EQ(Enumerate("<r><o> <list_value>1</list_value> <e/> </o></r>").events, "{ o= [ u:1 ] }");
    EXPECT_EQ(Enumerate("<r><o> <a>1</a> <list_value>2</list_value> </o></r>").events,
              "{ o= { a= u:1 list_value= u:2 } }");
    // An empty structure as written with automatic tabs is one whitespace text.
    EXPECT_EQ(Enumerate("<r><o>\n\t</o></r>").events, "{ o= s:\n\t }");
}

TEST(EnumerateXMLTest, PlainNumbersAsXercesReadsThem) {
    // A zero has no digits for parseInt, which refuses them: zero takes the text path.
    EXPECT_EQ(Plain("0"), "{ v= s:0 }");
    EXPECT_EQ(Plain("-0.0"), "{ v= s:-0.0 }");
    // Trailing fraction zeros don't count as scale; leading zeros go.
    EXPECT_EQ(Plain("2.0"), "{ v= u:2 }");
    EXPECT_EQ(Plain("007"), "{ v= u:7 }");
    // parseInt reads 64 bits and keeps the low 32 of them, widened with sign.
    EXPECT_EQ(Plain("2147483647"), "{ v= u:2147483647 }");
    EXPECT_EQ(Plain("2147483648"), "{ v= u:18446744071562067968 }");
    EXPECT_EQ(Plain("5000000000"), "{ v= u:705032704 }");
    EXPECT_EQ(Plain("4294967296"), "{ v= u:0 }");
    EXPECT_EQ(Plain("-2147483648"), "{ v= i:-2147483648 }");
    EXPECT_EQ(Plain("-2147483649"), "{ v= i:2147483647 }");
    // Beyond 64 bits parseInt throws and the text stays a string.
    EXPECT_EQ(Plain("18446744073709551615"), "{ v= s:18446744073709551615 }");
    EXPECT_EQ(Plain("inf"), "{ v= s:inf }");
}

TEST(EnumerateXMLTest, PlainUnsupportedShapesFailTheirLevel) {
    // A single child that is an element or a comment: the level stops with GeneralError.
    for (char const* inner : {"<b>1</b>", "<!--c-->", "<?pi x?>"}) {
        Walk const walk = Enumerate(std::string("<r><a>") + inner + "</a><c>2</c></r>");
        EXPECT_EQ(walk.status, Tavo::GeneralError) << inner;
        EXPECT_EQ(walk.events, "{ a= }") << inner;
    }
    // Inside a structure only that level stops; the level above goes on.
    Walk const nested = Enumerate("<r><o> <a><!--c--></a> <z>1</z> </o><y>2</y></r>");
    EXPECT_EQ(nested.status, Tavo::NoError);
    EXPECT_EQ(nested.events, "{ o= { a= } y= u:2 }");
    // A null node: an empty object and a failure.
    Recorder recorder(nullptr);
    EXPECT_EQ(EnumerateXML(nullptr, recorder), Tavo::GeneralError);
    EXPECT_EQ(recorder.Joined(), "{ }");
}

// The events of a value element of the typed dialect (by name) with type `type`.
Walk Typed(std::string const& type, std::string const& text) {
    Provider const provider(0, false);
    return Enumerate("<r><v t=\"" + type + "\">" + text + "</v></r>", &provider);
}

TEST(EnumerateXMLTest, TypedDialectEvents) {
    EXPECT_EQ(Typed("bool", " true ").events, "{ v= b:true }");
    EXPECT_EQ(Typed("bool", "TRUE").events, "{ v= }");
    EXPECT_EQ(Typed("string", "\n\t x y \n").events, "{ v= s:x y }");
    EXPECT_EQ(Typed("int", " -5 ").events, "{ v= i:-5 }");
    EXPECT_EQ(Typed("uint", "5").events, "{ v= u:5 }");
    EXPECT_EQ(Typed("real", " 1e5 ").events, "{ v= r:100000 }");
    EXPECT_EQ(Typed("other", "5").events, "{ v= }");
    EXPECT_EQ(Typed("int", "5").status, Tavo::GeneralError);
    // Declared integers: digits without the point, no scale; 32 bits widened with sign.
    EXPECT_EQ(Typed("int", "1.5").events, "{ v= i:15 }");
    EXPECT_EQ(Typed("int", "5000000000").events, "{ v= i:705032704 }");
    EXPECT_EQ(Typed("int", "-2147483648").events, "{ v= i:2147483648 }");
    EXPECT_EQ(Typed("uint", "-5").events, "{ v= u:5 }");
    EXPECT_EQ(Typed("uint", "3000000000").events, "{ v= u:18446744072414584320 }");
    // The writer's output: names by attribute, empty structures as entry and exit, an empty string.
    Provider const byType(1, false);
    EXPECT_EQ(
        Enumerate("<r><object t=\"o\">\n\t\t<int t=\"i\">\n3\n\t</int>\n\t<list t=\"e\">\n</list></object>"
                  "<string t=\"s\">\n</string></r>",
                  &byType)
            .events,
        "{ o= { i= i:3 e= [ ] } s= s: }");
}

TEST(EnumerateXMLTest, TypedListsTakeOneType) {
    Provider const byName(0, false), homogeneous(0, true), byType(1, false);
    // The first element's type holds for the others.
    EXPECT_EQ(
        Enumerate("<r><l t=\"list\"> <item t=\"int\">1</item> <item t=\"string\">7</item> </l></r>", &byName)
            .events,
        "{ l= [ i:1 i:7 ] }");
    EXPECT_EQ(Enumerate("<r><list t=\"l\"> <real>1.5</real> <int>2</int> </list></r>", &byType).events,
              "{ l= [ r:1.5 r:2 ] }");
    // A homogeneous list says it once; without the attribute the first element decides.
    EXPECT_EQ(
        Enumerate("<r><l t=\"list\" subtype=\"uint\"> <item>1</item> <item>2</item> </l></r>", &homogeneous)
            .events,
        "{ l= [ u:1 u:2 ] }");
    EXPECT_EQ(Enumerate("<r><l t=\"list\"> <item t=\"bool\">true</item> <x>false</x> </l></r>", &homogeneous)
                  .events,
              "{ l= [ b:true b:false ] }");
}

TEST(EnumerateXMLTest, TypedFailuresThrowAndCloseTheOutermostObject) {
    Provider const provider(0, false);
    // Xerces-C++ refuses a zero's empty digits, an exponent for an integer, a word for a real.
    for (auto const& [type, text] : {std::pair{"int", "0"}, std::pair{"uint", "0"}, std::pair{"int", "1e5"},
                                     std::pair{"real", "inf"}, std::pair{"int", "x"}}) {
        auto const document = TavoTest::ParsedDocument::FromText(std::string("<r><o t=\"object\"> <v t=\"") +
                                                                 type + "\">" + text + "</v></o></r>");
        Recorder recorder(&provider);
        EXPECT_THROW(EnumerateXML(document.Root(), recorder), xercesc::NumberFormatException) << type << text;
        // The guard closes the outermost object; the inner one gets no exit.
        EXPECT_EQ(recorder.Joined(), "{ o= { v= }") << type << text;
    }
    // No type attribute, a structure without leading text, a list element without its attribute.
    for (char const* xml : {"<r><v>1</v></r>", "<r><o t=\"object\"><v t=\"int\">1</v></o></r>",
                            "<r><l t=\"list\"> <item>1</item> </l></r>"}) {
        auto const document = TavoTest::ParsedDocument::FromText(xml);
        Recorder recorder(&provider);
        try {
            EnumerateXML(document.Root(), recorder);
            ADD_FAILURE() << "no exception: " << xml;
        } catch (TavoXML::XMLObjectStateException const& exception) {
            EXPECT_STREQ(exception.GetName(), "XMLObjectStateException");
            EXPECT_EQ(exception.GetErrorCode(), Tavo::GeneralError);
        }
        EXPECT_EQ(recorder.events.back(), "}") << xml;
    }
}

// `depth` nested elements under the root, indented so that each holds whitespace beside its child.
std::string DeepDocument(unsigned int depth, char const* open, char const* close, char const* leaf) {
    std::string xml = "<r>";
    for (unsigned int level = 0; level < depth; ++level) {
        xml += open;
        xml += ' ';
    }
    xml += leaf;
    for (unsigned int level = 0; level < depth; ++level) {
        xml += ' ';
        xml += close;
    }
    return xml + "</r>";
}

TEST(EnumerateXMLTest, DeepDocumentsStopAtTheBound) {
    // Plain: the level beyond the bound fails, the others go on.
    Walk const plain = Enumerate(DeepDocument(100000, "<o>", "</o>", "<v>1</v>"));
    EXPECT_EQ(plain.status, Tavo::NoError);
    EXPECT_EQ(plain.events.size(), std::string("{ o= ").size() * 1001 + std::string("} ").size() * 1000 + 1);
    Walk const atBound = Enumerate(DeepDocument(1000, "<o>", "</o>", "<v>1</v>"));
    EXPECT_NE(atBound.events.find("{ v= u:1 }"), std::string::npos);
    // Typed: an exception.
    Provider const provider(0, false);
    auto const deep = TavoTest::ParsedDocument::FromText(
        DeepDocument(100000, "<o t=\"object\">", "</o>", "<v t=\"int\">1</v>"));
    Recorder recorder(&provider);
    EXPECT_THROW(EnumerateXML(deep.Root(), recorder), TavoXML::XMLObjectStateException);
}

} // namespace
