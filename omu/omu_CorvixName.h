#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/cow_String.h"

/// The rules that a name is tested by. Callers may hand over other values, which test nothing.
enum omu_CorvixNameEnum : int {
    omu_UNTESTED_NAME = -1,
    omu_KER_NAME = 0,
    omu_KER_JOB_NAME = 1,
    omu_KER_MODEL_NAME = 2,
    omu_GUI_NAME = 3,
    omu_GUI_JOB_NAME = 4,
    omu_GUI_MODEL_NAME = 5,
    omu_GUI_OBJECT_NAME = 6,  ///< the rules of `omu_GUI_NAME`
    omu_XY_NAME = 7,
    omu_PART_NAME = 8,
};

/// The name of an object that a script creates. The analysis side ("Ker") tests names more loosely
/// than the interface ("Gui"); job and model names become file names and exclude what file systems
/// and shells misread.
///
/// A test counts characters: code points, with a byte outside of a well-formed UTF-8 sequence as
/// one. Names are counted texts, zero bytes included; control characters are the bytes below 32.
/// No test changes the name. A name that breaks a rule raises `omu_CvxNameErrorException` with the
/// error that the test names, an empty one with `omu_NAME_EMPTY`.
class KTSOVUGEOM_API omu_CorvixName {
  public:
    /// The empty name, untested.
    omu_CorvixName();
    /// Takes `text` by the rules of `mode`.
    omu_CorvixName(const cow_String& text, omu_CorvixNameEnum mode);
    /// Null is the empty name.
    omu_CorvixName(const char* text, omu_CorvixNameEnum mode);

    /// The name as it was given.
    [[nodiscard]] cow_String AsString() const { return name.Text(); }

    /// The longest analysis-side, interface and X-Y names, in characters.
    [[nodiscard]] static constexpr int MaxKerNameSize() noexcept { return 80; }
    [[nodiscard]] static constexpr int MaxGuiNameSize() noexcept { return 38; }
    [[nodiscard]] static constexpr int MaxXyNameSize() noexcept { return 256; }

    /// At most 80 characters, no digit first, none of `" . \` (else `omu_NAME_INVALID`).
    static void TestKerName(const cow_String& text);
    /// At most 38 characters, no digit, blank or `_` first, no blank or `_` last, none of `" . \`
    /// and no control characters (else `omu_NAME_INVALID`).
    static void TestGuiName(const cow_String& text);
    /// At most 80 characters, no `-` first, no `"` and none of the job-name pattern (else
    /// `omu_NAME_INVALID_JOB`).
    static void TestKerJobName(const cow_String& text);
    /// As `TestKerJobName`, also no `_` first or last and no control characters.
    ///
    /// Kept: 80 characters are allowed, where one would expect the 38 of interface names; job names
    /// are file names, and scripts made them longer.
    static void TestGuiJobName(const cow_String& text);
    /// At most 80 characters, no `"` and none of the model-name pattern (else
    /// `omu_NAME_INVALID_MODEL`).
    static void TestKerModelName(const cow_String& text);
    /// As `TestKerModelName`, also no blank or `_` first or last and no control characters.
    static void TestGuiModelName(const cow_String& text);
    /// At most 256 characters, no digit, blank, `-` or `_` first, no blank or `_` last, none of
    /// `" , \` and no control characters (else `omu_NAME_INVALID`). Dots are allowed.
    static void TestXyName(const cow_String& text);
    /// At most 80 characters (else `omu_NAME_PART_TOO_LONG`), no digit, blank, `-` or `_` first, no
    /// blank or `_` last, none of `" . \` and no control characters (else `omu_NAME_INVALID`).
    static void TestPartName(const cow_String& text);
    /// Accepts every step name; no mode selects it.
    static void TestStepName(const cow_String& text);

    /// True when the text stands between two equal quotes, single or double, and holds none of them
    /// unescaped. So 'x', which with its quotes is also a legal plain name, counts as quoted.
    [[nodiscard]] static bool IsQuoted(const cow_String& text);
    /// The text between quotes as scripts write strings (`omu_Quoted`); unchanged when it
    /// `IsQuoted` already.
    [[nodiscard]] static cow_String QuoteIfNeeded(const cow_String& text);
    /// Makes `text` a legal job and model name, on both sides: what is not allowed becomes `_`,
    /// then `_` and `-` in front and `_` at the end go, and what is longer than 80 characters; when
    /// nothing is left it is "Name". A legal interface job name is left unchanged.
    static void MakeLegalFileName(cow_String& text);
    /// Makes `text` a legal interface name: what is not allowed becomes `_`, then blanks and `_` go
    /// at both ends, "N" comes in front of a digit, and what is longer than 38 characters goes;
    /// when nothing is left it is `fallback`, or "Name" when that is null or no legal interface
    /// name itself. A legal name is left unchanged. Without a `-` in front and commas it is a legal
    /// X-Y and part name too.
    static void MakeLegalGuiName(cow_String& text, const char* fallback);

    /// The patterns of the rules: what a first character is, and what job and model names exclude.
    [[nodiscard]] const atr_String& FirstCharacterPattern() const noexcept { return firstPattern; }
    [[nodiscard]] const atr_String& JobNamePattern() const noexcept { return jobPattern; }
    [[nodiscard]] const atr_String& ModelNamePattern() const noexcept { return modelPattern; }

  private:
    static void Test(const cow_String& text, omu_CorvixNameEnum mode);

    atr_String firstPattern;
    atr_String jobPattern;
    atr_String modelPattern;
    atr_String name;
};
