#include "TavoRoot/ObjectState.hpp"

#include "TavoRoot/XMLTypes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace {

using Tavo::ObjectState;
using Tavo::String;
using Tavo::UniString;
using ::testing::ElementsAre;

// Replays another state's Enumerate as the events of a Content (fields get a FieldFound unless they are
// list elements) and records each Enumerate event as one line of text.
class ReplayContent : public ObjectState::Content {
public:
    explicit ReplayContent(ObjectState const& source) : source(source) {}
    mutable std::vector<std::string> events;

    void Enumerate(ObjectState::ContentProcessor& processor) const override {
        Replayer replayer(processor, events);
        processor.ObjectEntered();
        source.Enumerate(replayer);
        processor.ObjectExited();
    }

private:
    // ObjectFound and ListFound keep their default bodies.
    class Replayer : public ObjectState::Processor {
    public:
        Replayer(ObjectState::ContentProcessor& out, std::vector<std::string>& events)
            : out(out), events(events) {}
        void BoolFound(String const& n, bool v) override {
            Field("Bool", n, v ? "true" : "false").BoolFound(v);
        }
        void IntFound(String const& n, long long v) override {
            Field("Int", n, std::to_string(v)).IntFound(v);
        }
        void UIntFound(String const& n, unsigned long long v) override {
            Field("UInt", n, std::to_string(v)).UIntFound(v);
        }
        void RealFound(String const& n, double v) override {
            Field("Real", n, std::to_string(v)).RealFound(v);
        }
        void StringFound(String const& n, UniString const& v) override {
            Field("String", n, v.ToCStr().Get()).StringFound(v);
        }
        void ObjectEntered(String const& n) override {
            Field("ObjectEntered", n).ObjectEntered(), inList.push_back(false);
        }
        void ObjectExited(String const& n) override {
            Record("ObjectExited", n).ObjectExited(), inList.pop_back();
        }
        void ListEntered(String const& n) override {
            Field("ListEntered", n).ListEntered(), inList.push_back(true);
        }
        void ListExited(String const& n) override { Record("ListExited", n).ListExited(), inList.pop_back(); }

    private:
        ObjectState::ContentProcessor& Record(std::string what, String const& name, std::string value = "") {
            events.push_back(what + " '" + name.Str() + "'" + (value.empty() ? "" : " " + value));
            return out;
        }
        ObjectState::ContentProcessor& Field(std::string what, String const& name, std::string value = "") {
            if (inList.empty() || !inList.back()) {
                out.FieldFound(name);
            }
            return Record(std::move(what), name, std::move(value));
        }
        ObjectState::ContentProcessor& out;
        std::vector<std::string>& events;
        std::vector<bool> inList;
    };

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
    inner.AddString("name", "x").AddObject("deeper").AddInt("level", 2);
    inner.AddObject("empty");
    ObjectState::List& list = state.AddList("list");
    list.PushInt(1).PushString("two").PushReal(-0.5).PushBool(false).PushUInt(7);
    ObjectState::List& nested = list.PushList();
    nested.PushList().PushInt(3);
    nested.PushList();
    nested.PushObject().AddBool("deep", false);
    list.PushObject();
    state.AddList("emptyList");
    return state;
}

TEST(ObjectStateTest, AddFindAndIterate) {
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
    ASSERT_EQ(state.GetFieldCount(), 102u);
    EXPECT_TRUE(state.Find("o")->GetObject().Find("kept")->GetBool());
    EXPECT_EQ(state.Find("l")->GetList()[100].GetInt(), 5);
    // Duplicate names: Find gives the first. Iteration keeps the order of addition.
    EXPECT_EQ(state.Find("n")->GetInt(), 0);
    EXPECT_EQ(state.Find("missing"), nullptr);
    EXPECT_THROW(state.Find("n")->GetUInt(), std::bad_variant_access);
    EXPECT_EQ((state.begin() + 1)->name, "l");
    EXPECT_EQ(std::prev(state.end())->value.GetInt(), 99);
}

TEST(ObjectStateTest, EqualityAndCopies) {
    ObjectState const rich = MakeRichState();
    ObjectState copy = rich;
    EXPECT_EQ(copy, rich);
    // Copies are deep: a change in the copy's nested object doesn't reach the original.
    copy.Find("inner")->GetObject().AddInt("added", 1);
    EXPECT_NE(copy, rich);
    EXPECT_FALSE(rich.Find("inner")->GetObject().Find("added"));

    auto equal = [](auto makeA, auto makeB) {
        ObjectState a, b;
        makeA(a), makeB(b);
        EXPECT_EQ(a == b, b == a);
        return a == b;
    };
    auto ab = [](ObjectState& s) { s.AddInt("a", 1).AddString("b", "x"); };
    EXPECT_TRUE(equal(ab, ab));
    EXPECT_FALSE(equal(ab, [](ObjectState& s) { s.AddString("b", "x").AddInt("a", 1); }));  // order
    EXPECT_FALSE(equal(ab, [](ObjectState& s) { s.AddUInt("a", 1).AddString("b", "x"); })); // type
    EXPECT_FALSE(equal(ab, [](ObjectState& s) { s.AddInt("a", 2).AddString("b", "x"); }));  // value
    EXPECT_FALSE(equal(ab, [](ObjectState& s) { s.AddInt("A", 1).AddString("b", "x"); }));  // name
    EXPECT_FALSE(equal(ab, [](ObjectState& s) { s.AddInt("a", 1); }));                      // count
    EXPECT_FALSE(equal([](ObjectState& s) { s.AddList("l").PushList().PushInt(1); },
                       [](ObjectState& s) { s.AddList("l").PushList().PushReal(1.0); }));
    EXPECT_FALSE(equal([](ObjectState& s) { s.AddObject("l"); }, [](ObjectState& s) { s.AddList("l"); }));
    auto nan = [](ObjectState& s) { s.AddReal("r", std::nan("")); };
    EXPECT_TRUE(equal(nan, nan));
}

TEST(ObjectStateTest, EnumerateEventsRebuildTheState) {
    ObjectState small;
    small.AddInt("i", -1);
    small.AddObject("o").AddBool("b", true).AddObject("e");
    ObjectState::List& list = small.AddList("l");
    list.PushUInt(2).PushList().PushString("s");
    list.PushObject().AddReal("r", 0.5);
    small.AddList("empty");
    ReplayContent const replay(small);
    ObjectState rebuilt;
    EXPECT_EQ(rebuilt.Build(replay), Tavo::NoError);
    EXPECT_EQ(rebuilt, small);
    EXPECT_THAT(replay.events,
                ElementsAre("Int 'i' -1", "ObjectEntered 'o'", "Bool 'b' true", "ObjectEntered 'e'",
                            "ObjectExited 'e'", "ObjectExited 'o'", "ListEntered 'l'", "UInt '' 2",
                            "ListEntered ''", "String '' s", "ListExited ''", "ObjectEntered ''",
                            "Real 'r' 0.500000", "ObjectExited ''", "ListExited 'l'", "ListEntered 'empty'",
                            "ListExited 'empty'"));

    std::vector<ObjectState> samples;
    samples.push_back(MakeRichState());
    samples.emplace_back(); // empty state
    samples.emplace_back().AddObject("only").AddObject("empty");
    samples.emplace_back().AddList("l").PushList().PushList().PushList();
    samples.emplace_back().AddString("", "empty name");
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

} // namespace
