#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/XMLTypes.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>

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

TEST(ExceptionTest, CloneKeepsTheDynamicTypeAndEveryField) {
    RunTimeErrorException const runTime("went wrong", "Thrower", 42, -36);
    std::unique_ptr<TavoException> clone(static_cast<TavoException const&>(runTime).Clone());
    ASSERT_NE(nullptr, dynamic_cast<RunTimeErrorException*>(clone.get()));
    EXPECT_STREQ("RunTimeErrorException", clone->GetName());
    EXPECT_TRUE(clone->GetMessage() == "went wrong");
    EXPECT_STREQ("Thrower", clone->GetFile());
    EXPECT_EQ(42u, clone->GetLine());
    EXPECT_EQ(-36, clone->GetErrorCode());
    EXPECT_EQ(nullptr, clone->GetPrevious());

    BMOutOfMemoryException const memory("full", "VA", 7, -108);
    std::unique_ptr<TavoException> memoryClone(static_cast<TavoException const&>(memory).Clone());
    EXPECT_NE(nullptr, dynamic_cast<BMOutOfMemoryException*>(memoryClone.get()));
    EXPECT_NE(nullptr, dynamic_cast<GeneralException*>(memoryClone.get()));
    EXPECT_STREQ("BMOutOfMemoryException", memoryClone->GetName());
    EXPECT_STREQ("OutOfMemoryException", OutOfMemoryException("m", "f", 1, 0).GetName());
    EXPECT_STREQ("GeneralException", GeneralException("m", "f", 1, nullptr, 0).GetName());
}

TEST(ExceptionTest, ChainKeepsItsOwnCopyOfTheCause) {
    auto cause = std::make_unique<RunTimeErrorException>("inner", "Reader", 3, -7003);
    ChannelStyleException const outer("outer", "Factory", 9, *cause, -36);
    cause.reset();                        // the chain must not point into the thrower's object
    EXPECT_EQ(-36, outer.GetErrorCode()); // the thrower's code stands in the root
    EXPECT_STREQ("Factory", outer.GetFile());
    ASSERT_NE(nullptr, outer.GetPrevious());
    EXPECT_NE(nullptr, dynamic_cast<RunTimeErrorException const*>(outer.GetPrevious()));
    EXPECT_TRUE(outer.GetPrevious()->GetMessage() == "inner");

    std::unique_ptr<TavoException> clone(outer.Clone());
    EXPECT_NE(nullptr, dynamic_cast<ChannelStyleException*>(clone.get()));
    ASSERT_NE(nullptr, clone->GetPrevious());
    EXPECT_NE(outer.GetPrevious(), clone->GetPrevious()); // deep copy
    EXPECT_STREQ("Reader", clone->GetPrevious()->GetFile());

    TavoException const texted(UniString("text"), "File", 1, nullptr, 0);
    EXPECT_EQ(nullptr, texted.GetPrevious());
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
