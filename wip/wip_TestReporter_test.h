#pragma once

#include <string>
#include <vector>

#include "wip/wip_WIP.h"

/// A reporter that writes down what it is told, one line a call, and that is registered as long as
/// it lives.
class wip_TestReporter : public wip_WipReporter {
  public:
    wip_TestReporter() { wip_WIP::Instance().SetWipReporter(this); }

    /// The lines since the last call.
    std::vector<std::string> Take() { return std::exchange(lines, {}); }

    void Print(const atr_String& t, KTSBasStringMode m) override { Note("print", t, m); }
    void Verbose(const atr_String& t, KTSBasStringMode m) override { Note("verbose", t, m); }
    void Warning(const atr_String& t, KTSBasStringMode m) override { Note("warning", t, m); }
    void WarningList(const cow_List<atr_String>& texts, KTSBasStringMode m) override {
        Note("warnings", Joined(texts), m);
    }
    void Error(const atr_String& t, wip_errorLevelEnm level, KTSBasStringMode m) override {
        Note("error" + std::to_string(level), t, m);
    }
    void ErrorList(const cow_List<atr_String>& texts, wip_errorLevelEnm level,
                   KTSBasStringMode m) override {
        Note("errors" + std::to_string(level), Joined(texts), m);
    }
    void Display(const atr_String& t, KTSBasStringMode m) override { Note("display", t, m); }
    void Landmark(const atr_String& t, KTSBasStringMode m) override { Note("landmark", t, m); }
    void Milestone(const atr_String& t, KTSBasStringMode m) override { Note("milestone", t, m); }
    void Milestone(const atr_String& t, int percent, KTSBasStringMode) override {
        lines.push_back(std::string(t.View()) + " " + std::to_string(percent));
        if (throwsOnProgress) throw lines.size();
    }
    void Milestone(const atr_String& t, const atr_String& detail, int done, int total,
                   KTSBasStringMode m) override {
        Note(atr("milestone %s %d/%d", detail, done, total).Characters(), t, m);
    }
    void FacilityMessage(const atr_String& t, int facility, int number, int severity,
                         omu_PrimTuple& arguments, KTSBasStringMode m) override {
        tuple = &arguments;
        Note(atr("facility %d %d %d", facility, number, severity).Characters(), t, m);
    }
    void CommandDone() override { lines.push_back("done"); }
    bool Interrupted() override { return interrupted; }

    bool throwsOnProgress = false;
    bool interrupted = false;
    omu_PrimTuple* tuple = nullptr;

  private:
    static atr_String Joined(const cow_List<atr_String>& texts) {
        std::string joined;
        for (const atr_String& text : texts) joined += std::string(text.View()) + ";";
        return atr_String(joined.c_str());
    }
    void Note(const std::string& kind, const atr_String& text, KTSBasStringMode mode) {
        const char* const shown = mode == KTSBasStringMode::Translated ? "" : " as it stands";
        lines.push_back(kind + " " + std::string(text.View()) + shown);
    }

    std::vector<std::string> lines;
};
