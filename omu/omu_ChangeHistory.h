#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "omu/omu_Primitive.h"

/// What changed in the application's objects, told to the scripting layer: tuples whose first item
/// names the change ("Insert", "Remove", "Rename", "Modify"), in the order in which they were
/// posted. Each thread has a history of its own, which the host empties as it follows. Without such
/// a host nothing is kept: recording is off until it is switched on for the thread.
class KTSOVUGEOM_API omu_ChangeHistory {
  public:
    /// The history of the calling thread, created on first use.
    [[nodiscard]] static omu_ChangeHistory& Instance();
    /// Whether the calling thread has a history that keeps what is posted. Creates none.
    [[nodiscard]] static bool IsRecordingHere() noexcept;

    /// Keeps what is posted from now on, for a follower that takes it.
    void StartRecording() noexcept { isRecording = true; }
    /// Forgets what is kept, and discards what is posted from now on.
    void StopRecording();
    [[nodiscard]] bool IsRecording() const noexcept { return isRecording; }

    /// Posts a copy of the tuple `change`. Another kind raises `omu_GenericTypeErrorException`.
    void addChange(const omu_Primitive& change);
    /// Posts the tuples `posted`, all of them or, when it raises, none.
    void addChanges(const cow_List<omu_PrimHandle>& posted);
    /// Takes the last `count` changes back: what they tell of did not come about.
    void Withdraw(int count);
    /// The changes posted since they were last taken, the oldest first; the history is empty then.
    [[nodiscard]] cow_List<omu_PrimHandle> TakeChanges();

    /// Destroys the histories of all threads; called at shut-down, when no thread uses its own. One
    /// that is used afterwards is a new one.
    static void FinalizeAll() noexcept;

  private:
    omu_ChangeHistory();
    ~omu_ChangeHistory();

    bool isRecording = false;
    cow_List<omu_PrimHandle> changes;
    omu_ChangeHistory* next = nullptr;  ///< among the histories of all threads
};
