// The object-state dialects: EnumerateXML's events (plain and typed, the numbers as Xerces-C++ reads them,
// the shapes that fail), CreateFromObjectState's exported text, and both together as a round trip.
#include "TavoXMLUtils/objectstate/ConvertToObjectState.hpp"
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"
#include "TavoXMLUtils/objectstate/EnumerateXML.hpp"
#include "TavoXMLUtils/objectstate/ObjectStateException.hpp"

#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"
#include "TavoXMLUtils/objectstate/XMLContentProcessor.hpp"
#include "Vesk/Location.hpp"
#include "common/GoldenFile.hpp"
#include "common/ParsedDocument.hpp"
#include "common/TempFolder.hpp"
#include "common/TestText.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/NumberFormatException.hpp>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace ObjectStateTest {

// A full provider; `tagContent` and `homogeneous` select the variant of the vocabulary. A minimal one
// leaves the optional words (tag content, list value tag, subtype attribute) at their defaults and has no
// string type name.
class Provider : public TavoXML::TypeInfoProvider {
public:
    Provider(int tagContent, bool homogeneous, bool minimal = false)
        : tagContent(tagContent), homogeneous(homogeneous), minimal(minimal) {}
    bool AreListsHomogeneous() const override { return homogeneous; }
    int GetTagContent() const override { return minimal ? TypeInfoProvider::GetTagContent() : tagContent; }
    char const* GetTypeAttributeName() const override { return "t"; }
    char const* GetBoolTypeName() const override { return "bool"; }
    char const* GetIntTypeName() const override { return "int"; }
    char const* GetUIntTypeName() const override { return "uint"; }
    char const* GetRealTypeName() const override { return "real"; }
    char const* GetStringTypeName() const override { return minimal ? nullptr : "string"; }
    char const* GetObjectTypeName() const override { return "object"; }
    char const* GetListTypeName() const override { return "list"; }
    char const* GetListValueTag() const override {
        return minimal ? TypeInfoProvider::GetListValueTag() : "item";
    }
    char const* GetListSubtypeAttribute() const override {
        return minimal ? TypeInfoProvider::GetListSubtypeAttribute() : "subtype";
    }

private:
    int tagContent;
    bool homogeneous;
    bool minimal;
};

// Writes every event as a short word: "{" "}" "[" "]", "name=" for a name, "b:true", "i:-5", "u:5",
// "r:1.5", "s:text"; Joined() gives them separated by blanks.
class Recorder : public XMLContentProcessor {
public:
    explicit Recorder(TavoXML::TypeInfoProvider const* provider) : XMLContentProcessor(provider) {}
    void NameFound(Tavo::UniString const& name) override { Add(TavoTest::Utf8(name) + "="); }
    void BoolFound(bool value) override { Add(value ? "b:true" : "b:false"); }
    void IntFound(long long value) override { Add("i:" + std::to_string(value)); }
    void UIntFound(unsigned long long value) override { Add("u:" + std::to_string(value)); }
    void RealFound(double value) override {
        char text[32];
        std::snprintf(text, sizeof text, "r:%g", value);
        Add(text);
    }
    void StringFound(Tavo::UniString const& value) override { Add("s:" + TavoTest::Utf8(value)); }
    void ObjectEntered() override { Add("{"); }
    void ObjectExited() override { Add("}"); }
    void ListEntered() override { Add("["); }
    void ListExited() override { Add("]"); }
    std::string Joined() const { return joined; }
    std::string last;

private:
    void Add(std::string const& event) {
        joined += (joined.empty() ? "" : " ") + event;
        last = event;
    }
    std::string joined;
};

// `depth` nested elements under the root, each holding whitespace beside its child.
inline std::string DeepDocument(unsigned int depth, std::string const& open, std::string const& close,
                                std::string const& leaf) {
    std::string xml = "<r>";
    for (unsigned int level = 0; level < depth; ++level) {
        xml += open + "\n";
    }
    xml += leaf;
    for (unsigned int level = 0; level < depth; ++level) {
        xml += "\n" + close;
    }
    return xml + "</r>";
}

} // namespace ObjectStateTest

namespace Tavo {
// Failed comparisons show the state as the typed dialect writes it, names in attributes.
inline void PrintTo(ObjectState const& state, std::ostream* out) {
    ObjectStateTest::Provider const byType(1, false);
    Tavo::UniString text;
    try {
        TavoXML::CreateFromObjectState(state, text, &byType);
        *out << TavoTest::Utf8(text);
    } catch (...) {
        *out << "(a state that cannot be written)";
    }
}
} // namespace Tavo

namespace {

using namespace ObjectStateTest;
using Tavo::ObjectState;
using Cases = std::vector<std::pair<std::string, std::string>>;

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

// Each "text|event": the text as a value element of the plain dialect gives "{ v= event }".
void ExpectPlain(std::initializer_list<std::string> cases) {
    for (std::string const& c : cases) {
        std::size_t const bar = c.find('|');
        EXPECT_EQ(Enumerate("<r><v>" + c.substr(0, bar) + "</v></r>").events,
                  "{ v= " + c.substr(bar + 1) + " }")
            << c;
    }
}

TEST(EnumerateXMLTest, PlainDialectEvents) {
    EXPECT_EQ(Enumerate("<r/>").events, "{ }");
    EXPECT_EQ(Enumerate("<r/>").status, Tavo::NoError);
    // The writer's own output of a field and a list of one word.
    ObjectState state;
    state.AddUInt("a", 5);
    state.AddList("l").PushString("x");
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(state, text, nullptr);
    EXPECT_EQ(Enumerate(TavoTest::Utf8(text)).events, "{ a= u:5 l= [ s:x ] }");
    // Kinds come from the text: booleans with regard to case, strings untrimmed.
    ExpectPlain({"true|b:true", "false|b:false", "TRUE|s:TRUE", " x |s: x ", "1.5|r:1.5", "-5|i:-5", "5|u:5",
                 "1e5|s:1e5", "<![CDATA[7]]>|u:7"});
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
    // A zero has no digits for parseInt, which refuses them: zero takes the text path. Trailing fraction
    // zeros don't count as scale; leading zeros go. parseInt reads 64 bits and keeps the low 32 of them,
    // widened with sign; beyond 64 bits it throws and the text stays a string.
    ExpectPlain({"0|s:0", "-0.0|s:-0.0", "2.0|u:2", "007|u:7", "2147483647|u:2147483647",
                 "2147483648|u:18446744071562067968", "5000000000|u:705032704", "4294967296|u:0",
                 "-2147483648|i:-2147483648", "-2147483649|i:2147483647",
                 "18446744073709551615|s:18446744073709551615", "inf|s:inf"});
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

TEST(EnumerateXMLTest, TypedDialectEvents) {
    // Value elements of the typed dialect (by name): "type|text|event".
    Provider const byName(0, false), byType(1, false);
    auto const typed = [&](std::string const& type, std::string const& text) {
        return Enumerate("<r><v t=\"" + type + "\">" + text + "</v></r>", &byName);
    };
    EXPECT_EQ(typed("int", "5").status, Tavo::GeneralError);
    // Declared integers: digits without the point, no scale; 32 bits widened with sign.
    for (std::string const c :
         {"bool| true |b:true", "bool|TRUE|", "string|\n\t x y \n|s:x y", "int| -5 |i:-5", "uint|5|u:5",
          "real| 1e5 |r:100000", "other|5|", "int|1.5|i:15", "int|5000000000|i:705032704",
          "int|-2147483648|i:2147483648", "uint|-5|u:5", "uint|3000000000|u:18446744072414584320"}) {
        std::size_t const bar = c.find('|'), bar2 = c.find('|', bar + 1);
        std::string const event = c.substr(bar2 + 1);
        EXPECT_EQ(typed(c.substr(0, bar), c.substr(bar + 1, bar2 - bar - 1)).events,
                  "{ v= " + event + (event.empty() ? "}" : " }"))
            << c;
    }
    // The writer's output: names by attribute, empty structures as entry and exit, an empty string.
    EXPECT_EQ(
        Enumerate("<r><object t=\"o\">\n\t\t<int t=\"i\">\n3\n\t</int>\n\t<list t=\"e\">\n</list></object>"
                  "<string t=\"s\">\n</string></r>",
                  &byType)
            .events,
        "{ o= { i= i:3 e= [ ] } s= s: }");
}

TEST(EnumerateXMLTest, TypedListsTakeOneType) {
    Provider const byName(0, false), homogeneous(0, true), byType(1, false);
    // The first element's type holds for the others. A homogeneous list says it once; without the
    // attribute the first element decides.
    for (auto const& [xml, provider, events] :
         std::vector<std::tuple<char const*, Provider const*, char const*>>{
             {"<l t=\"list\"> <item t=\"int\">1</item> <item t=\"string\">7</item> </l>", &byName, "i:1 i:7"},
             {"<list t=\"l\"> <real>1.5</real> <int>2</int> </list>", &byType, "r:1.5 r:2"},
             {"<l t=\"list\" subtype=\"uint\"> <item>1</item> <item>2</item> </l>", &homogeneous, "u:1 u:2"},
             {"<l t=\"list\"> <item t=\"bool\">true</item> <x>false</x> </l>", &homogeneous,
              "b:true b:false"}}) {
        EXPECT_EQ(Enumerate(std::string("<r>") + xml + "</r>", provider).events,
                  std::string("{ l= [ ") + events + " ] }");
    }
}

TEST(EnumerateXMLTest, TypedFailuresThrowAndCloseTheOutermostObject) {
    Provider const provider(0, false);
    // Xerces-C++ refuses a zero's empty digits, an exponent for an integer, a word for a real.
    for (auto const& [type, text] :
         Cases{{"int", "0"}, {"uint", "0"}, {"int", "1e5"}, {"real", "inf"}, {"int", "x"}}) {
        auto const document = TavoTest::ParsedDocument::FromText("<r><o t=\"object\"> <v t=\"" + type +
                                                                 "\">" + text + "</v></o></r>");
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
        EXPECT_EQ(recorder.last, "}") << xml;
    }
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

// One state with every row of the vocabulary: each scalar kind as a field, an object, an empty object
// and list, a list of scalars, a list of a list and an object, and a list whose objects come before its
// scalars.
ObjectState VocabularyState() {
    ObjectState state;
    state.AddBool("flag", true).AddInt("count", -3).AddUInt("size", 7).AddReal("ratio", 1.5);
    state.AddString("title", "  Plan  ");
    state.AddObject("origin").AddReal("x", 2.5);
    state.AddObject("empty");
    state.AddList("none");
    state.AddList("numbers").PushUInt(1).PushUInt(2).PushUInt(3);
    ObjectState::List& rows = state.AddList("rows");
    rows.PushList().PushInt(4);
    rows.PushObject().AddBool("visible", false);
    ObjectState::List& mixed = state.AddList("mixed");
    mixed.PushObject().AddString("name", "a");
    mixed.PushString("b").PushString("c");
    return state;
}

std::string Exported(ObjectState const& state, TavoXML::TypeInfoProvider const* provider) {
    Tavo::UniString text;
    EXPECT_EQ(TavoXML::CreateFromObjectState(state, text, provider), Tavo::NoError);
    return TavoTest::Utf8(text);
}

TEST(ObjectStateWriterTest, VocabularyOfEachDialectAsExported) {
    ObjectState const state = VocabularyState();
    TavoTest::ExpectGolden(Exported(state, nullptr), "objectstate/plain.expected");
    Provider const byName(0, false), byType(1, false), byNameHomogeneous(0, true), byTypeHomogeneous(2, true);
    TavoTest::ExpectGolden(Exported(state, &byName), "objectstate/typed_byname.expected");
    TavoTest::ExpectGolden(Exported(state, &byType), "objectstate/typed_bytype.expected");
    TavoTest::ExpectGolden(Exported(state, &byNameHomogeneous),
                           "objectstate/typed_byname_homogeneous.expected");
    TavoTest::ExpectGolden(Exported(state, &byTypeHomogeneous),
                           "objectstate/typed_bytype_homogeneous.expected");
}

TEST(ObjectStateWriterTest, SmallShapes) {
    // An empty state: the declaration and an empty root.
    std::string const empty = Exported(ObjectState(), nullptr);
    EXPECT_EQ(empty.rfind("<?xml", 0), 0u);
    EXPECT_NE(empty.find("<root"), std::string::npos);
    EXPECT_EQ(empty.find("<root>\n"), std::string::npos) << empty;
    // Numbers in their own text forms, not the channel's "%.12g".
    ObjectState numbers;
    numbers.AddReal("third", 1.0 / 3).AddInt("min", -9223372036854775807LL - 1).AddUInt("max", ~0ULL);
    std::string const text = Exported(numbers, nullptr);
    for (char const* element : {"<third>0.3333333333333333</third>", "<min>-9223372036854775808</min>",
                                "<max>18446744073709551615</max>"}) {
        EXPECT_NE(text.find(element), std::string::npos) << text;
    }
}

TEST(ObjectStateWriterTest, ChannelFormWritesAtTheChannelsPlaceAndLeavesItOpen) {
    Tavo::XMLOChannel* channel = TavoXML::CreateXMLOChannel("doc", TavoXML::ThrowOnError);
    ASSERT_NE(channel, nullptr);
    channel->WriteStartElement("settings");
    ObjectState state;
    state.AddUInt("n", 5);
    EXPECT_EQ(TavoXML::CreateFromObjectState(state, *channel, nullptr), Tavo::NoError);
    channel->WriteEndElement();
    channel->WriteXML("after", Tavo::UniString("yes"));
    // WriteEndDocument added its line feed inside the open element.
    std::string const text = TavoTest::Utf8(TavoXML::ExportOChannelToUniString(channel));
    TavoXML::DisposeXMLOChannel(channel);
    EXPECT_NE(text.find("<settings>\n\t\t<n>5</n>\n\n\t</settings>"), std::string::npos) << text;
    EXPECT_NE(text.find("<after>yes</after>"), std::string::npos) << text;
}

TEST(ObjectStateWriterTest, MissingProviderWordsAreRefused) {
    Provider const plainLists(0, false, true), homogeneousLists(0, true, true);
    // Without lists the defaults do no harm.
    ObjectState flat;
    flat.AddInt("i", 1).AddObject("o").AddBool("b", true);
    EXPECT_NE(Exported(flat, &plainLists).find("<i t=\"int\">"), std::string::npos);
    // Scalars in a list need GetListValueTag, homogeneous ones GetListSubtypeAttribute, strings a name.
    ObjectState listed, named;
    listed.AddList("l").PushInt(1);
    named.AddString("s", "x");
    for (auto const& [state, provider] :
         {std::pair{&listed, &plainLists}, std::pair{&listed, &homogeneousLists},
          std::pair{&named, &plainLists}}) {
        Tavo::UniString text("untouched");
        EXPECT_THROW(TavoXML::CreateFromObjectState(*state, text, provider),
                     TavoXML::XMLObjectStateException);
        EXPECT_EQ(text, "untouched");
    }
}

TEST(ObjectStateWriterTest, FieldNamesThatAreNoElementNames) {
    // As element names the builder refuses them with its DOMException; as attribute values they pass.
    ObjectState state;
    state.AddUInt("1st", 5);
    Tavo::UniString text("untouched");
    Provider const byName(0, false), byType(1, false);
    EXPECT_THROW(TavoXML::CreateFromObjectState(state, text, nullptr), xercesc::DOMException);
    EXPECT_THROW(TavoXML::CreateFromObjectState(state, text, &byName), xercesc::DOMException);
    EXPECT_EQ(text, "untouched");
    EXPECT_NE(Exported(state, &byType).find("<uint t=\"1st\">"), std::string::npos);
    // A plain value whose name holds a blank is refused by the builder's status, which the writer
    // doesn't look at: the field is left out.
    ObjectState blank;
    blank.AddUInt("two words", 5).AddUInt("kept", 6);
    std::string const plain = Exported(blank, nullptr);
    EXPECT_EQ(plain.find("two"), std::string::npos);
    EXPECT_NE(plain.find("<kept>6</kept>"), std::string::npos);
}

// A chain of `depth` nested objects (or lists), torn down from the inside so that the recursive
// destructor of the state never sees more than one level.
struct DeepState {
    DeepState(unsigned int depth, bool lists) {
        ObjectState* object = &root;
        ObjectState::List* list = nullptr;
        for (unsigned int level = 0; level < depth; ++level) {
            if (lists) {
                list = list ? &list->PushList() : &object->AddList("l");
                clear.push_back([list] { list->Clear(); });
            } else {
                object = &object->AddObject("o");
                clear.push_back([object] { object->Clear(); });
            }
        }
    }
    ~DeepState() {
        for (auto it = clear.rbegin(); it != clear.rend(); ++it) {
            (*it)();
        }
    }
    ObjectState root;
    std::vector<std::function<void()>> clear;
};

TEST(ObjectStateWriterTest, NestingIsBoundedAtAThousandLevels) {
    Provider const typed(0, false);
    for (bool lists : {false, true}) {
        DeepState const atBound(1000, lists);
        EXPECT_NO_THROW(Exported(atBound.root, nullptr));
        EXPECT_NO_THROW(Exported(atBound.root, &typed));
        DeepState const beyond(1001, lists);
        Tavo::UniString text;
        EXPECT_THROW(TavoXML::CreateFromObjectState(beyond.root, text, nullptr),
                     TavoXML::XMLObjectStateException);
        EXPECT_TRUE(text.IsEmpty());
        DeepState const deep(100000, lists);
        EXPECT_THROW(TavoXML::CreateFromObjectState(deep.root, text, &typed),
                     TavoXML::XMLObjectStateException);
    }
}

// The state read back from its own text, or a state holding only the field "failed" if the status says so.
ObjectState RoundTrip(ObjectState const& state, TavoXML::TypeInfoProvider const* provider) {
    ObjectState read;
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(state, text, provider);
    if (TavoXML::ConvertToObjectState(text, read, provider) != Tavo::NoError) {
        read.Clear();
        read.AddBool("failed", true);
    }
    return read;
}

TEST(ObjectStateRoundTripTest, TypedDialectKeepsWhatItCarries) {
    // What the typed dialect keeps exactly: no zero integers, integers within 32 bits, strings without
    // surrounding blanks, lists of one kind.
    ObjectState state;
    state.AddBool("yes", true).AddBool("no", false).AddInt("i", -12).AddUInt("u", 34).AddReal("r", 0.25);
    state.AddReal("zero", 0.0).AddReal("tiny", 1e-300).AddString("s", "Plan B").AddString("blank", "");
    state.AddInt("low", -2147483647).AddUInt("high", 2147483647);
    state.AddObject("origin").AddReal("x", 1.5).AddObject("inner").AddObject("empty");
    state.AddList("none");
    state.AddList("ints").PushInt(1).PushInt(-2).PushInt(3);
    state.AddList("words").PushString("a").PushString("b c");
    ObjectState::List& objects = state.AddList("objects");
    objects.PushObject().AddUInt("a", 1);
    objects.PushObject();
    ObjectState::List& lists = state.AddList("lists");
    lists.PushList().PushReal(1.5);
    lists.PushList().PushBool(true).PushBool(false);
    lists.PushList();
    for (auto const& [tagContent, homogeneous] : {std::pair{0, false}, {1, false}, {0, true}, {-1, true}}) {
        Provider const provider(tagContent, homogeneous);
        EXPECT_EQ(RoundTrip(state, &provider), state) << tagContent << homogeneous;
    }
    // Names that are no element names survive where they stand in an attribute.
    ObjectState odd;
    odd.AddBool("two words", true).AddObject("<&>").AddUInt("\xE9", 1);
    Provider const byType(1, false);
    EXPECT_EQ(RoundTrip(odd, &byType), odd);
}

TEST(ObjectStateRoundTripTest, TypedDialectLosses) {
    Provider const provider(0, false);
    ObjectState state, expected;
    state.AddString("padded", "  x  ").AddString("accented", "\xE9t\xE9").AddInt("wide", 5000000000LL);
    state.AddUInt("huge", 3000000000ULL).AddList("mixed").PushUInt(7).PushString("8").PushReal(9.0);
    // Trimmed; non-ASCII text comes back as its UTF-8 bytes read in the default code; integers keep 32
    // bits, widened with sign; a list takes the type of its first element.
    expected.AddString("padded", "x").AddString("accented", "\xC3\xA9t\xC3\xA9").AddInt("wide", 705032704);
    expected.AddUInt("huge", 18446744072414584320ULL).AddList("mixed").PushUInt(7).PushUInt(8).PushUInt(9);
    EXPECT_EQ(RoundTrip(state, &provider), expected);
    // Xerces-C++ gives a zero no digits and parseInt refuses them; "inf" is no XMLDouble. The exception
    // reaches the caller and Build leaves the state empty.
    for (ObjectState::Value const& value : {ObjectState::Value(0LL), ObjectState::Value(0ULL),
                                            ObjectState::Value(std::numeric_limits<double>::infinity())}) {
        ObjectState refused, read;
        refused.Add("v", value);
        read.AddBool("old", true);
        Tavo::UniString text;
        TavoXML::CreateFromObjectState(refused, text, &provider);
        EXPECT_THROW(TavoXML::ConvertToObjectState(text, read, &provider), xercesc::NumberFormatException);
        EXPECT_TRUE(read.IsEmpty());
    }
}

TEST(ObjectStateRoundTripTest, PlainDialectInfersKinds) {
    ObjectState state, expected;
    state.AddBool("b", true).AddInt("neg", -12).AddInt("pos", 7).AddUInt("u", 34).AddReal("r", 0.25);
    state.AddReal("whole", 2.0).AddReal("big", 1e20).AddString("s", "Plan").AddString("padded", "  x  ");
    state.AddString("number", "42").AddString("word", "true").AddString("empty", "").AddUInt("zero", 0);
    state.AddInt("wide", 5000000000LL).AddObject("origin").AddReal("x", 1.5);
    state.AddObject("none");
    state.AddList("ints").PushInt(1).PushInt(2);
    // Positive integers come back unsigned, whole reals as integers, exponents and zeros as strings,
    // number and boolean words as numbers and booleans; an empty string is skipped, and an empty structure
    // is the whitespace it held; integers keep 32 bits.
    expected.AddBool("b", true).AddInt("neg", -12).AddUInt("pos", 7).AddUInt("u", 34).AddReal("r", 0.25);
    expected.AddUInt("whole", 2)
        .AddString("big", "1e+20")
        .AddString("s", "Plan")
        .AddString("padded", "  x  ");
    expected.AddUInt("number", 42).AddBool("word", true).AddString("zero", "0");
    expected.AddUInt("wide", 705032704).AddObject("origin").AddReal("x", 1.5);
    expected.AddString("none", "\n\t\t\n\t");
    expected.AddList("ints").PushUInt(1).PushUInt(2);
    for (ObjectState* both : {&state, &expected}) {
        ObjectState::List& lists = both->AddList("lists");
        lists.PushList().PushUInt(1);
        lists.PushList().PushUInt(2).PushUInt(3);
        ObjectState::List& objects = both->AddList("objects");
        objects.PushObject().AddUInt("a", 1);
        objects.PushObject().AddString("a", "b");
    }
    EXPECT_EQ(RoundTrip(state, nullptr), expected);
}

TEST(ObjectStateRoundTripTest, ReadingFormsAndTheirFailures) {
    ObjectState state;
    state.AddUInt("first", 1).AddString("second", "two").AddObject("third").AddBool("on", true);
    // Any root name; an empty root gives an empty state.
    ObjectState read;
    EXPECT_EQ(
        TavoXML::ConvertToObjectState(Tavo::UniString("<other><first>1</first></other>"), read, nullptr),
        Tavo::NoError);
    EXPECT_EQ(read.GetFieldCount(), 1u);
    EXPECT_EQ(TavoXML::ConvertToObjectState(Tavo::UniString("<root/>"), read, nullptr), Tavo::NoError);
    EXPECT_TRUE(read.IsEmpty());
    // No document: GeneralError and the state untouched.
    ObjectState untouched;
    untouched.AddBool("kept", true);
    ObjectState const before = untouched;
    EXPECT_EQ(TavoXML::ConvertToObjectState(Tavo::UniString("<root><a>"), untouched, nullptr),
              Tavo::GeneralError);
    EXPECT_EQ(TavoXML::ConvertToObjectState(nullptr, untouched, nullptr), Tavo::GeneralError);
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(state, text, nullptr);
    Tavo::XMLIChannel* memory = TavoXML::CreateXMLIChannelFromMemory(text, "root", TavoXML::ThrowOnError);
    TavoXML::XMLIChannelGuard const memoryGuard(&memory);
    EXPECT_EQ(TavoXML::ConvertToObjectState(*memory, untouched, nullptr), Tavo::GeneralError);
    EXPECT_EQ(untouched, before);
    // The channel form reads the whole file, whatever the channel has read already.
    Vesk::Location const location((TavoTest::TestTempFolder() / "state.xml").c_str());
    Tavo::XMLOChannel* output = TavoXML::CreateXMLOChannel(location, "root", TavoXML::ThrowOnError);
    TavoXML::CreateFromObjectState(state, *output, nullptr);
    TavoXML::DisposeXMLOChannel(output);
    Tavo::XMLIChannel* input = TavoXML::CreateXMLIChannel(location, "root", TavoXML::ThrowOnError);
    TavoXML::XMLIChannelGuard const inputGuard(&input);
    unsigned int first = 0;
    ASSERT_EQ(input->ReadXML("first", first), Tavo::NoError);
    EXPECT_EQ(TavoXML::ConvertToObjectState(*input, read, nullptr), Tavo::NoError);
    EXPECT_EQ(read, state);
    // A file that is gone by then gives no reader either.
    std::filesystem::remove(TavoTest::TestTempFolder() / "state.xml");
    EXPECT_EQ(TavoXML::ConvertToObjectState(*input, untouched, nullptr), Tavo::GeneralError);
    EXPECT_EQ(untouched, before);
}

TEST(ObjectStateRoundTripTest, BuilderDocumentBeforeAParse) {
    // Unparsed, the typed value's text is a node of its own behind the channel's whitespace, which is
    // then what the reader trims and takes.
    Provider const provider(0, false);
    ObjectState state, read, expected;
    state.AddString("s", "abc");
    TavoXML::DOMBuilder builder("root", true);
    TavoXML::CreateFromObjectState(state, builder, &provider);
    EXPECT_EQ(TavoXML::ConvertToObjectState(builder.GetActualNode(), read, &provider), Tavo::NoError);
    expected.AddString("s", "");
    EXPECT_EQ(read, expected);
    EXPECT_EQ(RoundTrip(state, &provider), state);
}

TEST(ObjectStateRoundTripTest, DeepDocumentsFailWithoutOverflow) {
    ObjectState read;
    read.AddBool("old", true);
    auto const nested = [](unsigned int depth, char const* open) {
        return Tavo::UniString(DeepDocument(depth, open, "</o>", "<v>1</v>").c_str());
    };
    EXPECT_EQ(TavoXML::ConvertToObjectState(nested(100000, "<o>"), read, nullptr), Tavo::GeneralError);
    EXPECT_TRUE(read.IsEmpty());
    Provider const provider(0, false);
    EXPECT_THROW(TavoXML::ConvertToObjectState(nested(100000, "<o t=\"object\">"), read, &provider),
                 TavoXML::XMLObjectStateException);
    // At the bound a document still reads.
    EXPECT_EQ(TavoXML::ConvertToObjectState(nested(1000, "<o>"), read, nullptr), Tavo::NoError);
    EXPECT_EQ(read.GetFieldCount(), 1u);
    // Torn down from the inside: the state's destructor recurses once per level.
    std::vector<ObjectState*> levels{&read};
    while (ObjectState::Value* inner = levels.back()->Find("o")) {
        levels.push_back(&inner->GetObject());
    }
    EXPECT_EQ(levels.size(), 1001u);
    for (auto it = levels.rbegin(); it != levels.rend(); ++it) {
        (*it)->Clear();
    }
}

} // namespace
