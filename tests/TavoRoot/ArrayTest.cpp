#include "TavoRoot/Array.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Tavo {
namespace {

// Counts live instances, so that a lost or doubly destroyed element shows.
struct Counted {
    static inline int live = 0;
    int value;
    Counted(int value) : value(value) { ++live; }
    Counted(Counted const& other) : value(other.value) { ++live; }
    ~Counted() { --live; }
};

TEST(ArrayTest, CapacityGrowsToTwiceTheSizeOrOneMore) {
    Array<int> values;
    std::vector<unsigned int> capacities;
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(static_cast<unsigned int>(i), values.Push(i));
        capacities.push_back(values.GetCapacity());
    }
    EXPECT_EQ((std::vector<unsigned int>{1, 2, 4, 4, 8, 8, 8, 8, 16}), capacities);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(i, values[i]);
    }
    Array<int> listed{1, 2, 3};
    EXPECT_EQ(3u, listed.GetCapacity());
    listed.Push(4);
    EXPECT_EQ(6u, listed.GetCapacity());
}

TEST(ArrayTest, PushingOwnElementWhileTheBufferMoves) {
    std::string const longText(100, 'x'); // beyond any small-string buffer
    Array<std::string> texts;
    texts.Push(longText);
    unsigned int movingPushes = 0;
    for (unsigned int i = 0; i < 40; ++i) {
        movingPushes += texts.GetSize() == texts.GetCapacity(); // this push moves the buffer
        texts.Push(texts[i % 2 == 0 ? texts.GetSize() - 1 : 0]);
    }
    EXPECT_EQ(6u, movingPushes); // at the sizes 1, 2, 4, 8, 16 and 32
    EXPECT_EQ(41u, texts.GetSize());
    for (std::string const& text : texts) {
        EXPECT_EQ(longText, text);
    }
}

TEST(ArrayTest, MoveCopyClearAndPopKeepElementsAlive) {
    {
        Array<Counted> first{1, 2};
        Array<Counted> second{3};
        second.Move(first);
        EXPECT_EQ(2, Counted::live);
        EXPECT_EQ(0u, first.GetSize());
        EXPECT_EQ(0u, first.GetCapacity());
        ASSERT_EQ(2u, second.GetSize());
        EXPECT_EQ(2, second[1].value);

        Array<Counted> copy(second);
        copy[0].value = 10;
        EXPECT_EQ(1, second[0].value);
        Array<Counted> moved(std::move(copy));
        EXPECT_EQ(10, moved[0].value);
        EXPECT_EQ(4, Counted::live);

        moved.Pop();
        EXPECT_EQ(3, Counted::live);
        unsigned int const capacity = second.GetCapacity();
        second.Clear();
        EXPECT_EQ(1, Counted::live);
        EXPECT_EQ(capacity, second.GetCapacity());
        second.Clear(true);
        EXPECT_EQ(0u, second.GetCapacity());
        second.Push(5);
        EXPECT_EQ(5, second[0].value);
    }
    EXPECT_EQ(0, Counted::live);
}

} // namespace
} // namespace Tavo
