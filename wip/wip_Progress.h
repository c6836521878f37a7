#pragma once

#include "cow/cow_List.h"
#include "wip/wip_WIPBase.h"

/// One level of progress: a part of the whole operation, as fractions of it between 0 and 1.
struct wip_ProgressState {
    float start = 0;
    float end = 1;
    float current = 0;
    atr_String message;  ///< the text shown while this level is the top
};

/// Nested progress of one operation: a stack of parts of the range 0 to 1, the bottom level all of
/// it. A caller pushes a part of its own range and calls the operation that fills it, which sees
/// only its own part:
///
///     progress.Push(0.5f, "Reading");  // the first half of this level
///     ReadModel(path);                 // pushes and updates as if it were alone
///     progress.Pop(1);                 // half of this level is done, whatever was updated
///
/// The stack changes first and then the milestone goes to `wip_WIP`, so that it is consistent when
/// the report raises; every `Update` and `Pop` reports, the same percentage again too. All
/// arithmetic is in single precision. A new stack is empty until `Initialize`. Messages are kept as
/// given, whatever their `mode`: they are translated when they are shown, and reports pass
/// `wip_WIPBase::kDefaultMode`. One thread at a time.
///
/// Kept: the percentage is the fraction times 100 plus 0.01, rounded down, so that 99,991 of
/// 100,000 steps are 100 percent already, where one would have expected 99; bars that close at 100
/// rely on rounding errors never leaving them at 99.
///
/// Kept: `Update`, `Pop` and `Finish` without a reporter raise "WipReporter != 0" after the change,
/// where one would have expected them to pass in silence; hosts rely on it to find what runs before
/// they registered one. `wip_ProgressObj` passes in silence.
///
/// Kept: asking an empty stack for its top (`Push` and `Update` of a fraction, `Update` of a
/// message, `CurrentProgress`, `CurrentMessage`) ends the process, where one would have expected
/// false or 0; those who debug rely on seeing the place. `wip_ProgressObj` answers false.
class KTSOVUGEOM_API wip_Progress {
  public:
    /// An empty stack.
    wip_Progress() = default;

    /// Replaces all levels by the bottom one, which has `message`; reports nothing.
    void Initialize(const atr_String& message, KTSBasStringMode mode = wip_WIPBase::kDefaultMode);

    /// Puts a level on top that takes `fraction` of the whole range of the level below, from where
    /// that level stands, never beyond its end. False, and nothing is changed, unless
    /// 0 <= `fraction` <= 1. The message is that of the level below or the one given.
    ///
    /// Kept: nothing is reported, not even a new message, where one would have expected to see it
    /// at once; it is shown with the first step within the level, as quick ones need not flicker.
    ///
    /// Kept: 1,000 times `Push(0.001f)` and `Pop(1)` end near 0.99999, where one would have
    /// expected 1: each level starts where rounding left the one before, which callers rely on to
    /// find their parts without gaps. Tell the place in a loop by `Update(i, n)`.
    bool Push(float fraction);
    bool Push(float fraction, const atr_String& message,
              KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    /// Takes `levelCount` levels away, but never the bottom one. The level that is the top then
    /// stands at the end of the last one taken away, and that is reported. False, and nothing is
    /// changed, for fewer than one level and when there is at most the bottom one.
    bool Pop(int levelCount);

    /// Sets the top level to `fraction` of its range, and reports it. False, and nothing is
    /// changed, unless 0 <= `fraction` <= 1.
    bool Update(float fraction);
    /// Gives the top level a message, and reports the level.
    bool Update(const atr_String& message, KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    /// Both with one report.
    bool Update(float fraction, const atr_String& message,
                KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    /// Sets the top level to `done` of `total` steps, all of them when `done` is not less than
    /// `total` (so 0 of 0 is everything). False, and nothing is changed, when either is negative.
    bool Update(int done, int total);

    /// How far the top level is within its range: 0 to 1, and 0 for an empty range.
    [[nodiscard]] float CurrentProgress() const;
    [[nodiscard]] cow_String CurrentMessage(
        KTSBasStringMode mode = wip_WIPBase::kDefaultMode) const;
    /// Number of levels above the bottom one; -1 for an empty stack.
    [[nodiscard]] int Depth() const noexcept { return levels.Length() - 1; }
    /// True when there is any level.
    [[nodiscard]] bool HasProgress() const noexcept { return !levels.IsEmpty(); }

    /// Ends the operation: the stack is empty then, and 100 percent is reported with the message of
    /// the bottom level. Nothing on an empty stack.
    void Finish();
    /// Empties the stack and reports nothing.
    void Clear();
    /// Reports `state` to `wip_WIP`: a milestone with its message and its percentage.
    /// REQUIRES: `state.current` is between 0 and 1.
    ///
    /// Kept: despite its name it sets nothing, neither here nor in `state`, where one would have
    /// expected the top to become `state`; hosts call it to show the same step again.
    void SetProgress(const wip_ProgressState& state) const;

  private:
    friend class wip_ProgressObj;

    // The changes without their report.
    bool TakeAway(int levelCount);
    bool MoveTo(float fraction);
    bool MoveTo(int done, int total);
    void Rename(const atr_String& message) { levels.Get(0).message = message; }
    void ReportTop() const;

    cow_List<wip_ProgressState> levels;  ///< the first is the top
};
