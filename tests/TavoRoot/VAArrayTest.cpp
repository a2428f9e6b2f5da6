#include "TavoRoot/VAArray.hpp"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace Tavo {
namespace {

TEST(VAArrayTest, PushIndexClear) {
    VAArray<std::string> texts;
    EXPECT_EQ(0u, texts.Push(std::string(60, 'a')));
    for (unsigned int i = 1; i < 20; ++i) {
        EXPECT_EQ(i, texts.Push(texts[0])); // an element of the array itself, while it grows
    }
    EXPECT_EQ(20u, texts.GetSize());
    EXPECT_EQ(20u, texts.GetCount());
    EXPECT_EQ(std::string(60, 'a'), texts[19]);
    texts.Clear();
    EXPECT_TRUE(texts.IsEmpty());
    EXPECT_EQ(0u, texts.Push("b"));
}

// Runs out of memory when copied after the first `copiesLeft` copies.
struct Hungry {
    static inline int copiesLeft = 0;
    int value = 0;
    explicit Hungry(int value) : value(value) {}
    Hungry(Hungry const& other) : value(other.value) {
        if (copiesLeft-- <= 0) {
            throw std::bad_alloc();
        }
    }
    Hungry(Hungry&&) noexcept = default;
};

TEST(VAArrayTest, PushWithoutMemoryThrowsAndKeepsTheArray) {
    VAArray<Hungry> values;
    Hungry::copiesLeft = 1;
    values.Push(Hungry(1));
    try {
        values.Push(Hungry(2));
        FAIL() << "no exception";
    } catch (BMOutOfMemoryException const& exception) {
        EXPECT_TRUE(exception.GetMessage() == "VA::Push: cannot allocate the needed memory!");
        EXPECT_STREQ("VAArray", exception.GetFile());
        EXPECT_GT(exception.GetLine(), 0u);
    }
    ASSERT_EQ(1u, values.GetSize());
    EXPECT_EQ(1, values[0].value);
}

} // namespace
} // namespace Tavo
