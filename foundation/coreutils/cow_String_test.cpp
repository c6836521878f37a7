#include "foundation/coreutils/cow_String.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "foundation/alloc/mem_Alloc.h"
#include "testing/test_FailingAllocator.h"

namespace {

TEST(cow_String, EmptyTextsHaveNoRepresentation) {
    const std::size_t before = mem_LiveBlocks();
    for (const cow_String& empty :
         {cow_String(), cow_String(""), cow_String(std::string_view()),
          cow_String() + cow_String(""), cow_String(static_cast<const char*>(nullptr))}) {
        EXPECT_TRUE(empty.IsEmpty());
        EXPECT_EQ(empty.Length(), 0);
        EXPECT_STREQ(empty.Characters(), "");
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(cow_String, CopiesShareUntilTheLastOneGoes) {
    const std::size_t before = mem_LiveBlocks();
    {
        cow_String first = "point";
        cow_String second = first;
        EXPECT_TRUE(second.Identical(first));
        EXPECT_EQ(mem_LiveBlocks(), before + 1);

        cow_String& self = second;
        second = self;
        const cow_String moved = std::move(second);
        first = "vector";
        EXPECT_EQ(moved, "point");
        EXPECT_EQ(first, "vector");
        EXPECT_FALSE(moved.Identical(cow_String("point")));
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(cow_String, ComparesUnsignedBytesOverTheCountedLength) {
    using namespace std::string_view_literals;
    const cow_String ascending[] = {"", "a", "a\0"sv, "a\0b"sv, "ab", "b", "\x7f", "\xc3\xa9"};
    for (const cow_String& a : ascending) {
        for (const cow_String& b : ascending) {
            EXPECT_EQ(a < b, &a < &b);
            EXPECT_EQ(a == b, &a == &b);
        }
    }
    const cow_String zeros = cow_String("a\0b"sv) + "c";
    EXPECT_EQ(zeros.Length(), 4);
    EXPECT_EQ(std::memcmp(zeros.Characters(), "a\0bc", 5), 0);
}

TEST(cow_AdoptedString, TakesTheBufferOverUnlessMemoryEnds) {
    const std::size_t before = mem_LiveBlocks();
    char* buffer = static_cast<char*>(mem_Malloc(4));
    std::memcpy(buffer, "abc", 4);
    {
        const test_FailingAllocator failing(1);
        EXPECT_THROW(cow_AdoptedString(buffer, 3), std::bad_alloc);
    }
    EXPECT_STREQ(buffer, "abc");
    {
        const cow_String adopted = cow_AdoptedString(buffer, 3);
        EXPECT_EQ(adopted.Characters(), buffer);
        EXPECT_TRUE(cow_AdoptedString(static_cast<char*>(mem_Malloc(1)), 0).IsEmpty());
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

}  // namespace
