#include "wip/wip_ProgressObj.h"

#include <algorithm>
#include <exception>

#include "wip/wip_WIP.h"

// The stack of the process is asked for each time: a handle may outlive a shut-down.

wip_ProgressObj::wip_ProgressObj()
    : depthBefore(std::max(wip_WIP::Instance().Progress().Depth(), 0)),
      exceptionsBefore(std::uncaught_exceptions()),
      beginsAtOnce(false) {}

wip_ProgressObj::wip_ProgressObj(const atr_String& text, KTSBasStringMode) : wip_ProgressObj() {
    message = text;
    beginsAtOnce = true;
    Begin();
}

// Nothing may leave a destructor, least of all what a report raises.
wip_ProgressObj::~wip_ProgressObj() {
    if (!omi_Singleton<wip_WIP>::Exists()) return;
    try {
        if (std::uncaught_exceptions() > exceptionsBefore) {
            Drop();
        } else {
            Pop(Depth());
        }
    } catch (...) {
    }
    if (madeBottom) wip_WIP::Instance().Progress().Clear();
}

wip_Progress* wip_ProgressObj::Stack() {
    wip_Progress& stack = wip_WIP::Instance().Progress();
    return stack.HasProgress() ? &stack : nullptr;
}

void wip_ProgressObj::Report(const wip_Progress& stack) {
    if (wip_WIP::Instance().GetWipReporter()) stack.ReportTop();
}

void wip_ProgressObj::Begin() {
    wip_Progress& stack = wip_WIP::Instance().Progress();
    if (madeBottom || !stack.HasProgress()) {
        stack.Initialize(message);
        madeBottom = true;
    } else {
        stack.Push(1.0f, message);
    }
}

void wip_ProgressObj::Drop() {
    wip_Progress& stack = wip_WIP::Instance().Progress();
    for (int own = Depth(); own > 0; --own) stack.levels.RemoveFirst();
}

void wip_ProgressObj::Initialize() {
    Drop();
    Begin();
}

bool wip_ProgressObj::Push(float fraction) {
    wip_Progress* const stack = Stack();
    return stack && stack->Push(fraction);
}

bool wip_ProgressObj::Push(float fraction, const atr_String& text, KTSBasStringMode mode) {
    wip_Progress* const stack = Stack();
    return stack && stack->Push(fraction, text, mode);
}

bool wip_ProgressObj::Update(float fraction) {
    wip_Progress* const stack = Stack();
    if (!stack || !stack->MoveTo(fraction)) return false;
    Report(*stack);
    return true;
}

bool wip_ProgressObj::Update(const atr_String& text, KTSBasStringMode) {
    wip_Progress* const stack = Stack();
    if (!stack) return false;
    stack->Rename(text);
    Report(*stack);
    return true;
}

bool wip_ProgressObj::Update(float fraction, const atr_String& text, KTSBasStringMode) {
    wip_Progress* const stack = Stack();
    if (!stack || !stack->MoveTo(fraction)) return false;
    stack->Rename(text);
    Report(*stack);
    return true;
}

bool wip_ProgressObj::Update(int done, int total) {
    wip_Progress* const stack = Stack();
    if (!stack || !stack->MoveTo(done, total)) return false;
    Report(*stack);
    return true;
}

bool wip_ProgressObj::Pop(int levelCount) {
    wip_Progress& stack = wip_WIP::Instance().Progress();
    if (!stack.TakeAway(std::min(levelCount, Depth()))) return false;
    Report(stack);
    return true;
}

int wip_ProgressObj::Depth() const noexcept {
    return std::max(wip_WIP::Instance().Progress().Depth() - depthBefore, 0);
}

void wip_ProgressObj::Finish() {
    Pop(Depth());
    if (!madeBottom) return;
    madeBottom = false;
    wip_Progress& stack = wip_WIP::Instance().Progress();
    if (wip_WIP::Instance().GetWipReporter()) {
        stack.Finish();
    } else {
        stack.Clear();
    }
}

void wip_ProgressObj::Restart() {
    Drop();
    if (madeBottom) wip_WIP::Instance().Progress().Clear();
    madeBottom = false;
    if (beginsAtOnce) Begin();
}
