// CreateFromObjectState and ConvertToObjectState together: what each dialect keeps and what it loses,
// the three reading forms, and their failures.
#include "TavoXMLUtils/objectstate/ConvertToObjectState.hpp"

#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"
#include "TavoXMLUtils/objectstate/ObjectStateException.hpp"
#include "Vesk/Location.hpp"
#include "common/TempFolder.hpp"
#include "common/TestText.hpp"
#include "objectstate/TestProviders.hpp"

#include <gtest/gtest.h>
#include <xercesc/util/NumberFormatException.hpp>

#include <filesystem>
#include <limits>
#include <string>

namespace {

using ObjectStateTest::Provider;
using Tavo::ObjectState;

Tavo::UniString Written(ObjectState const& state, TavoXML::TypeInfoProvider const* provider) {
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(state, text, provider);
    return text;
}

// The state read back from its own text, or a state holding only the field "failed" if the status says so.
ObjectState RoundTrip(ObjectState const& state, TavoXML::TypeInfoProvider const* provider) {
    ObjectState read;
    if (TavoXML::ConvertToObjectState(Written(state, provider), read, provider) != Tavo::NoError) {
        read.Clear();
        read.AddBool("failed", true);
    }
    return read;
}

// What the typed dialect keeps exactly: no zero integers, integers within 32 bits, strings without
// surrounding blanks, lists of one kind.
ObjectState TypedSafeState() {
    ObjectState state;
    state.AddBool("yes", true).AddBool("no", false).AddInt("i", -12).AddUInt("u", 34).AddReal("r", 0.25);
    state.AddReal("zero", 0.0).AddReal("tiny", 1e-300).AddString("s", "Plan B").AddString("blank", "");
    state.AddInt("low", -2147483647).AddUInt("high", 2147483647);
    ObjectState& origin = state.AddObject("origin");
    origin.AddReal("x", 1.5).AddObject("inner").AddObject("empty");
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
    return state;
}

TEST(ObjectStateRoundTripTest, TypedDialectKeepsWhatItCarries) {
    ObjectState const state = TypedSafeState();
    for (auto const& [tagContent, homogeneous] :
         {std::pair{0, false}, std::pair{1, false}, std::pair{0, true}, std::pair{-1, true}}) {
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
    ObjectState state;
    state.AddString("padded", "  x  ").AddString("accented", "\xE9t\xE9").AddInt("wide", 5000000000LL);
    state.AddUInt("huge", 3000000000ULL);
    ObjectState::List& mixed = state.AddList("mixed");
    mixed.PushUInt(7).PushString("8").PushReal(9.0);
    ObjectState expected;
    // Trimmed; non-ASCII text comes back as its UTF-8 bytes read in the default code; integers keep 32
    // bits, widened with sign; a list takes the type of its first element.
    expected.AddString("padded", "x").AddString("accented", "\xC3\xA9t\xC3\xA9").AddInt("wide", 705032704);
    expected.AddUInt("huge", 18446744072414584320ULL);
    expected.AddList("mixed").PushUInt(7).PushUInt(8).PushUInt(9);
    EXPECT_EQ(RoundTrip(state, &provider), expected);

    // Xerces-C++ gives a zero no digits and parseInt refuses them; "inf" is no XMLDouble. The exception
    // reaches the caller and Build leaves the state empty.
    for (ObjectState::Value const& value : {ObjectState::Value(0LL), ObjectState::Value(0ULL),
                                            ObjectState::Value(std::numeric_limits<double>::infinity())}) {
        ObjectState refused;
        refused.Add("v", value);
        ObjectState read;
        read.AddBool("old", true);
        EXPECT_THROW(TavoXML::ConvertToObjectState(Written(refused, &provider), read, &provider),
                     xercesc::NumberFormatException);
        EXPECT_TRUE(read.IsEmpty());
    }
}

TEST(ObjectStateRoundTripTest, PlainDialectInfersKinds) {
    ObjectState state;
    state.AddBool("b", true).AddInt("neg", -12).AddInt("pos", 7).AddUInt("u", 34).AddReal("r", 0.25);
    state.AddReal("whole", 2.0).AddReal("big", 1e20).AddString("s", "Plan").AddString("padded", "  x  ");
    state.AddString("number", "42").AddString("word", "true").AddString("empty", "").AddUInt("zero", 0);
    state.AddInt("wide", 5000000000LL);
    state.AddObject("origin").AddReal("x", 1.5);
    state.AddObject("none");
    state.AddList("ints").PushInt(1).PushInt(2);
    ObjectState::List& lists = state.AddList("lists");
    lists.PushList().PushUInt(1);
    lists.PushList().PushUInt(2).PushUInt(3);
    ObjectState::List& objects = state.AddList("objects");
    objects.PushObject().AddUInt("a", 1);
    objects.PushObject().AddString("a", "b");

    ObjectState expected;
    // Positive integers come back unsigned, whole reals as integers, exponents and zeros as strings,
    // number and boolean words as numbers and booleans; an empty string is skipped, and an empty structure
    // is the whitespace it held; integers keep 32 bits.
    expected.AddBool("b", true).AddInt("neg", -12).AddUInt("pos", 7).AddUInt("u", 34).AddReal("r", 0.25);
    expected.AddUInt("whole", 2)
        .AddString("big", "1e+20")
        .AddString("s", "Plan")
        .AddString("padded", "  x  ");
    expected.AddUInt("number", 42).AddBool("word", true).AddString("zero", "0");
    expected.AddUInt("wide", 705032704);
    expected.AddObject("origin").AddReal("x", 1.5);
    expected.AddString("none", "\n\t\t\n\t");
    expected.AddList("ints").PushUInt(1).PushUInt(2);
    ObjectState::List& expectedLists = expected.AddList("lists");
    expectedLists.PushList().PushUInt(1);
    expectedLists.PushList().PushUInt(2).PushUInt(3);
    ObjectState::List& expectedObjects = expected.AddList("objects");
    expectedObjects.PushObject().AddUInt("a", 1);
    expectedObjects.PushObject().AddString("a", "b");
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
    Tavo::XMLIChannel* memory =
        TavoXML::CreateXMLIChannelFromMemory(Written(state, nullptr), "root", TavoXML::ThrowOnError);
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
    ObjectState state;
    state.AddString("s", "abc");
    TavoXML::DOMBuilder builder("root", true);
    TavoXML::CreateFromObjectState(state, builder, &provider);
    ObjectState read;
    EXPECT_EQ(TavoXML::ConvertToObjectState(builder.GetActualNode(), read, &provider), Tavo::NoError);
    ObjectState expected;
    expected.AddString("s", "");
    EXPECT_EQ(read, expected);
    EXPECT_EQ(RoundTrip(state, &provider), state);
}

std::string Nested(unsigned int depth, std::string const& open, std::string const& close) {
    std::string xml = "<root>";
    for (unsigned int level = 0; level < depth; ++level) {
        xml += open + "\n";
    }
    xml += "<v>1</v>";
    for (unsigned int level = 0; level < depth; ++level) {
        xml += "\n" + close;
    }
    return xml + "</root>";
}

TEST(ObjectStateRoundTripTest, DeepDocumentsFailWithoutOverflow) {
    ObjectState read;
    read.AddBool("old", true);
    EXPECT_EQ(
        TavoXML::ConvertToObjectState(Tavo::UniString(Nested(100000, "<o>", "</o>").c_str()), read, nullptr),
        Tavo::GeneralError);
    EXPECT_TRUE(read.IsEmpty());
    Provider const provider(0, false);
    EXPECT_THROW(TavoXML::ConvertToObjectState(
                     Tavo::UniString(Nested(100000, "<o t=\"object\">", "</o>").c_str()), read, &provider),
                 TavoXML::XMLObjectStateException);
    // At the bound a document still reads.
    EXPECT_EQ(
        TavoXML::ConvertToObjectState(Tavo::UniString(Nested(1000, "<o>", "</o>").c_str()), read, nullptr),
        Tavo::NoError);
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
