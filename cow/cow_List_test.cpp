#include "cow/cow_List.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "cow/cow_ListIter.h"
#include "cow/cow_Stack.h"
#include "testing/test_Failures.h"
#include "testing/test_Random.h"

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

/// One by one and in spans.
template <class T>
bool Holds(const cow_List<T>& list, const std::vector<T>& model) {
    std::vector<T> inSpans;
    list.ForEachSpan([&inSpans](std::span<const T> span) {
        inSpans.insert(inSpans.end(), span.begin(), span.end());
    });
    return list.Length() == static_cast<int>(model.size()) && inSpans == model &&
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
        const std::vector<T> source = vectors[other];
        const T x = Make<T>(random.Below(1000));
        if (operation < 2) {
            for (int k = random.Below(40); k > 0; --k) {
                list.Append(x);
                vector.push_back(x);
                EXPECT_EQ(list.Layout().blockSlots, SlotsFor(list.Layout(), list.Length()));
            }
        } else if (operation < 4) {
            for (int k = random.Below(40); k > 0; --k) {
                list.Prepend(x);
                vector.insert(vector.begin(), x);
            }
        } else if (operation < 6) {
            const int i = random.Below(n + 1);
            list.InsertIndex(i, x);
            vector.insert(vector.begin() + i, x);
        } else if (operation == 6) {
            lists[other] = list;
            vectors[other] = vector;
        } else if (operation == 7 && n <= 300) {
            list.Concatenate(lists[other]);
            vector.insert(vector.end(), source.begin(), source.end());
        } else if (operation == 8) {
            const int m = random.Below(n + 40) - 2;
            list.Resize(m);
            if (m < n) vector.resize(static_cast<std::size_t>(std::max(m, 0)), x);
            EXPECT_EQ(list.Layout().blockSlots, SlotsFor(list.Layout(), std::max(m, 0)));
        } else if (operation == 9) {
            const int first = random.Below(n + 8) - 4, last = random.Below(n + 8) - 4;
            const int from = std::max(first, 0);
            const int to = std::min(std::max(last, from), lists[other].Length());
            list = lists[other].Slice(first, last);
            vector.assign(source.begin() + std::min(from, to), source.begin() + to);
        } else if (operation == 10 && random.Below(4) == 0) {
            list.Fill(random.Below(50), x);
            vector.assign(static_cast<std::size_t>(list.Length()), x);
        } else if (operation == 11) {
            int count = 0;
            T* const array = lists[other].GetCArray(count);
            list.SetFromArray(array, count);
            vector = source;
            std::destroy_n(array, count);
            mem_Free(array);
        } else if (operation == 12) {
            const bool appended = list.AppendUnlessMember(x);
            EXPECT_EQ(appended, std::find(vector.begin(), vector.end(), x) == vector.end());
            if (appended) vector.push_back(x);
        } else if (operation > 12 && n > 0) {
            ChangeAt(random.Below(n), operation, list, vector);
        }
    }

    void ChangeAt(int i, int operation, cow_List<T>& list, std::vector<T>& vector) {
        const int n = list.Length(), k = random.Below(n);
        const T element = vector[static_cast<std::size_t>(i)];
        if (operation < 15) {
            list.RemoveIndex(i);
            vector.erase(vector.begin() + i);
        } else if (operation == 15) {
            for (int removed = 0; removed < k; ++removed) list.RemoveFirst();
            vector.erase(vector.begin(), vector.begin() + k);
        } else if (operation == 16) {
            for (int removed = 0; removed < k; ++removed) {
                EXPECT_EQ(list.Pop(), vector.back());
                vector.pop_back();
            }
        } else if (operation == 17) {
            const auto first = std::find(vector.begin(), vector.end(), element);
            EXPECT_EQ(list.FindMember(element), first - vector.begin());
            EXPECT_TRUE(list.RemoveMember(list[i]));
            vector.erase(first);
        } else if (operation == 18) {
            list.InsertIndex(k, list[i]);
            vector.insert(vector.begin() + k, element);
        } else {
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
    const test_NothingLeft nothingLeft;
    for (const int hint : {0, 300, 1000}) {
        for (std::uint64_t seed = 1; seed <= 6; ++seed) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " hint " << hint);
            Model<TypeParam>(seed, hint, 0).Run(400);
        }
        // Long enough for blocks in runs.
        Model<TypeParam>(7, hint, 3000).Run(40);
    }
}

using Throwing = test_ThrowingElement;
using ThrowingList = cow_List<Throwing>;

struct Operation {
    const char* name;
    bool mayMoveElements;
    void (*run)(ThrowingList&);
};

const Operation kOperations[] = {
    {"Append", false, [](ThrowingList& l) { l.Append(Throwing(-1)); }},
    {"Prepend", false, [](ThrowingList& l) { l.Prepend(Throwing(-1)); }},
    {"InsertIndex low", true, [](ThrowingList& l) { l.InsertIndex(10, Throwing(-1)); }},
    {"InsertIndex high", true, [](ThrowingList& l) { l.InsertIndex(90, Throwing(-1)); }},
    {"RemoveIndex low", true, [](ThrowingList& l) { l.RemoveIndex(20); }},
    {"RemoveIndex high", true, [](ThrowingList& l) { l.RemoveIndex(80); }},
    {"Resize", false, [](ThrowingList& l) { l.Resize(80); }},
    {"Reserve", false, [](ThrowingList& l) { l.Resize(400); }},
    {"Get", false, [](ThrowingList& l) { static_cast<void>(l.Get(50)); }},
    {"Fill", false, [](ThrowingList& l) { l.Fill(40, l[3]); }},
    {"Concatenate", false, [](ThrowingList& l) { l.Concatenate(l); }},
    {"Slice", false, [](ThrowingList& l) { static_cast<void>(l.Slice(3, 50)); }},
    {"Pop", false, [](ThrowingList& l) { static_cast<void>(l.Pop()); }},
    {"Clear", false, [](ThrowingList& l) { l.Clear(); }},
    {"GetCArray", false,
     [](ThrowingList& l) {
         int n = 0;
         Throwing* const array = l.GetCArray(n);
         std::destroy_n(array, n);
         mem_Free(array);
     }},
};

/// Runs `operation` with its n-th copy or request failing, for every n, on a private and on a
/// shared list: nothing is lost or half made, and the other copy never changes.
void CheckFailures(const Operation& operation, test_Failing what, bool shared) {
    SCOPED_TRACE(testing::Message() << operation.name << (shared ? " shared" : " private")
                                    << (what == test_Failing::kCopies ? " copies" : " requests"));
    const std::vector<Throwing> model = VectorOf<Throwing>(100);
    bool hasFailed = true;
    for (int n = 1; hasFailed; ++n) {
        ASSERT_LT(n, 1000);
        ThrowingList list = ListOf<Throwing>(100);
        list.RemoveFirst();
        list.Prepend(Throwing(0));
        const ThrowingList copy = shared ? list : ThrowingList();
        hasFailed = test_Fails(what, n, [&] { operation.run(list); });
        EXPECT_TRUE(!shared || Holds(copy, model)) << n;
        if (hasFailed && operation.mayMoveElements) {
            ASSERT_LE(std::abs(list.Length() - 100), 1) << n;
            for (const Throwing& element : list) {
                EXPECT_TRUE(element.Value() >= -1 && element.Value() < 100);
            }
        } else if (hasFailed) {
            EXPECT_TRUE(Holds(list, model)) << n;
        }
        list.Append(Throwing(7));
        list.Prepend(Throwing(8));
        EXPECT_EQ(list.Last().Value() + list.First().Value(), 15);
    }
}

TEST(cow_List, FailedCopiesAndRequestsLoseNothing) {
    const test_NothingLeft nothingLeft;
    for (const Operation& operation : kOperations) {
        for (const auto what : {test_Failing::kCopies, test_Failing::kRequests}) {
            CheckFailures(operation, what, true);
            CheckFailures(operation, what, false);
        }
    }
    const std::vector<Throwing> source = VectorOf<Throwing>(50);
    for (int n = 1; n < 60; ++n) {
        const auto construct = [&source] { ThrowingList(source.data(), 50); };
        EXPECT_EQ(test_Fails(test_Failing::kCopies, n, construct), n <= 50);
    }
}

TEST(cow_List, HintsDecideBlocksAndTable) {
    const int cases[][3] = {{-5, 4, 0},    {0, 4, 0},     {1, 4, 16},       {255, 4, 16},
                            {256, 5, 24},  {257, 5, 25},  {511, 5, 32},     {512, 6, 24},
                            {1000, 6, 32}, {5000, 9, 26}, {1000000, 16, 32}};
    for (const auto& [hint, blockShift, blockSlots] : cases) {
        const cow_ListLayout layout = cow_List<int>::WithSizeHint(hint).Layout();
        EXPECT_EQ(layout.blockShift, blockShift) << hint;
        EXPECT_EQ(layout.blockSlots, blockSlots) << hint;
        EXPECT_EQ(layout.start, 0) << hint;
    }
    const std::vector<int> elements(300, 1);
    EXPECT_EQ(cow_List<int>(elements.data(), 300).Layout().blockShift, 5);
    EXPECT_EQ(cow_List<int>(elements.data(), 300, 5000).Layout().blockShift, 9);
    EXPECT_EQ(cow_List<int>(elements.data(), 300, -1).Layout().blockShift, 4);
    EXPECT_EQ(cow_List<int>(cow_ListFill(), 1000, 3).Layout().blockShift, 6);
}

TEST(cow_List, ConstructorsTakeOneToFiveElements) {
    EXPECT_TRUE(Holds(cow_List<int>(5), {5}));
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
    list.Fill(20, list[3]);
    EXPECT_TRUE(Holds(list, std::vector<std::string>(20, Make<std::string>(3))));
    list = ListOf<std::string>(16);
    list.SetFromArray(&list[4], 8);
    list.Append(list[0]);
    list.Prepend(list[1]);
    EXPECT_EQ(list.Length(), 10);
    EXPECT_EQ(list.Last(), Make<std::string>(4));
    EXPECT_EQ(list.First(), Make<std::string>(5));
}

TEST(cow_List, EmptyingFromTheFrontReleasesTheLastBlock) {
    const test_NothingLeft nothingLeft;
    cow_List<int> list(1);
    const std::size_t withBlock = mem_LiveBlocks();
    list.RemoveFirst();
    EXPECT_EQ(list.Layout().start, 1);
    EXPECT_EQ(mem_LiveBlocks(), withBlock - 2);
    list.Resize(0);
    EXPECT_EQ(list.Layout().start, 0);
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
