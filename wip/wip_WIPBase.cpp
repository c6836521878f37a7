#include "wip/wip_WIPBase.h"

#include "foundation/shared/nex_Exception.h"
#include "wip/wip_InterruptedException.h"

wip_WipReporter& wip_WIPBase::RequireReporter() const {
    if (!reporter) KTSBasThrow(nex_PrimException("WipReporter != 0"));
    return *reporter;
}

void wip_WIPBase::Print(const atr_String& text, KTSBasStringMode mode) {
    RequireReporter().Print(text, mode);
}

void wip_WIPBase::Verbose(const atr_String& text, KTSBasStringMode mode) {
    RequireReporter().Verbose(text, mode);
}

void wip_WIPBase::Warning(const atr_String& text, KTSBasStringMode mode) {
    RequireReporter().Warning(text, mode);
}

void wip_WIPBase::WarningList(const cow_List<atr_String>& texts, KTSBasStringMode mode) {
    RequireReporter().WarningList(texts, mode);
}

void wip_WIPBase::Error(const atr_String& text, wip_errorLevelEnm level, KTSBasStringMode mode) {
    RequireReporter().Error(text, level, mode);
}

void wip_WIPBase::ErrorList(const cow_List<atr_String>& texts, wip_errorLevelEnm level,
                            KTSBasStringMode mode) {
    RequireReporter().ErrorList(texts, level, mode);
}

void wip_WIPBase::Display(const atr_String& text, KTSBasStringMode mode) {
    RequireReporter().Display(text, mode);
}

void wip_WIPBase::Landmark(const atr_String& text, KTSBasStringMode mode) {
    RequireReporter().Landmark(text, mode);
}

void wip_WIPBase::Milestone(const atr_String& text, KTSBasStringMode mode) {
    RequireReporter().Milestone(text, mode);
}

void wip_WIPBase::Milestone(const atr_String& text, int percent, KTSBasStringMode mode) {
    RequireReporter().Milestone(text, percent, mode);
}

void wip_WIPBase::Milestone(const atr_String& text, const atr_String& detail, int done, int total,
                            KTSBasStringMode mode) {
    RequireReporter().Milestone(text, detail, done, total, mode);
}

void wip_WIPBase::FacilityMessage(const atr_String& text, int facility, int number, int severity,
                                  omu_PrimTuple& arguments, KTSBasStringMode mode) {
    RequireReporter().FacilityMessage(text, facility, number, severity, arguments, mode);
}

void wip_WIPBase::CommandDone() {
    if (reporter) reporter->CommandDone();
}

bool wip_WIPBase::Interrupted() { return reporter && reporter->Interrupted(); }

void wip_WIPBase::InterruptedThrow() {
    if (Interrupted()) KTSBasThrow(wip_InterruptedException());
}
