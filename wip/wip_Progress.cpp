#include "wip/wip_Progress.h"

#include <algorithm>
#include <cmath>

#include "wip/wip_WIP.h"

namespace {

// False for a NaN too.
bool IsFraction(float value) { return value >= 0.0f && value <= 1.0f; }

// The small addition lifts a percentage that rounding left just below a whole number.
int PercentOf(float fraction) { return static_cast<int>(std::floor(fraction * 100.0f + 0.01f)); }

}  // namespace

void wip_Progress::Initialize(const atr_String& message, KTSBasStringMode) {
    levels = cow_List<wip_ProgressState>(wip_ProgressState{0.0f, 1.0f, 0.0f, message});
}

bool wip_Progress::Push(float fraction) {
    if (!IsFraction(fraction)) return false;
    // A copy: the message goes on after the list has changed.
    const atr_String message = levels.First().message;
    return Push(fraction, message);
}

bool wip_Progress::Push(float fraction, const atr_String& message, KTSBasStringMode) {
    if (!IsFraction(fraction)) return false;
    const wip_ProgressState& top = levels.First();
    const float start = top.current;
    const float end = std::min(start + (top.end - top.start) * fraction, top.end);
    levels.Prepend({start, end, start, message});
    return true;
}

bool wip_Progress::TakeAway(int levelCount) {
    if (levelCount < 1 || Depth() < 1) return false;
    const int taken = std::min(levelCount, Depth());
    const float end = levels.ConstGet(taken - 1).end;
    for (int i = 0; i < taken; ++i) levels.RemoveFirst();
    levels.Get(0).current = end;
    return true;
}

bool wip_Progress::Pop(int levelCount) {
    if (!TakeAway(levelCount)) return false;
    ReportTop();
    return true;
}

bool wip_Progress::MoveTo(float fraction) {
    if (!IsFraction(fraction)) return false;
    wip_ProgressState& top = levels.Get(0);
    top.current = std::min(top.start + (top.end - top.start) * fraction, top.end);
    return true;
}

bool wip_Progress::MoveTo(int done, int total) {
    if (done < 0 || total < 0) return false;
    return MoveTo(done < total ? static_cast<float>(done) / static_cast<float>(total) : 1.0f);
}

bool wip_Progress::Update(float fraction) {
    if (!MoveTo(fraction)) return false;
    ReportTop();
    return true;
}

bool wip_Progress::Update(const atr_String& message, KTSBasStringMode) {
    Rename(message);
    ReportTop();
    return true;
}

bool wip_Progress::Update(float fraction, const atr_String& message, KTSBasStringMode) {
    if (!MoveTo(fraction)) return false;
    Rename(message);
    ReportTop();
    return true;
}

bool wip_Progress::Update(int done, int total) {
    if (!MoveTo(done, total)) return false;
    ReportTop();
    return true;
}

float wip_Progress::CurrentProgress() const {
    const wip_ProgressState& top = levels.First();
    const float range = top.end - top.start;
    return range <= 0.0f ? 0.0f : (top.current - top.start) / range;
}

cow_String wip_Progress::CurrentMessage(KTSBasStringMode mode) const {
    return levels.First().message.Text(mode);
}

void wip_Progress::Finish() {
    if (!HasProgress()) return;
    wip_ProgressState bottom = levels.Last();
    bottom.current = bottom.end;
    Clear();
    SetProgress(bottom);
}

void wip_Progress::Clear() { levels.Clear(); }

void wip_Progress::SetProgress(const wip_ProgressState& state) const {
    wip_WIP::Instance().Milestone(state.message, PercentOf(state.current));
}

void wip_Progress::ReportTop() const {
    // A copy: the reporter may do anything.
    const wip_ProgressState top = levels.First();
    SetProgress(top);
}
