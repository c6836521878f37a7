#include "omu/omu_ChangeHistory.h"

#include <gtest/gtest.h>

#include <thread>

#include "omu/omu_PrimNone.h"
#include "omu/omu_TypeErrorException.h"
#include "omu/omu_Values_test.h"

namespace {

omu_PrimTuple Change(int number) { return omu_test::Tuple(omu_PrimNumber(number)); }

TEST(omu_ChangeHistory, EachThreadTakesItsOwnChangesInOrder) {
    EXPECT_FALSE(omu_ChangeHistory::IsRecordingHere());
    omu_ChangeHistory& own = omu_ChangeHistory::Instance();
    EXPECT_EQ(&own, &omu_ChangeHistory::Instance());
    own.addChange(Change(0));
    EXPECT_EQ(own.TakeChanges().Length(), 0) << "nobody follows";
    own.StartRecording();
    EXPECT_TRUE(omu_ChangeHistory::IsRecordingHere());
    own.addChange(Change(1));
    own.addChange(Change(2));
    own.addChange(Change(2));
    own.Withdraw(1);
    EXPECT_THROW(own.addChange(omu_PrimNone()), omu_GenericTypeErrorException);
    std::thread([] {
        EXPECT_FALSE(omu_ChangeHistory::IsRecordingHere());
        omu_ChangeHistory::Instance().StartRecording();
        omu_ChangeHistory::Instance().addChange(Change(3));
        EXPECT_EQ(omu_ChangeHistory::Instance().TakeChanges().Length(), 1);
        omu_ChangeHistory::Instance().addChange(Change(4));
    }).join();
    const auto taken = own.TakeChanges();
    ASSERT_EQ(taken.Length(), 2);
    EXPECT_TRUE(*taken[0] == Change(1));
    EXPECT_TRUE(*taken[1] == Change(2));
    EXPECT_EQ(own.TakeChanges().Length(), 0);
    own.addChange(Change(5));
    own.StopRecording();
    own.StartRecording();
    EXPECT_EQ(own.TakeChanges().Length(), 0);
    own.addChange(Change(6));
    omu_ChangeHistory::FinalizeAll();
    EXPECT_FALSE(omu_ChangeHistory::IsRecordingHere());
    EXPECT_FALSE(omu_ChangeHistory::Instance().IsRecording());
    EXPECT_EQ(omu_ChangeHistory::Instance().TakeChanges().Length(), 0);
    omu_ChangeHistory::FinalizeAll();
}

}  // namespace
