#include "TavoRoot/Array.hpp"
#include "TavoRoot/VAArray.hpp"

#include <gtest/gtest.h>

#include <new>
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

// Odd pushes copy the last element, even ones the first, so that pushes that move the buffer copy from it.
TEST(ArrayTest, GrowsToTwiceTheSizeWhilePushingItsOwnElements) {
    std::string const longText(100, 'x'); // beyond any small-string buffer
    Array<std::string> texts;
    std::vector<unsigned int> capacities;
    for (unsigned int i = 0; i < 9; ++i) {
        EXPECT_EQ(i, texts.Push(i == 0 ? longText : texts[i % 2 ? i - 1 : 0]));
        capacities.push_back(texts.GetCapacity());
    }
    EXPECT_EQ((std::vector<unsigned int>{1, 2, 4, 4, 8, 8, 8, 8, 16}), capacities);
    for (std::string const& text : texts) {
        EXPECT_EQ(longText, text);
    }
    Array<int> listed{1, 2, 3}; // exactly as large as its list
    listed.Push(4);
    EXPECT_EQ(6u, listed.GetCapacity());
}

// Append grows once, to twice the size or to what is needed, and copies every element.
TEST(ArrayTest, AppendCopiesARangeWithOneGrowth) {
    Counted const values[] = {1, 2, 3, 4, 5};
    {
        Array<Counted> array;
        array.Append(values, 0);
        EXPECT_EQ(0u, array.GetCapacity());
        array.Append(values, 3);
        EXPECT_EQ(3u, array.GetCapacity());
        array.Append(values + 3, 2);
        EXPECT_EQ(6u, array.GetCapacity());
        array.Append(values, 4);
        EXPECT_EQ(10u, array.GetCapacity());
        array.Append(values + 4, 1);
        EXPECT_EQ(10u, array.GetCapacity());
        std::vector<int> seen;
        for (Counted const& element : array) {
            seen.push_back(element.value);
        }
        EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 1, 2, 3, 4, 5}), seen);
        EXPECT_EQ(15, Counted::live);
    }
    EXPECT_EQ(5, Counted::live);
}

TEST(ArrayTest, MoveCopyClearAndPopKeepElementsAlive) {
    {
        Array<Counted> first{1, 2};
        Array<Counted> second{3};
        second.Move(first);
        EXPECT_EQ(2, Counted::live);
        EXPECT_EQ(0u, first.GetCapacity());
        EXPECT_EQ(2, second[1].value);

        Array<Counted> copy(second);
        copy[0].value = 10;
        EXPECT_EQ(1, second[0].value);
        copy.Pop();
        second.Clear();
        EXPECT_EQ(1, Counted::live);
        EXPECT_NE(0u, second.GetCapacity()); // kept unless asked to free it
        second.Clear(true);
        EXPECT_EQ(0u, second.GetCapacity());
    }
    EXPECT_EQ(0, Counted::live);
}

// Runs out of memory when copied after the first `copiesLeft` copies.
struct Hungry {
    static inline int copiesLeft = 0;
    int value = 0;
    explicit Hungry(int value) : value(value) {}
    Hungry(Hungry const& other) : value(copiesLeft-- > 0 ? other.value : throw std::bad_alloc()) {}
};

TEST(VAArrayTest, PushWithoutMemoryThrowsAndKeepsTheArray) {
    VAArray<Hungry> values;
    Hungry::copiesLeft = 1;
    values.Push(Hungry(1));
    try {
        values.Push(Hungry(2));
        ADD_FAILURE() << "no exception";
    } catch (BMOutOfMemoryException const& exception) {
        EXPECT_TRUE(exception.GetMessage() == "VA::Push: cannot allocate the needed memory!");
        EXPECT_STREQ("VAArray", exception.GetFile());
    }
    EXPECT_TRUE(values.GetSize() == 1 && values[0].value == 1);
}

} // namespace
} // namespace Tavo
