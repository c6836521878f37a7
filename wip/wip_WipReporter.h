#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "foundation/coreutils/atr_String.h"

class omu_PrimTuple;

/// How grave an error is.
enum wip_errorLevelEnm : int {
    wip_ERROR_LEVEL_LOW = 0,     ///< the operation goes on
    wip_ERROR_LEVEL_MEDIUM = 1,  ///< the operation ends without a result
    wip_ERROR_LEVEL_HIGH = 2,    ///< the session cannot go on
};

/// What the host does with messages and progress: it derives a class, registers an object of it
/// with `wip_WIPBase::SetWipReporter` and gets each call with the arguments of the caller. What a
/// kind of message means (a line, a dialog, a log, a bar) is the host's; so is leaving out what
/// says the same again, since every step of an operation is reported.
///
/// The host owns the reporter; its destructor takes it out of the registration. During a call it
/// may remove or replace itself, and may read the progress stack (`wip_WIP::Progress`), which
/// already stands as after the change; it must not push or pop there. What it throws passes through
/// to the operation that reports.
class KTSOVUGEOM_API wip_WipReporter {
  public:
    wip_WipReporter() = default;
    wip_WipReporter(const wip_WipReporter&) = delete;
    wip_WipReporter& operator=(const wip_WipReporter&) = delete;
    virtual ~wip_WipReporter();

    virtual void Print(const atr_String& text, KTSBasStringMode mode) = 0;
    virtual void Verbose(const atr_String& text, KTSBasStringMode mode) = 0;
    virtual void Warning(const atr_String& text, KTSBasStringMode mode) = 0;
    virtual void WarningList(const cow_List<atr_String>& texts, KTSBasStringMode mode) = 0;
    virtual void Error(const atr_String& text, wip_errorLevelEnm level, KTSBasStringMode mode) = 0;
    virtual void ErrorList(const cow_List<atr_String>& texts, wip_errorLevelEnm level,
                           KTSBasStringMode mode) = 0;
    virtual void Display(const atr_String& text, KTSBasStringMode mode) = 0;
    virtual void Landmark(const atr_String& text, KTSBasStringMode mode) = 0;
    virtual void Milestone(const atr_String& text, KTSBasStringMode mode) = 0;
    virtual void Milestone(const atr_String& text, int percent, KTSBasStringMode mode) = 0;
    virtual void Milestone(const atr_String& text, const atr_String& detail, int done, int total,
                           KTSBasStringMode mode) = 0;
    virtual void FacilityMessage(const atr_String& text, int facility, int number, int severity,
                                 omu_PrimTuple& arguments, KTSBasStringMode mode) = 0;

    /// A command has ended. Nothing to do here.
    virtual void CommandDone();
    /// True when the user asked the running operation to stop; false here.
    [[nodiscard]] virtual bool Interrupted();
};
