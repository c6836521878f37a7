#include "omu/omu_ChangeHistory.h"

#include <atomic>

#include "omu/omu_TypeErrorException.h"

namespace {

constinit std::atomic<omu_ChangeHistory*> allHistories = nullptr;
/// Counts the shut-downs, so that a thread notices that its history is gone.
constinit std::atomic<unsigned> shutDowns = 0;

struct Own {
    omu_ChangeHistory* history;
    unsigned shutDown;
};
constinit thread_local Own own = {nullptr, 0};

/// The history of the calling thread; null where there is none, or none any more.
omu_ChangeHistory* OwnHistory() noexcept {
    return own.shutDown == shutDowns ? own.history : nullptr;
}

}  // namespace

omu_ChangeHistory::omu_ChangeHistory() = default;

omu_ChangeHistory::~omu_ChangeHistory() = default;

omu_ChangeHistory& omu_ChangeHistory::Instance() {
    if (omu_ChangeHistory* const history = OwnHistory()) return *history;
    omu_ChangeHistory* const created = new omu_ChangeHistory;
    own = {created, shutDowns};
    created->next = allHistories;
    while (!allHistories.compare_exchange_weak(created->next, created)) {
    }
    return *created;
}

bool omu_ChangeHistory::IsRecordingHere() noexcept {
    const omu_ChangeHistory* const history = OwnHistory();
    return history && history->isRecording;
}

void omu_ChangeHistory::StopRecording() {
    isRecording = false;
    changes.Clear();
}

void omu_ChangeHistory::addChange(const omu_Primitive& change) {
    addChanges(cow_List<omu_PrimHandle>(omu_PrimHandle(change.Copy())));
}

void omu_ChangeHistory::addChanges(const cow_List<omu_PrimHandle>& posted) {
    for (const omu_PrimHandle& change : posted) {
        if (!change->IsType(omu_PrimTag::kTuple)) KTSBasThrow(omu_GenericTypeErrorException());
    }
    if (isRecording) changes.Concatenate(posted);
}

void omu_ChangeHistory::Withdraw(int count) {
    if (isRecording) changes.Resize(changes.Length() - count);
}

cow_List<omu_PrimHandle> omu_ChangeHistory::TakeChanges() {
    const cow_List<omu_PrimHandle> taken = changes;
    changes.Clear();
    return taken;
}

void omu_ChangeHistory::FinalizeAll() noexcept {
    ++shutDowns;
    for (omu_ChangeHistory* history = allHistories.exchange(nullptr); history;) {
        omu_ChangeHistory* const following = history->next;
        delete history;
        history = following;
    }
}
