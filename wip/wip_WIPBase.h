#pragma once

#include "wip/wip_WipReporter.h"

/// Where the library and its callers send messages and progress. It shows nothing itself: each
/// message goes on, with the arguments as they are, to the one reporter that the host registered.
/// `wip_WIP` is the one object of it.
///
/// A message without a registered reporter raises `nex_PrimException` "WipReporter != 0". An
/// operation of the library that may run in a host without one asks `GetWipReporter` before each
/// message; `wip_ProgressObj` does so for progress. `mode` says how the text is to be shown. One
/// thread at a time.
class KTSOVUGEOM_API wip_WIPBase {
  public:
    wip_WIPBase(const wip_WIPBase&) = delete;
    wip_WIPBase& operator=(const wip_WIPBase&) = delete;

    /// The mode of a text where the caller names none: it is shown in the user's language.
    static constexpr KTSBasStringMode kDefaultMode = KTSBasStringMode::Translated;

    /// Registers `newReporter` in place of any earlier one; null: none. It stays the host's.
    void SetWipReporter(wip_WipReporter* newReporter) noexcept { reporter = newReporter; }
    /// Takes the registered reporter out if it is `registered`.
    void RemoveWipReporter(const wip_WipReporter* registered) noexcept {
        if (reporter == registered) reporter = nullptr;
    }
    /// The registered reporter, or null.
    [[nodiscard]] wip_WipReporter* GetWipReporter() const noexcept { return reporter; }

    /// A line for the user.
    void Print(const atr_String& text, KTSBasStringMode mode = kDefaultMode);
    /// A line for a user who asked for details.
    void Verbose(const atr_String& text, KTSBasStringMode mode = kDefaultMode);
    void Warning(const atr_String& text, KTSBasStringMode mode = kDefaultMode);
    /// Warnings that belong together; the list goes on as a whole, an empty one too.
    void WarningList(const cow_List<atr_String>& texts, KTSBasStringMode mode = kDefaultMode);
    void Error(const atr_String& text, wip_errorLevelEnm level,
               KTSBasStringMode mode = kDefaultMode);
    /// Errors that belong together; the list goes on as a whole, an empty one too.
    void ErrorList(const cow_List<atr_String>& texts, wip_errorLevelEnm level,
                   KTSBasStringMode mode = kDefaultMode);
    /// A text to be put before the user at once.
    void Display(const atr_String& text, KTSBasStringMode mode = kDefaultMode);
    /// The begin of a new part of the session, for the log.
    void Landmark(const atr_String& text, KTSBasStringMode mode = kDefaultMode);
    /// A step of the running operation; `percent` tells how much of the operation is done.
    void Milestone(const atr_String& text, KTSBasStringMode mode = kDefaultMode);
    void Milestone(const atr_String& text, int percent, KTSBasStringMode mode = kDefaultMode);
    /// A step that is itself one of several: `detail` is the `done`-th of `total`.
    void Milestone(const atr_String& text, const atr_String& detail, int done, int total,
                   KTSBasStringMode mode = kDefaultMode);
    /// A message of one of the application's facilities: its numbers, and the caller's own tuple of
    /// arguments.
    void FacilityMessage(const atr_String& text, int facility, int number, int severity,
                         omu_PrimTuple& arguments, KTSBasStringMode mode = kDefaultMode);

    /// Tells the reporter that a command has ended; nothing without one.
    void CommandDone();
    /// True when the reporter says that the user wants the running operation to stop; false without
    /// one.
    [[nodiscard]] bool Interrupted();
    /// Raises `wip_InterruptedException` when `Interrupted()`. The request stays: the host clears
    /// it when the command ends.
    void InterruptedThrow();

  protected:
    wip_WIPBase() noexcept = default;
    ~wip_WIPBase() = default;

  private:
    [[nodiscard]] wip_WipReporter& RequireReporter() const;

    wip_WipReporter* reporter = nullptr;
};
