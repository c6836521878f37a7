#include "cow/cow_List.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "cow/cow_ListIter.h"
#include "cow/cow_Stack.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_Random.h"
#include "testing/test_ThrowingElement.h"

namespace {

template <class T>
T Make(int i) {
    if constexpr (std::is_same_v<T, std::string>) {
        return "element number " + std::to_string(i);
    } else {
        return T(i);
    }
}

template <class T>
cow_List<T> ListOf(int n, int hint = 0) {
    cow_List<T> list = cow_List<T>::WithSizeHint(hint);
    for (int i = 0; i < n; ++i) list.Append(Make<T>(i));
    return list;
}

template <class T>
std::vector<T> VectorOf(int n) {
    std::vector<T> vector;
    for (int i = 0; i < n; ++i) vector.push_back(Make<T>(i));
    return vector;
}

template <class T>
bool Holds(const cow_List<T>& list, const std::vector<T>& model) {
    return list.Length() == static_cast<int>(model.size()) &&
           std::equal(list.begin(), list.end(), model.begin());
}

int SlotsFor(const cow_ListLayout& layout, int n) {
    const long long group = 16LL << layout.blockShift;
    return static_cast<int>((layout.start + n + group - 1) / group * 16);
}

/// Lists beside the vectors that they must equal, under random operations. The older copies share
/// storage with the newer ones and are compared after every write.
template <class T>
class Model {
  public:
    Model(std::uint64_t seed, int hint, int length) : random(seed) {
        lists.assign(4, ListOf<T>(length, hint));
        vectors.assign(4, VectorOf<T>(length));
    }

    void Run(int steps) {
        for (int step = 0; step < steps; ++step) {
            const int operation = random.Below(20);
            const std::size_t target = static_cast<std::size_t>(random.Below(4));
            Apply(operation, lists[target], vectors[target]);
            for (std::size_t i = 0; i < lists.size(); ++i) {
                ASSERT_TRUE(Holds(lists[i], vectors[i]))
                    << "step " << step << " operation " << operation << " on " << target
                    << " seen in " << i;
            }
        }
    }

  private:
    void Apply(int operation, cow_List<T>& list, std::vector<T>& vector) {
        const int n = list.Length();
        const std::size_t other = static_cast<std::size_t>(random.Below(4));
        const T x = Make<T>(random.Below(1000));
        switch (operation) {
            case 0:
            case 1:
                for (int k = random.Below(40); k > 0; --k) {
                    list.Append(x);
                    vector.push_back(x);
                    EXPECT_EQ(list.Layout().blockSlots, SlotsFor(list.Layout(), list.Length()));
                }
                break;
            case 2:
            case 3:
                for (int k = random.Below(40); k > 0; --k) {
                    list.Prepend(x);
                    vector.insert(vector.begin(), x);
                }
                break;
            case 4:
            case 5: {
                const int i = random.Below(n + 1);
                list.InsertIndex(i, x);
                vector.insert(vector.begin() + i, x);
                break;
            }
            case 6:
                lists[other] = list;
                vectors[other] = vector;
                break;
            case 7:
                if (n > 300) break;
                list.Concatenate(lists[other]);
                vector.reserve(vector.size() + vectors[other].size());
                for (std::size_t i = 0, end = vectors[other].size(); i < end; ++i) {
                    vector.push_back(vectors[other][i]);
                }
                break;
            case 8: {
                const int m = random.Below(n + 40) - 2;
                list.Resize(m);
                if (m < n) vector.resize(static_cast<std::size_t>(std::max(m, 0)), x);
                EXPECT_EQ(list.Layout().blockSlots, SlotsFor(list.Layout(), std::max(m, 0)));
                break;
            }
            case 9: {
                const int first = random.Below(n + 8) - 4, last = random.Below(n + 8) - 4;
                const int from = std::max(first, 0);
                const int hi = std::min(std::max(last, from), lists[other].Length());
                list = lists[other].Slice(first, last);
                const std::vector<T> source = vectors[other];
                vector.assign(source.begin() + std::min(from, hi), source.begin() + hi);
                break;
            }
            case 10:
                if (random.Below(4) > 0) break;
                list.Fill(random.Below(50), x);
                vector.assign(static_cast<std::size_t>(list.Length()), x);
                break;
            case 11: {
                int count = 0;
                T* const array = lists[other].GetCArray(count);
                list.SetFromArray(array, count);
                vector = std::vector<T>(vectors[other]);
                std::destroy_n(array, count);
                mem_Free(array);
                break;
            }
            case 12: {
                const bool appended = list.AppendUnlessMember(x);
                EXPECT_EQ(appended, std::find(vector.begin(), vector.end(), x) == vector.end());
                if (appended) vector.push_back(x);
                break;
            }
            default:
                Shrink(operation, list, vector);
        }
    }

    void Shrink(int operation, cow_List<T>& list, std::vector<T>& vector) {
        const int n = list.Length();
        if (n == 0) return;
        const int i = random.Below(n);
        switch (operation) {
            case 13:
            case 14:
                list.RemoveIndex(i);
                vector.erase(vector.begin() + i);
                break;
            case 15:
                for (int k = random.Below(n); k > 0; --k) {
                    list.RemoveFirst();
                    vector.erase(vector.begin());
                }
                break;
            case 16:
                for (int k = random.Below(n); k > 0; --k) {
                    EXPECT_EQ(list.Pop(), vector.back());
                    vector.pop_back();
                }
                break;
            case 17: {
                const T member = vector[static_cast<std::size_t>(i)];
                const int found = list.FindMember(member);
                const auto first = std::find(vector.begin(), vector.end(), member);
                EXPECT_EQ(found, first - vector.begin());
                EXPECT_TRUE(list.RemoveMember(list[i]));
                vector.erase(first);
                break;
            }
            case 18: {
                const int k = random.Below(n);
                list.InsertIndex(k, list[i]);
                vector.insert(vector.begin() + k, T(vector[static_cast<std::size_t>(i)]));
                break;
            }
            default:
                list.Get(i) = Make<T>(i);
                vector[static_cast<std::size_t>(i)] = Make<T>(i);
        }
    }

    test_Random random;
    std::vector<cow_List<T>> lists;
    std::vector<std::vector<T>> vectors;
};

template <class T>
class cow_ListModel : public testing::Test {};
using ElementTypes = testing::Types<int, std::string, test_ThrowingElement>;
TYPED_TEST_SUITE(cow_ListModel, ElementTypes, );

TYPED_TEST(cow_ListModel, EqualsVectorsUnderRandomOperations) {
    const std::size_t before = mem_LiveBlocks();
    for (const int hint : {0, 300, 1000}) {
        for (std::uint64_t seed = 1; seed <= 6; ++seed) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " hint " << hint);
            Model<TypeParam>(seed, hint, 0).Run(400);
        }
        // Long enough for blocks in runs.
        Model<TypeParam>(7, hint, 3000).Run(40);
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
    EXPECT_EQ(test_ThrowingElement::Live(), 0);
    EXPECT_EQ(test_ThrowingElement::Faults(), 0);
}

struct Operation {
    const char* name;
    bool mayMoveElements;
    std::function<void(cow_List<test_ThrowingElement>&)> run;
};

const std::vector<Operation>& Operations() {
    using Element = test_ThrowingElement;
    using List = cow_List<Element>;
    static const std::vector<Operation> operations = {
        {"Append", false, [](List& l) { l.Append(Element(-1)); }},
        {"Prepend", false, [](List& l) { l.Prepend(Element(-1)); }},
        {"InsertIndex low", true, [](List& l) { l.InsertIndex(10, Element(-1)); }},
        {"InsertIndex high", true, [](List& l) { l.InsertIndex(l.Length() - 10, Element(-1)); }},
        {"RemoveIndex low", true, [](List& l) { l.RemoveIndex(20); }},
        {"RemoveIndex high", true, [](List& l) { l.RemoveIndex(l.Length() - 20); }},
        {"Resize", false, [](List& l) { l.Resize(l.Length() - 20); }},
        {"Reserve", false, [](List& l) { l.Resize(l.Length() + 300); }},
        {"Get", false, [](List& l) { static_cast<void>(l.Get(l.Length() / 2)); }},
        {"Fill", false, [](List& l) { l.Fill(40, l[3]); }},
        {"Concatenate", false, [](List& l) { l.Concatenate(l); }},
        {"Slice", false, [](List& l) { static_cast<void>(l.Slice(3, 50)); }},
        {"Pop", false, [](List& l) { static_cast<void>(l.Pop()); }},
        {"Clear", false, [](List& l) { l.Clear(); }},
        {"GetCArray", false,
         [](List& l) {
             int n = 0;
             Element* const array = l.GetCArray(n);
             std::destroy_n(array, n);
             mem_Free(array);
         }},
    };
    return operations;
}

/// Runs `operation` with its n-th copy or request failing, for every n, on a private and on a
/// shared list: nothing is lost or half made, and the other copy never changes.
void CheckFailures(const Operation& operation, bool failAllocator, bool shared) {
    SCOPED_TRACE(testing::Message() << operation.name << (failAllocator ? " allocator" : " copies")
                                    << (shared ? " shared" : " private"));
    constexpr int length = 100;
    const std::vector<test_ThrowingElement> model = VectorOf<test_ThrowingElement>(length);
    for (int n = 1;; ++n) {
        ASSERT_LT(n, 1000);
        cow_List<test_ThrowingElement> list = ListOf<test_ThrowingElement>(length);
        list.RemoveFirst();
        list.Prepend(test_ThrowingElement(0));
        const cow_List<test_ThrowingElement> copy =
            shared ? list : cow_List<test_ThrowingElement>();
        bool failed = false;
        try {
            if (failAllocator) {
                const test_FailingAllocator failing(n);
                operation.run(list);
            } else {
                test_ThrowingElement::FailCopy(n);
                operation.run(list);
            }
        } catch (const test_ThrowingElement::Failure&) {
            failed = true;
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        test_ThrowingElement::FailCopy(0);
        EXPECT_TRUE(!shared || Holds(copy, model)) << n;
        if (!failed) break;
        if (operation.mayMoveElements) {
            ASSERT_LE(std::abs(list.Length() - length), 1) << n;
            for (const test_ThrowingElement& element : list) {
                EXPECT_TRUE(element.Value() >= -1 && element.Value() < length);
            }
        } else {
            EXPECT_TRUE(Holds(list, model)) << n;
        }
        list.Append(test_ThrowingElement(7));
        list.Prepend(test_ThrowingElement(8));
        EXPECT_EQ(list.Last().Value() + list.First().Value(), 15);
    }
}

TEST(cow_List, FailedCopiesAndRequestsLoseNothing) {
    const std::size_t before = mem_LiveBlocks();
    for (const Operation& operation : Operations()) {
        for (const bool failAllocator : {false, true}) {
            CheckFailures(operation, failAllocator, true);
            CheckFailures(operation, failAllocator, false);
        }
    }
    for (int n = 1; n < 60; ++n) {
        const std::vector<test_ThrowingElement> source = VectorOf<test_ThrowingElement>(50);
        test_ThrowingElement::FailCopy(n);
        try {
            const cow_List<test_ThrowingElement> list(source.data(), 50);
            EXPECT_GT(n, 50);
        } catch (const test_ThrowingElement::Failure&) {
            EXPECT_LE(n, 50);
        }
        test_ThrowingElement::FailCopy(0);
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
    EXPECT_EQ(test_ThrowingElement::Live(), 0);
    EXPECT_EQ(test_ThrowingElement::Faults(), 0);
}

TEST(cow_List, HintsDecideBlocksAndTable) {
    struct Case {
        int hint, blockShift, blockSlots;
    };
    for (const Case c : {Case{-5, 4, 0}, Case{0, 4, 0}, Case{1, 4, 16}, Case{255, 4, 16},
                         Case{256, 5, 24}, Case{257, 5, 25}, Case{511, 5, 32}, Case{512, 6, 24},
                         Case{1000, 6, 32}, Case{5000, 9, 26}, Case{1000000, 16, 32}}) {
        const cow_ListLayout layout = cow_List<int>::WithSizeHint(c.hint).Layout();
        EXPECT_EQ(layout.blockShift, c.blockShift) << c.hint;
        EXPECT_EQ(layout.blockSlots, c.blockSlots) << c.hint;
        EXPECT_EQ(layout.start, 0) << c.hint;
    }
    const std::vector<int> elements(300, 1);
    EXPECT_EQ(cow_List<int>(elements.data(), 300).Layout().blockShift, 5);
    EXPECT_EQ(cow_List<int>(elements.data(), 300, 5000).Layout().blockShift, 9);
    EXPECT_EQ(cow_List<int>(elements.data(), 300, -1).Layout().blockShift, 4);
    EXPECT_EQ(cow_List<int>(cow_ListFill(), 1000, 3).Layout().blockShift, 6);
}

TEST(cow_List, ConstructorsTakeOneToFiveElements) {
    EXPECT_TRUE(Holds(cow_List<int>(5), {5}));
    EXPECT_TRUE(Holds(cow_List<int>(5, 6), {5, 6}));
    EXPECT_TRUE(Holds(cow_List<int>(5, 6, 7), {5, 6, 7}));
    EXPECT_TRUE(Holds(cow_List<int>(5, 6, 7, 8), {5, 6, 7, 8}));
    EXPECT_TRUE(Holds(cow_List<int>(5, 6, 7, 8, 9), {5, 6, 7, 8, 9}));
    EXPECT_TRUE(Holds(cow_List<int>(cow_ListFill(), 3, 4), {4, 4, 4}));
    EXPECT_TRUE(Holds(cow_List<int>(cow_ListFill(), -3, 4), {}));
}

TEST(cow_List, AWriteCopiesOnlyTheBlockItTouches) {
    const cow_List<int> original = ListOf<int>(100);
    cow_List<int> copy = original;
    EXPECT_EQ(&copy[0], &original[0]);
    cow_ResetDetachCounts();
    copy.Append(100);
    EXPECT_EQ(cow_DetachCounts().copiedElements, 4);
    EXPECT_EQ(cow_DetachCounts().detaches, 2);
    EXPECT_EQ(original.Length(), 100);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(&copy[i] == &original[i], i < 96) << i;
    copy.RemoveIndex(20);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(original[i], i);
    EXPECT_EQ(&copy[40], &original[41]);
}

TEST(cow_List, SourcesMayLieInTheList) {
    cow_List<std::string> list = ListOf<std::string>(40);
    const std::string third = list[3];
    list.Fill(20, list[3]);
    EXPECT_TRUE(Holds(list, std::vector<std::string>(20, third)));
    list = ListOf<std::string>(16);
    list.SetFromArray(&list[4], 8);
    EXPECT_EQ(list.Length(), 8);
    EXPECT_EQ(list[0], Make<std::string>(4));
    list.Append(list[0]);
    list.Prepend(list[1]);
    EXPECT_EQ(list.Last(), Make<std::string>(4));
    EXPECT_EQ(list.First(), Make<std::string>(5));
}

TEST(cow_List, EmptyingFromTheFrontReleasesTheLastBlock) {
    const std::size_t before = mem_LiveBlocks();
    {
        cow_List<int> list(1);
        const std::size_t withBlock = mem_LiveBlocks();
        list.RemoveFirst();
        EXPECT_EQ(list.Layout().start, 1);
        EXPECT_EQ(mem_LiveBlocks(), withBlock - 2);
        list.Resize(0);
        EXPECT_EQ(list.Layout().start, 0);
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(cow_List, QueuesAndDequesKeepTheirTablesShort) {
    cow_List<int> queue = ListOf<int>(10);
    for (int i = 10; i < 100000; ++i) {
        queue.Append(i);
        queue.RemoveFirst();
        ASSERT_LE(queue.Layout().blockSlots, 48);
    }
    for (int i = 0; i < 10; ++i) EXPECT_EQ(queue[i], 99990 + i);

    cow_List<int> deque = ListOf<int>(10);
    for (int i = 0; i < 100000; ++i) {
        deque.Prepend(-i);
        deque.RemoveLast();
        ASSERT_LE(deque.Layout().blockSlots, 48);
    }
    EXPECT_EQ(deque.First(), -99999);
}

TEST(cow_List, RoomInFrontIsAllThatTheTableHasLeft) {
    cow_List<int> list = ListOf<int>(40);
    list.Prepend(-1);
    EXPECT_EQ(list.Layout().start, 13 * 16 - 1);
    EXPECT_EQ(list.Layout().blockSlots, 16);
    cow_List<int> full = ListOf<int>(256);
    full.Prepend(-1);
    EXPECT_EQ(full.Layout().start, 16 * 16 - 1);
    EXPECT_EQ(full.Layout().blockSlots, 32);
}

TEST(cow_List, DifferenceAndEquality) {
    const cow_List<int> list(1, 2, 3, 2), other(2, 5);
    EXPECT_TRUE(Holds(list.Difference(other), {1, 3}));
    EXPECT_TRUE(list == cow_List<int>(list));
    EXPECT_TRUE(list != other);
    const cow_List<double> nan(cow_ListFill(), 1, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(nan != cow_List<double>(nan));
}

TEST(cow_List, WalksSeeEveryElementOnce) {
    for (const int hint : {0, 1000}) {
        cow_List<int> list = ListOf<int>(1000, hint);
        list.RemoveFirst();
        list.Prepend(0);
        int next = 0;
        for (cow_ListIter<int> i(list); !i.IsDone(); i.Next()) {
            EXPECT_EQ(i.Current(), next++);
            list.Get(999) = 999;
        }
        EXPECT_EQ(next, 1000);
        next = 0;
        list.ForEachSpan([&next](std::span<const int> span) {
            for (const int x : span) EXPECT_EQ(x, next++);
        });
        EXPECT_EQ(next, 1000);
    }
}

TEST(cow_Stack, GivesBackInReverseAndSharesCopies) {
    cow_Stack<int> stack;
    for (int i = 0; i < 40; ++i) stack.Push(i);
    cow_Stack<int> copy(stack);
    for (int i = 40; i-- > 0;) EXPECT_EQ(stack.Pop(), i);
    EXPECT_TRUE(stack.IsEmpty());
    EXPECT_EQ(copy.Top(), 39);
    EXPECT_DEATH(stack.Pop(), "^$");
}

TEST(cow_RaiseOutOfRange_Kept, IndexErrorsEndTheProcessSilently) {
    cow_List<int> list(1, 2, 3);
    cow_List<int> empty;
    EXPECT_DEATH(static_cast<void>(list[3]), "^$");
    EXPECT_DEATH(static_cast<void>(list.Get(-1)), "^$");
    EXPECT_DEATH(static_cast<void>(empty.First()), "^$");
    EXPECT_DEATH(static_cast<void>(empty.Last()), "^$");
    EXPECT_DEATH(empty.Pop(), "^$");
    EXPECT_DEATH(empty.RemoveFirst(), "^$");
    EXPECT_DEATH(list.InsertIndex(4, 1), "^$");
    EXPECT_DEATH(list.InsertIndex(-1, 1), "^$");
}

TEST(cow_List_Kept, OfAHintOnlyTheBlockSizeLasts) {
    cow_List<int> list = cow_List<int>::WithSizeHint(5000);
    list.Append(1);
    EXPECT_EQ(list.Layout().blockSlots, 16);
    EXPECT_EQ(list.Layout().blockShift, 9);
    list.Resize(0);
    EXPECT_EQ(list.Layout().blockShift, 4);
    EXPECT_EQ(list.Layout().blockSlots, 0);
}

TEST(cow_List_Kept, ResizeNeverAddsElements) {
    cow_List<int> list(1, 2);
    list.Resize(100);
    EXPECT_TRUE(Holds(list, {1, 2}));
}

TEST(cow_List_Kept, SliceClampsItsArguments) {
    const cow_List<int> list = ListOf<int>(10);
    EXPECT_TRUE(Holds(list.Slice(-5, 2), {0, 1}));
    EXPECT_TRUE(Holds(list.Slice(7, 3), {}));
    EXPECT_TRUE(Holds(list.Slice(8, 20), {8, 9}));
}

}  // namespace
