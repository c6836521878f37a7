#pragma once

#include "ann/annC_Annotation.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/omi_Singleton.h"

class annC_Text;

/// What scripts on annotations need of the host and this module cannot know: how large a text is
/// when it is drawn, and which colours have a name. The host registers a function for each; without
/// one a text has no size and every name is a colour.
///
/// Created on first use and destroyed by the shut-down of the library. One thread at a time.
class KTSOVUGEOM_API annC_AnnotationClient {
  public:
    /// The width and height of a text as it is drawn, before it is turned, in viewport units.
    using TextMeasurer = annC_Point2D (*)(const annC_Text& text);
    /// Raises the host's colour error for a name that is no colour.
    using ColorCheck = void (*)(const cow_String& name);

    [[nodiscard]] static annC_AnnotationClient& Instance();

    void SetTextMeasurer(TextMeasurer measurer) noexcept { measure = measurer; }
    void SetColorCheck(ColorCheck colorCheck) noexcept { check = colorCheck; }

    [[nodiscard]] annC_Point2D TextSize(const annC_Text& text) const {
        return measure ? measure(text) : annC_Point2D();
    }
    void RequireColor(const cow_String& name) const {
        if (check) check(name);
    }

  private:
    friend class omi_Singleton<annC_AnnotationClient>;
    friend class omi_SingletonBase<annC_AnnotationClient>;
    static annC_AnnotationClient* singleton;
    annC_AnnotationClient();
    ~annC_AnnotationClient();

    TextMeasurer measure = nullptr;
    ColorCheck check = nullptr;
};
