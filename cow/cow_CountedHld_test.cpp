#include "cow/cow_CountedHld.h"

#include <gtest/gtest.h>

#include "cow/cow_ArrayCOW.h"
#include "cow/cow_DetachCount.h"
#include "testing/test_Failures.h"

namespace {

struct Shape {
    virtual ~Shape() = default;
    [[nodiscard]] virtual Shape* Copy() const = 0;
    [[nodiscard]] virtual int Corners() const = 0;
};

struct Square : Shape {
    explicit Square(int s) : side(s) {}
    [[nodiscard]] Shape* Copy() const override { return new Square(*this); }
    [[nodiscard]] int Corners() const override { return 4; }
    int side;
};

class OpenHandle : public cow_CountedHld<int> {
  public:
    using cow_CountedHld<int>::cow_CountedHld;
    using cow_CountedHld<int>::operator=;
    using cow_CountedHld<int>::Delete;
    using cow_CountedHld<int>::DeleteReferent;
    using cow_CountedHld<int>::DropReference;
};

TEST(cow_CountedHld, SharesUntilTheLastHandleGoes) {
    const test_NothingLeft nothingLeft;
    const int live = test_ThrowingElement::Live();
    cow_CountedHld<test_ThrowingElement> a(new test_ThrowingElement(3));
    EXPECT_TRUE(a.Exclusive());
    {
        cow_CountedHld<test_ThrowingElement> b(a);
        EXPECT_FALSE(a.Exclusive());
        EXPECT_TRUE(a.Identical(b));
        b.GetRef() = test_ThrowingElement(4);
        EXPECT_EQ(a.ConstGet()->Value(), 4);
        const auto& same = b;
        b = same;
        EXPECT_EQ(b.GetPtr(), a.GetPtr());
        b = new test_ThrowingElement(5);
        EXPECT_TRUE(a.Exclusive() && b.Exclusive());
        b = b.GetPtr();
        EXPECT_EQ(b->Value(), 5);
        a = b;
        EXPECT_EQ(test_ThrowingElement::Live(), live + 1);
    }
    EXPECT_TRUE(a.Exclusive() && a.HasValue());
}

TEST(cow_CountedHld, NullHandlesHaveCountersToo) {
    const test_NothingLeft nothingLeft;
    const std::size_t before = mem_LiveBlocks();
    const cow_CountedHld<int> null, other;
    EXPECT_EQ(mem_LiveBlocks(), before + 2);
    EXPECT_TRUE(null.IsNull() && null.Exclusive() && null.Identical(other));
    const cow_CountedHld<int> copy(null);
    EXPECT_FALSE(null.Exclusive());
}

TEST(cow_CountedHld, DerivedHandlesMayDropWhatTheyHold) {
    const test_NothingLeft nothingLeft;
    OpenHandle handle(new int(1));
    handle.DeleteReferent();
    EXPECT_TRUE(handle.IsNull() && handle.Exclusive());
    handle = new int(2);
    handle.Delete();
    EXPECT_TRUE(handle.IsNull());
    handle = new int(3);
    EXPECT_TRUE(handle.Exclusive());
    handle.DropReference();
    EXPECT_TRUE(handle.IsNull());
}

TEST(cow_COW, CopiesOnlyASharedObjectAndOnlyForWriting) {
    cow_ResetDetachCounts();
    cow_COW<int> a(new int(1));
    const int* const original = a.ConstGet();
    EXPECT_EQ(a.Get(), original);
    cow_COW<int> b(a);
    EXPECT_EQ(b.ConstGet(), original);
    *b.Get() = 2;
    EXPECT_NE(b.ConstGet(), original);
    EXPECT_EQ(*a, 1);
    EXPECT_EQ(a.Get(), original);
    EXPECT_EQ(cow_DetachCounts().detaches, 1);
    EXPECT_EQ(cow_DetachCounts().copiedElements, 1);
}

TEST(cow_COW, DetachingASharedNullGivesItsOwnCounter) {
    cow_COW<int> a;
    cow_COW<int> b(a);
    EXPECT_EQ(b.Get(), nullptr);
    EXPECT_TRUE(a.Exclusive() && b.Exclusive());
}

TEST(cow_COW, VirtualPolicyKeepsTheClass) {
    cow_ArrayCOW<Shape, cow_Virtual<Shape>> a(new Square(7));
    cow_ArrayCOW<Shape, cow_Virtual<Shape>> b(a);
    static_cast<Square*>(b.Get())->side = 8;
    EXPECT_EQ(static_cast<const Square*>(a.ConstGet())->side, 7);
    EXPECT_EQ(b->Corners(), 4);
    EXPECT_FALSE(a.Identical(b));
}

TEST(cow_COW, FailuresLeaveTheHandlesAsTheyWere) {
    const test_NothingLeft nothingLeft;
    cow_COW<test_ThrowingElement> a(new test_ThrowingElement(1));
    cow_COW<test_ThrowingElement> b(a);
    const auto detach = [&b] { static_cast<void>(b.Get()); };
    EXPECT_TRUE(test_Fails(test_Failing::kCopies, 1, detach));
    EXPECT_TRUE(test_Fails(test_Failing::kRequests, 1, detach));
    EXPECT_TRUE(test_Fails(test_Failing::kRequests, 1, [&b] { b = new test_ThrowingElement(2); }));
    EXPECT_TRUE(a.Identical(b));
    EXPECT_FALSE(a.Exclusive());
}

}  // namespace
