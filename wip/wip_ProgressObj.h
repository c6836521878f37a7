#pragma once

#include "wip/wip_Progress.h"

/// The scoped handle on the progress stack of the process: what it puts there is taken away with
/// it, however the scope is left. It works alike for the outermost operation and for one that is
/// called within another, needs no reporter (the stack is kept, nothing is reported) and never
/// touches an empty stack.
///
/// A sequence of steps, each with its share of the whole:
///
///     wip_ProgressObj progress("Import");
///     progress.Push(0.7f, "Reading");
///     ReadModel(path);  // may use a handle of its own
///     progress.Pop(1);  // 70 percent
///     progress.Push(0.3f, "Checking");
///     CheckModel();
///     progress.Pop(1);  // 100 percent
///
/// A loop tells its place, and pushes only around what reports itself:
///
///     wip_ProgressObj progress("Parts");
///     for (int i = 0; i < n; ++i) {
///         wip_WIP::Instance().InterruptedThrow();
///         Build(parts[i]);
///         progress.Update(i + 1, n);
///     }
///
/// A nested callee is written as if it were alone; `Update` is relative to what its caller pushed:
///
///     void ReadModel(const Path& path) {
///         wip_ProgressObj progress("Model");  // fills the caller's level
///         progress.Update(0.5f);              // 35 percent in the sequence above
///         ...
///     }
///
/// Handles die in the reverse order of their making. Only a depth is remembered: one that pops
/// first takes the levels of those made later along with its own. When a scope ends, its levels are
/// popped as by `Pop`, and what the report raises is swallowed; when an exception leaves it, they
/// go without a report and the level below stays where it was. The handle that made the bottom
/// level empties the stack, so that the next operation starts at 0.
class KTSOVUGEOM_API wip_ProgressObj {
  public:
    /// Remembers the depth and puts nothing there.
    wip_ProgressObj();
    /// Begins an operation with `message`: the bottom level on an empty stack, else a level that
    /// fills the whole of the top one.
    explicit wip_ProgressObj(const atr_String& message,
                             KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    wip_ProgressObj(const wip_ProgressObj&) = delete;
    wip_ProgressObj& operator=(const wip_ProgressObj&) = delete;
    ~wip_ProgressObj();

    /// Begins an operation above the remembered depth, in place of what this handle put there.
    void Initialize();

    /// As the operations of `wip_Progress` on the stack of the process; false on an empty one.
    bool Push(float fraction);
    bool Push(float fraction, const atr_String& message,
              KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    bool Update(float fraction);
    bool Update(const atr_String& message, KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    bool Update(float fraction, const atr_String& message,
                KTSBasStringMode mode = wip_WIPBase::kDefaultMode);
    bool Update(int done, int total);
    /// Takes `levelCount` of its own levels away, or all that it has; false, and nothing is
    /// changed, when it has none.
    bool Pop(int levelCount);
    /// Number of levels above the remembered depth; the bottom level does not count.
    [[nodiscard]] int Depth() const noexcept;

    /// Pops its own levels and, when it made the bottom level, ends the operation: 100 percent is
    /// reported and the stack is empty.
    void Finish();
    /// Takes its own levels, and the bottom one if it made that, away without a report and begins
    /// as constructed.
    void Restart();

  private:
    [[nodiscard]] static wip_Progress* Stack();
    static void Report(const wip_Progress& stack);
    void Begin();
    void Drop();

    atr_String message;
    int depthBefore;
    int exceptionsBefore;
    bool beginsAtOnce;
    bool madeBottom = false;
};
