#include "omu/omu_PrimList.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_TypeErrorException.h"
#include "testing/test_Failures.h"
#include "testing/test_Random.h"

namespace {

/// The texts of the elements.
using Model = std::vector<std::string>;

void Check(const omu_PrimList& list, const Model& model) {
    std::string text;
    for (const std::string& element : model) text += (text.empty() ? "" : ", ") + element;
    ASSERT_EQ(list.AsString(0), cow_String("[" + text + "]"));
    ASSERT_EQ(list.Length(), static_cast<int>(model.size()));
}

/// The nesting counted from the elements themselves.
omu_PrimNesting Counted(const omu_PrimList& list) {
    omu_PrimNesting nesting = omu_PrimNesting::OfEmptyContainer();
    list.ForEachElement([&nesting](const omu_Primitive& element, int) {
        nesting = nesting.With(element.Nesting());
        return true;
    });
    return nesting;
}

// Numbers and the list itself at random places, against a vector of texts; copies taken on the way
// must not change.
TEST(omu_PrimList, ChangesLikeAVectorAndLeavesItsCopiesAlone) {
    test_Random random(7);
    omu_PrimList list;
    Model model;
    std::vector<std::pair<omu_PrimList, Model>> copies;
    for (int step = 0; step < 800; ++step) {
        const int length = list.Length();
        const bool isNested = list.Nesting().depth < 4 && list.Nesting().nodes < 60;
        const omu_PrimNumber number(step);
        const omu_Primitive& value =
            isNested && random.Below(3) == 0 ? static_cast<const omu_Primitive&>(list) : number;
        const std::string text(value.AsString(0).View());
        const int index = length == 0 ? 0 : random.Below(length);
        switch (length < 3 ? 0 : random.Below(5)) {
            case 0:
                list.Append(value);
                model.push_back(text);
                break;
            case 1:
                list.Insert(index, value.Copy());
                model.insert(model.begin() + index, text);
                break;
            case 2:
                list.Set(index, value);
                model[static_cast<std::size_t>(index)] = text;
                break;
            default:
                list.Remove(index);
                model.erase(model.begin() + index);
        }
        if (step % 40 == 0) copies.emplace_back(list, model);
        Check(list, model);
        ASSERT_EQ(list.Nesting().depth, Counted(list).depth);
        ASSERT_EQ(list.Nesting().nodes, Counted(list).nodes);
    }
    for (const auto& [copy, copied] : copies) Check(copy, copied);
}

TEST(omu_PrimList, TakesAnElementOfItselfBeforeAnythingMoves) {
    omu_PrimList list;
    for (int i = 0; i < 40; ++i) list.Append(omu_PrimNumber(i));
    list.Insert(0, *list.Index(39));
    list.Set(1, *list.Index(2));
    list.Append(*list.Index(0));
    EXPECT_EQ(list.Index(0)->AsString(0), "39");
    EXPECT_EQ(list.Index(1)->AsString(0), "1");
    EXPECT_EQ(list.Index(41)->AsString(0), "39");
    list.Set(7, omu_PrimList());
    list = static_cast<const omu_PrimList&>(*list.Index(7));
    EXPECT_EQ(list.AsString(0), "[]");
    EXPECT_EQ(list.Nesting().nodes, 1);
}

TEST(omu_PrimList, RefusedChangesLeaveTheListAsItWas) {
    omu_PrimList list;
    for (int i = 0; i < 40; ++i) list.Append(omu_PrimNumber(i));
    const cow_String before = list.AsString(0);
    EXPECT_THROW(list.Insert(41, omu_PrimNumber(1)), omu_ValueErrorException);
    EXPECT_THROW(list.Insert(-1, new omu_PrimNumber(1)), omu_ValueErrorException);
    EXPECT_THROW(list.Set(40, omu_PrimNumber(1)), omu_ValueErrorException);
    EXPECT_THROW(list.Remove(40), omu_ValueErrorException);
    EXPECT_THROW(list.Remove(-1), omu_ValueErrorException);
    EXPECT_THROW(list.Append(static_cast<omu_Primitive*>(nullptr)), omu_GenericTypeErrorException);
    EXPECT_THROW(list.Set(0, static_cast<omu_Primitive*>(nullptr)), omu_GenericTypeErrorException);
    EXPECT_EQ(list.AsString(0), before);

    const omu_PrimList shared = list;
    for (int n = 1; n == 1 || test_FailingAllocator::HasFailed(); ++n) {
        omu_PrimList changed = shared;
        auto* const value = new omu_PrimNumber(-1);
        if (test_Fails(test_Failing::kRequests, n, [&] { changed.Insert(20, value); })) {
            EXPECT_EQ(changed.AsString(0), before) << n;
        }
    }
}

}  // namespace
