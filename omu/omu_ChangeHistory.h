#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "omu/omu_Primitive.h"

/// What changed in the application's objects, told to the scripting layer: tuples whose first item
/// names the change ("Insert", "Remove", "Rename", "Modify"), in the order in which they were
/// posted. Each thread has a history of its own, which the host empties as it follows.
class KTSOVUGEOM_API omu_ChangeHistory {
  public:
    /// The history of the calling thread, created on first use.
    [[nodiscard]] static omu_ChangeHistory& Instance();

    /// Posts a copy of the tuple `change`. Another kind raises `omu_GenericTypeErrorException`.
    void addChange(const omu_Primitive& change);
    /// The changes posted since they were last taken, the oldest first; the history is empty then.
    [[nodiscard]] cow_List<omu_PrimHandle> TakeChanges();

    /// Destroys the histories of all threads; called at shut-down, when no thread uses its own. One
    /// that is used afterwards is a new one.
    static void FinalizeAll() noexcept;

  private:
    omu_ChangeHistory();
    ~omu_ChangeHistory();

    cow_List<omu_PrimHandle> changes;
    omu_ChangeHistory* next = nullptr;  ///< among the histories of all threads
};
