#pragma once

#include <string>
#include <vector>

#include "omu/omu_PrimTuple.h"
#include "wip/wip_WIP.h"

/// A reporter that writes down what it is told, one line a call, and that is registered as long as
/// it lives.
class wip_TestReporter : public wip_WipReporter {
  public:
    using Text = atr_String;
    using Mode = KTSBasStringMode;

    wip_TestReporter() { wip_WIP::Instance().SetWipReporter(this); }

    /// The lines since the last call.
    std::vector<std::string> Take() { return std::exchange(lines, {}); }

    void Print(const Text& t, Mode m) override { Note("print", t, m); }
    void Verbose(const Text& t, Mode m) override { Note("verbose", t, m); }
    void Warning(const Text& t, Mode m) override { Note("warning", t, m); }
    void WarningList(const cow_List<Text>& texts, Mode m) override {
        for (const Text& t : texts) Note("warnings", t, m);
    }
    void Error(const Text& t, wip_errorLevelEnm level, Mode m) override {
        Note(atr("error%d", static_cast<int>(level)), t, m);
    }
    void ErrorList(const cow_List<Text>& texts, wip_errorLevelEnm level, Mode m) override {
        for (const Text& t : texts) Note(atr("errors%d", static_cast<int>(level)), t, m);
    }
    void Display(const Text& t, Mode m) override { Note("display", t, m); }
    void Landmark(const Text& t, Mode m) override { Note("landmark", t, m); }
    void Milestone(const Text& t, Mode m) override { Note("milestone", t, m); }
    void Milestone(const Text& t, int percent, Mode) override {
        lines.push_back(std::string(t.View()) + " " + std::to_string(percent));
        if (throwsOnProgress) throw lines.size();
    }
    void Milestone(const Text& t, const Text& detail, int done, int total, Mode m) override {
        Note(atr("milestone %s %d/%d", detail, done, total), t, m);
    }
    void FacilityMessage(const Text& t, int facility, int number, int severity,
                         omu_PrimTuple& arguments, Mode m) override {
        arguments = omu_PrimTuple();
        Note(atr("facility %d %d %d", facility, number, severity), t, m);
    }
    void CommandDone() override { lines.push_back("done"); }
    bool Interrupted() override { return interrupted; }

    bool throwsOnProgress = false;
    bool interrupted = false;

  private:
    void Note(const cow_String& kind, const Text& text, Mode mode) {
        const char* const shown = mode == Mode::Translated ? "" : " as it stands";
        lines.push_back(std::string(kind.View()) + " " + std::string(text.View()) + shown);
    }

    std::vector<std::string> lines;
};
