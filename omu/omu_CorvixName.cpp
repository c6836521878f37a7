#include "omu/omu_CorvixName.h"

#include <string>
#include <string_view>

#include "foundation/coreutils/rgx_match.h"
#include "omu/omu_CvxNameErrorException.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_Utf8.h"

namespace {

constexpr std::string_view kFirstPattern = "^[^0-9]";
constexpr std::string_view kJobPattern = R"([:\$\\&\*~! \(\)\[\]\{\}\|;\'\`\< >\?\/. ])";
constexpr std::string_view kModelPattern = R"([\$\\&\*~!\(\)\[\]\{\}\|;\'\`\<>\?\/.])";

constexpr std::string_view kLastFallback = "Name";

/// `base` and the bytes of `more`, and the control characters when asked.
constexpr rgx_ByteSet With(rgx_ByteSet base, std::string_view more, bool controls = false) {
    for (const char c : more) base.Add(static_cast<unsigned char>(c));
    for (unsigned char byte = 0; controls && byte < 32; ++byte) base.Add(byte);
    return base;
}

/// The bytes that the pattern of first characters does not match.
constexpr rgx_ByteSet NotFirst() {
    rgx_ByteSet bytes = rgx_ClassOf(kFirstPattern.substr(1));
    bytes.Invert();
    return bytes;
}

constexpr rgx_ByteSet kNone;
constexpr rgx_ByteSet kDigits = NotFirst();
constexpr rgx_ByteSet kJobExcluded = With(rgx_ClassOf(kJobPattern), "\"");
constexpr rgx_ByteSet kModelExcluded = With(rgx_ClassOf(kModelPattern), "\"");
constexpr bool kControls = true;

/// The rules of one test: the length, its error and that of all other rules, and which bytes a name
/// must not hold anywhere, first and last.
struct Rules {
    int maxLength;
    omu_CvxNameErrorEnm tooLong;
    omu_CvxNameErrorEnm fault;
    rgx_ByteSet anywhere;
    rgx_ByteSet first;
    rgx_ByteSet last;
};

constexpr int kKer = omu_CorvixName::MaxKerNameSize();
constexpr int kGui = omu_CorvixName::MaxGuiNameSize();
constexpr int kXy = omu_CorvixName::MaxXyNameSize();

constexpr Rules kKerName = {kKer, omu_NAME_INVALID, omu_NAME_INVALID, With(kNone, "\".\\"), kDigits,
                            kNone};
constexpr Rules kGuiName = {kGui,
                            omu_NAME_INVALID,
                            omu_NAME_INVALID,
                            With(kNone, "\".\\", kControls),
                            With(kDigits, "_ "),
                            With(kNone, "_ ")};
constexpr Rules kKerJobName = {kKer,         omu_NAME_INVALID_JOB, omu_NAME_INVALID_JOB,
                               kJobExcluded, With(kNone, "-"),     kNone};
constexpr Rules kGuiJobName = {kKer,
                               omu_NAME_INVALID_JOB,
                               omu_NAME_INVALID_JOB,
                               With(kJobExcluded, "", kControls),
                               With(kNone, "-_"),
                               With(kNone, "_")};
constexpr Rules kKerModelName = {
    kKer, omu_NAME_INVALID_MODEL, omu_NAME_INVALID_MODEL, kModelExcluded, kNone, kNone};
constexpr Rules kGuiModelName = {kKer,
                                 omu_NAME_INVALID_MODEL,
                                 omu_NAME_INVALID_MODEL,
                                 With(kModelExcluded, "", kControls),
                                 With(kNone, "_ "),
                                 With(kNone, "_ ")};
constexpr Rules kXyName = {kXy,
                           omu_NAME_INVALID,
                           omu_NAME_INVALID,
                           With(kNone, "\",\\", kControls),
                           With(kDigits, " -_"),
                           With(kNone, "_ ")};
constexpr Rules kPartName = {kKer,
                             omu_NAME_PART_TOO_LONG,
                             omu_NAME_INVALID,
                             With(kNone, "\".\\", kControls),
                             With(kDigits, " -_"),
                             With(kNone, "_ ")};

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

/// The error of the first rule that `text` breaks; -1 when there is none.
int FaultOf(std::string_view text, const Rules& rules) {
    if (text.empty()) return omu_NAME_EMPTY;
    if (omu_CountCharacters(text) > rules.maxLength) return rules.tooLong;
    const bool breaksRule = rules.anywhere.ContainsAnyOf(text) ||
                            rules.first.Contains(Byte(text.front())) ||
                            rules.last.Contains(Byte(text.back()));
    return breaksRule ? rules.fault : -1;
}

void Apply(const cow_String& text, const Rules& rules) {
    const int fault = FaultOf(text.View(), rules);
    if (fault >= 0) {
        KTSBasThrow(omu_CvxNameErrorException(static_cast<omu_CvxNameErrorEnm>(fault)));
    }
}

/// `text` with `_` in place of the bytes that `rules` exclude everywhere.
std::string Replaced(std::string_view text, const Rules& rules) {
    std::string replaced(text);
    for (char& c : replaced) {
        if (rules.anywhere.Contains(Byte(c))) c = '_';
    }
    return replaced;
}

void TrimFront(std::string& text, std::string_view unwanted) {
    text.erase(0, text.find_first_not_of(unwanted));
}

/// Cuts `text` to the length of `rules`, and what must not stand last from its end.
void CutEnd(std::string& text, const Rules& rules) {
    std::string_view rest = text;
    for (int i = 0; i < rules.maxLength; ++i) rest.remove_prefix(omu_CharacterSize(rest));
    text.resize(text.size() - rest.size());
    while (!text.empty() && rules.last.Contains(Byte(text.back()))) text.pop_back();
}

}  // namespace

omu_CorvixName::omu_CorvixName() : omu_CorvixName(cow_String(), omu_UNTESTED_NAME) {}

omu_CorvixName::omu_CorvixName(const cow_String& text, omu_CorvixNameEnum mode)
    : firstPattern(kFirstPattern),
      jobPattern(kJobPattern),
      modelPattern(kModelPattern),
      name(text) {
    Test(text, mode);
}

omu_CorvixName::omu_CorvixName(const char* text, omu_CorvixNameEnum mode)
    : omu_CorvixName(cow_String(text), mode) {}

void omu_CorvixName::Test(const cow_String& text, omu_CorvixNameEnum mode) {
    switch (mode) {
        case omu_KER_NAME:
            return TestKerName(text);
        case omu_KER_JOB_NAME:
            return TestKerJobName(text);
        case omu_KER_MODEL_NAME:
            return TestKerModelName(text);
        case omu_GUI_NAME:
        case omu_GUI_OBJECT_NAME:
            return TestGuiName(text);
        case omu_GUI_JOB_NAME:
            return TestGuiJobName(text);
        case omu_GUI_MODEL_NAME:
            return TestGuiModelName(text);
        case omu_XY_NAME:
            return TestXyName(text);
        case omu_PART_NAME:
            return TestPartName(text);
        default:
            return;
    }
}

void omu_CorvixName::TestKerName(const cow_String& text) { Apply(text, kKerName); }
void omu_CorvixName::TestGuiName(const cow_String& text) { Apply(text, kGuiName); }
void omu_CorvixName::TestKerJobName(const cow_String& text) { Apply(text, kKerJobName); }
void omu_CorvixName::TestGuiJobName(const cow_String& text) { Apply(text, kGuiJobName); }
void omu_CorvixName::TestKerModelName(const cow_String& text) { Apply(text, kKerModelName); }
void omu_CorvixName::TestGuiModelName(const cow_String& text) { Apply(text, kGuiModelName); }
void omu_CorvixName::TestXyName(const cow_String& text) { Apply(text, kXyName); }
void omu_CorvixName::TestPartName(const cow_String& text) { Apply(text, kPartName); }
void omu_CorvixName::TestStepName(const cow_String&) {}

bool omu_CorvixName::IsQuoted(const cow_String& text) {
    const std::string_view bytes = text.View();
    if (bytes.size() < 2) return false;
    const char quote = bytes.front();
    if (quote != '\'' && quote != '"') return false;
    std::size_t at = 1;
    while (at < bytes.size() && bytes[at] != quote) at += bytes[at] == '\\' ? 2 : 1;
    return at == bytes.size() - 1;
}

cow_String omu_CorvixName::QuoteIfNeeded(const cow_String& text) {
    return IsQuoted(text) ? text : omu_Quoted(text);
}

void omu_CorvixName::MakeLegalFileName(cow_String& text) {
    if (FaultOf(text.View(), kGuiJobName) < 0) return;
    std::string legal = Replaced(text.View(), kGuiJobName);
    TrimFront(legal, "_-");
    CutEnd(legal, kGuiJobName);
    text = legal.empty() ? kLastFallback : std::string_view(legal);
}

void omu_CorvixName::MakeLegalGuiName(cow_String& text, const char* fallback) {
    if (FaultOf(text.View(), kGuiName) < 0) return;
    std::string legal = Replaced(text.View(), kGuiName);
    TrimFront(legal, "_ ");
    if (!legal.empty() && kDigits.Contains(Byte(legal.front()))) legal.insert(legal.begin(), 'N');
    CutEnd(legal, kGuiName);
    if (legal.empty()) {
        const cow_String substitute(fallback);
        text = FaultOf(substitute.View(), kGuiName) < 0 ? substitute.View() : kLastFallback;
    } else {
        text = std::string_view(legal);
    }
}
