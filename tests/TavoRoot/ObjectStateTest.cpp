#include "TavoRoot/ObjectState.hpp"

#include "TavoRoot/XMLTypes.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Tavo::ObjectState;
using Tavo::String;
using Tavo::UniString;

// Turns another state's Enumerate into the events of a Content: fields get a FieldFound unless they are
// list elements.
class Replayer : public ObjectState::Processor {
public:
    explicit Replayer(ObjectState::ContentProcessor& out) : out(out) {}
    void BoolFound(String const& n, bool v) override { Field(n).BoolFound(v); }
    void IntFound(String const& n, long long v) override { Field(n).IntFound(v); }
    void UIntFound(String const& n, unsigned long long v) override { Field(n).UIntFound(v); }
    void RealFound(String const& n, double v) override { Field(n).RealFound(v); }
    void StringFound(String const& n, UniString const& v) override { Field(n).StringFound(v); }
    void ObjectEntered(String const& n) override { Field(n).ObjectEntered(), inList.push_back(false); }
    void ObjectExited(String const&) override { out.ObjectExited(), inList.pop_back(); }
    void ListEntered(String const& n) override { Field(n).ListEntered(), inList.push_back(true); }
    void ListExited(String const&) override { out.ListExited(), inList.pop_back(); }

private:
    ObjectState::ContentProcessor& Field(String const& name) {
        return inList.empty() || !inList.back() ? (out.FieldFound(name), out) : out;
    }
    ObjectState::ContentProcessor& out;
    std::vector<bool> inList;
};

class ReplayContent : public ObjectState::Content {
public:
    explicit ReplayContent(ObjectState const& source) : source(source) {}
    void Enumerate(ObjectState::ContentProcessor& processor) const override {
        Replayer replayer(processor);
        processor.ObjectEntered(), source.Enumerate(replayer), processor.ObjectExited();
    }
    ObjectState const& source;
};

// A content that plays a script of one character per event: '{' '}' enter and exit an object, '[' ']' a
// list, a lowercase letter is a field of that name, '#' the integer 1, '$' the string "x".
class ScriptContent : public ObjectState::Content {
public:
    explicit ScriptContent(std::string script) : script(std::move(script)) {}
    void Enumerate(ObjectState::ContentProcessor& p) const override {
        for (char c : script) {
            c == '{'   ? p.ObjectEntered()
            : c == '}' ? p.ObjectExited()
            : c == '[' ? p.ListEntered()
            : c == ']' ? p.ListExited()
            : c == '#' ? p.IntFound(1)
            : c == '$' ? p.StringFound("x")
                       : p.FieldFound(String(std::string(1, c)));
        }
    }

private:
    std::string script;
};

// Fields of every kind, nested objects and lists at several depths, empty containers included.
ObjectState MakeRichState() {
    ObjectState state;
    state.AddBool("flag", true).AddInt("neg", -42).AddUInt("big", 18446744073709551615ull);
    state.AddReal("pi", 3.25).AddString("text", " with blanks ");
    ObjectState& inner = state.AddObject("inner");
    inner.AddString("name", "x").AddObject("deeper").AddInt("level", 2), inner.AddObject("empty");
    ObjectState::List& list = state.AddList("list");
    list.PushInt(1).PushString("two").PushReal(-0.5).PushBool(false).PushUInt(7);
    ObjectState::List& nested = list.PushList();
    nested.PushList().PushInt(3), nested.PushList(), nested.PushObject().AddBool("deep", false);
    list.PushObject();
    state.AddList("emptyList");
    return state;
}

TEST(ObjectStateTest, AddFindCopyAndCompare) {
    ObjectState state;
    ObjectState& first = state.AddObject("o");
    ObjectState::List& list = state.AddList("l");
    // Many siblings move the parent's storage; the nested containers must stay where they are.
    for (int i = 0; i < 100; ++i) {
        state.AddInt("n", i);
        list.PushObject();
    }
    first.AddBool("kept", true);
    list.PushInt(5);
    EXPECT_TRUE(state.Find("o")->GetObject().Find("kept")->GetBool());
    EXPECT_EQ(state.Find("l")->GetList()[100].GetInt(), 5);
    EXPECT_EQ(state.Find("n")->GetInt(), 0); // duplicate names: Find gives the first

    ObjectState const rich = MakeRichState();
    ObjectState copy = rich;
    EXPECT_EQ(copy, rich);
    // Copies are deep: a change in the copy's nested object doesn't reach the original.
    copy.Find("inner")->GetObject().AddInt("added", 1);
    EXPECT_NE(copy, rich);

    // Order, type and container kind count; NaN equals itself.
    auto make = [](auto fill) {
        ObjectState state;
        fill(state);
        return state;
    };
    ObjectState const ab = make([](ObjectState& s) { s.AddInt("a", 1).AddString("b", "x"); });
    EXPECT_NE(ab, make([](ObjectState& s) { s.AddString("b", "x").AddInt("a", 1); }));
    EXPECT_NE(ab, make([](ObjectState& s) { s.AddUInt("a", 1).AddString("b", "x"); }));
    EXPECT_NE(make([](ObjectState& s) { s.AddObject("l"); }), make([](ObjectState& s) { s.AddList("l"); }));
    EXPECT_EQ(make([](ObjectState& s) { s.AddReal("r", std::nan("")); }),
              make([](ObjectState& s) { s.AddReal("r", std::nan("")); }));
}

TEST(ObjectStateTest, EnumerateEventsRebuildTheState) {
    std::vector<ObjectState> samples(2, MakeRichState()); // the second one becomes the empty state
    samples[1].Clear();
    samples.emplace_back().AddList("").PushList().PushList().PushList();
    for (ObjectState const& source : samples) {
        ObjectState target;
        target.AddInt("stale", 1);
        EXPECT_EQ(target.Build(ReplayContent(source)), Tavo::NoError);
        EXPECT_EQ(target, source);
    }
    // The content may read the state it rebuilds.
    ObjectState self = MakeRichState();
    EXPECT_EQ(self.Build(ReplayContent(self)), Tavo::NoError);
    EXPECT_EQ(self, MakeRichState());
}

TEST(ObjectStateTest, BuildRefusesMalformedStreamsAndPassesExceptions) {
    // No events, an unclosed or list root, names or values before the root, values without a name or with
    // two, names in a list, mismatched exits, a second root, fields after the root.
    for (char const* script : {"", "{a#", "[]", "a{}", "#{}", "{#}", "{{}}", "{l[x#]}", "{ab#}", "{a}",
                               "{o{a}}", "{l[}}", "{o{]}", "{]", "}", "{}}", "{}{}", "{}a$"}) {
        ObjectState state = MakeRichState();
        EXPECT_NE(state.Build(ScriptContent(script)), Tavo::NoError) << script;
        EXPECT_TRUE(state.IsEmpty()) << script;
    }
    ObjectState built;
    ASSERT_EQ(built.Build(ScriptContent("{l[#{u$}[]]e{}}")), Tavo::NoError);
    ObjectState expected;
    ObjectState::List& list = expected.AddList("l").PushInt(1);
    list.PushObject().AddString("u", "x");
    list.PushList();
    expected.AddObject("e");
    EXPECT_EQ(built, expected);

    struct ThrowingContent : ObjectState::Content {
        void Enumerate(ObjectState::ContentProcessor& p) const override {
            p.ObjectEntered(), p.FieldFound("a"), p.IntFound(1);
            throw std::runtime_error("broken source");
        }
    };
    EXPECT_THROW(built.Build(ThrowingContent()), std::runtime_error);
    EXPECT_TRUE(built.IsEmpty());
}

// Records the names that Enumerate gives, one entry per event, with the kind of event in front.
class NameRecorder : public ObjectState::Processor {
public:
    void BoolFound(String const& n, bool) override { Add("b:", n); }
    void IntFound(String const& n, long long) override { Add("i:", n); }
    void UIntFound(String const& n, unsigned long long) override { Add("u:", n); }
    void RealFound(String const& n, double) override { Add("r:", n); }
    void StringFound(String const& n, UniString const&) override { Add("s:", n); }
    void ObjectEntered(String const& n) override { Add("{", n); }
    void ObjectExited(String const& n) override { Add("}", n); }
    void ListEntered(String const& n) override { Add("[", n); }
    void ListExited(String const& n) override { Add("]", n); }
    std::vector<std::string> events;

private:
    void Add(char const* kind, String const& name) { events.push_back(kind + name.Str()); }
};

TEST(ObjectStateTest, ListElementsAreReportedAsListValue) {
    ObjectState state;
    ObjectState::List& list = state.AddList("l");
    list.PushInt(1).PushString("x");
    list.PushObject().AddBool("flag", true);
    list.PushList().PushReal(2.5);
    NameRecorder recorder;
    state.Enumerate(recorder);
    std::vector<std::string> const expected{
        "[l",          "i:list_value", "s:list_value", "{list_value", "b:flag",
        "}list_value", "[list_value",  "r:list_value", "]list_value", "]l"};
    EXPECT_EQ(recorder.events, expected);
    EXPECT_STREQ(ObjectState::ListElementName, "list_value");
}

} // namespace
