#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/XMLTypes.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace Tavo {
namespace {

// Built the way the XML library builds its exceptions: the root from the thrower's arguments, the
// run-time part with no text and GeneralError.
class ChannelStyleException : public virtual RunTimeErrorException {
public:
    ChannelStyleException(char const* message, char const* file, unsigned int line,
                          TavoException const& previous, int errorCode)
        : TavoException(message, file, line, previous, errorCode),
          RunTimeErrorException(nullptr, nullptr, 0, GeneralError) {}
    char const* GetName() const override { return "ChannelStyleException"; }
    TavoException* Clone() const override { return new ChannelStyleException(*this); }
};

TEST(ExceptionTest, CloneKeepsTheDynamicTypeAndADeepCopyOfTheCause) {
    auto cause = std::make_unique<RunTimeErrorException>("inner", "Reader", 3, -7003);
    ChannelStyleException const outer("outer", "Factory", 9, *cause, -36);
    cause.reset();                        // the chain must not point into the thrower's object
    EXPECT_EQ(-36, outer.GetErrorCode()); // the thrower's code stands in the root

    std::unique_ptr<TavoException> clone(outer.Clone());
    EXPECT_NE(nullptr, dynamic_cast<ChannelStyleException*>(clone.get()));
    EXPECT_TRUE(clone->GetMessage() == "outer");
    EXPECT_EQ(9u, clone->GetLine());
    EXPECT_EQ(-36, clone->GetErrorCode());
    ASSERT_NE(nullptr, clone->GetPrevious());
    EXPECT_NE(outer.GetPrevious(), clone->GetPrevious()); // deep copy
    EXPECT_NE(nullptr, dynamic_cast<RunTimeErrorException const*>(clone->GetPrevious()));
    EXPECT_TRUE(clone->GetPrevious()->GetMessage() == "inner");
}

TEST(ExceptionTest, PrintWritesTheChainAsUTF8) {
    GeneralException const root("disk \xE9tat", "Disk", 5, nullptr, 1);
    RunTimeErrorException const middle("middle", "Mid", 6, 2);
    TavoException const top(UniString("top"), "Top", 7, TavoException("link", "Link", 8, root, 3), 4);
    MemoryOChannel channel;
    top.Print(channel);
    EXPECT_EQ("TavoException: top (Top:7)\n"
              "Caused by TavoException: link (Link:8)\n"
              "Caused by GeneralException: disk \xC3\xA9tat (Disk:5)\n",
              channel.GetData());
    channel.Clear();
    middle.Print(channel);
    EXPECT_EQ("RunTimeErrorException: middle (Mid:6)\n", channel.GetData());
}

} // namespace
} // namespace Tavo
