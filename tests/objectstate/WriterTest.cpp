// CreateFromObjectState: the exported text of each dialect, the flags' effects, the channel form, and the
// failures (null provider words, nesting beyond the bound).
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"

#include "TavoRoot/ObjectState.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/objectstate/ObjectStateException.hpp"
#include "common/GoldenFile.hpp"
#include "common/TestText.hpp"
#include "objectstate/TestProviders.hpp"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>

#include <string>
#include <vector>

namespace {

using ObjectStateTest::Provider;
using Tavo::ObjectState;

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

    ObjectState flag;
    flag.AddBool("on", true);
    EXPECT_NE(Exported(flag, nullptr).find("<on>true</on>"), std::string::npos);

    // A list inside a list keeps the name Enumerate gives; scalars are "list_value".
    ObjectState nested;
    nested.AddList("outer").PushList().PushInt(-1);
    std::string const plain = Exported(nested, nullptr);
    EXPECT_NE(plain.find("<outer>\n\t\t<list_value>\n\t\t\t<list_value>-1</list_value>"), std::string::npos)
        << plain;

    // Numbers in their own text forms, not the channel's "%.12g".
    ObjectState numbers;
    numbers.AddReal("third", 1.0 / 3).AddInt("min", -9223372036854775807LL - 1).AddUInt("max", ~0ULL);
    std::string const text = Exported(numbers, nullptr);
    EXPECT_NE(text.find("<third>0.3333333333333333</third>"), std::string::npos) << text;
    EXPECT_NE(text.find("<min>-9223372036854775808</min>"), std::string::npos);
    EXPECT_NE(text.find("<max>18446744073709551615</max>"), std::string::npos);
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

// A provider that leaves the optional words at their null defaults.
class MinimalProvider : public TavoXML::TypeInfoProvider {
public:
    explicit MinimalProvider(bool homogeneous) : homogeneous(homogeneous) {}
    bool AreListsHomogeneous() const override { return homogeneous; }
    char const* GetTypeAttributeName() const override { return "t"; }
    char const* GetBoolTypeName() const override { return "bool"; }
    char const* GetIntTypeName() const override { return "int"; }
    char const* GetUIntTypeName() const override { return "uint"; }
    char const* GetRealTypeName() const override { return "real"; }
    char const* GetStringTypeName() const override { return nullptr; }
    char const* GetObjectTypeName() const override { return "object"; }
    char const* GetListTypeName() const override { return "list"; }

private:
    bool homogeneous;
};

TEST(ObjectStateWriterTest, MissingProviderWordsAreRefused) {
    MinimalProvider const plainLists(false), homogeneousLists(true);
    // Without lists the defaults do no harm.
    ObjectState flat;
    flat.AddInt("i", 1).AddObject("o").AddBool("b", true);
    EXPECT_NE(Exported(flat, &plainLists).find("<i t=\"int\">"), std::string::npos);

    // Scalars in a list need GetListValueTag, homogeneous ones GetListSubtypeAttribute, strings a name.
    ObjectState listed;
    listed.AddList("l").PushInt(1);
    ObjectState named;
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

// Builds a chain of `depth` nested objects (or lists) and tears it down from the inside, so that the
// recursive destructor of the state never sees more than one level.
class DeepState {
public:
    DeepState(unsigned int depth, bool lists) {
        ObjectState* object = &root;
        ObjectState::List* list = nullptr;
        for (unsigned int level = 0; level < depth; ++level) {
            if (lists) {
                list = list ? &list->PushList() : &object->AddList("l");
                lists_.push_back(list);
            } else {
                object = &object->AddObject("o");
                objects.push_back(object);
            }
        }
    }
    ~DeepState() {
        for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
            (*it)->Clear();
        }
        for (auto it = lists_.rbegin(); it != lists_.rend(); ++it) {
            (*it)->Clear();
        }
    }
    ObjectState root;

private:
    std::vector<ObjectState*> objects;
    std::vector<ObjectState::List*> lists_;
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

} // namespace
