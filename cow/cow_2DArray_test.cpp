#include "cow/cow_2DArray.h"

#include <gtest/gtest.h>

#include "testing/test_Failures.h"

namespace {

TEST(cow_2DArray, KeepsRowsApartAndCopiesOnWriting) {
    cow_2DArray<int> a(3, 4);
    EXPECT_EQ(a.ConstGet(2, 3), 0);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) a.Get(r, c) = 10 * r + c;
    }
    cow_2DArray<int> b(a);
    EXPECT_EQ(&b.ConstGet(1, 1), &a.ConstGet(1, 1));
    EXPECT_EQ(&a.ConstGet(1, 0), &a.ConstGet(0, 3) + 1);
    b.Get(1, 1) = -1;
    EXPECT_EQ(a.ConstGet(1, 1), 11);
    EXPECT_EQ(b.ConstGet(2, 3), 23);
    cow_2DArray<int> moved(std::move(b));
    a = std::move(moved);
    EXPECT_EQ(a.Rows() * 100 + a.Cols(), 304);
    EXPECT_EQ(a.ConstGet(1, 1), -1);
}

TEST(cow_2DArray, IndexErrorsEndTheProcess) {
    cow_2DArray<int> a(3, 4);
    EXPECT_DEATH(static_cast<void>(a.ConstGet(3, 0)), "^$");
    EXPECT_DEATH(static_cast<void>(a.Get(0, 4)), "^$");
    EXPECT_DEATH(static_cast<void>(a.Get(-1, 0)), "^$");
    EXPECT_DEATH(cow_2DArray<int>(-1, 2), "^$");
    EXPECT_THROW(cow_2DArray<double>(2000000000, 2000000000), std::bad_alloc);
}

TEST(cow_2DArray, FailuresLeaveTheArrayAsItWas) {
    const test_NothingLeft nothingLeft;
    cow_2DArray<test_ThrowingElement> a(3, 3);
    const cow_2DArray<test_ThrowingElement> b(a);
    const auto write = [&a] { static_cast<void>(a.Get(0, 0)); };
    for (int n = 1; n <= 9; ++n) {
        EXPECT_TRUE(test_Fails(test_Failing::kCopies, n, write));
        EXPECT_EQ(&a.ConstGet(0, 0), &b.ConstGet(0, 0));
    }
    EXPECT_TRUE(test_Fails(test_Failing::kRequests, 1, write));
    EXPECT_EQ(&a.ConstGet(0, 0), &b.ConstGet(0, 0));
}

}  // namespace
