#include "ann/annC_Annotation.h"

#include <gtest/gtest.h>

#include <memory>

#include "ann/annC_Arrow.h"
#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_Text.h"
#include "ann/annC_ViewportAnchor.h"
#include "omu/omu_CmdExceptions.h"

namespace {

template <class Call>
cow_String MessageOf(Call&& call) {
    try {
        call();
    } catch (const omu_ValueErrorException& refused) {
        return refused.JournalMessage(KTSBasStringMode::Untranslated);
    }
    return "nothing was raised";
}

TEST(annC_Annotation, DefaultsAreThoseOfANewAnnotation) {
    const annC_Arrow arrow;
    EXPECT_EQ(arrow.GetStartPoint(), annC_Point2D());
    EXPECT_EQ(arrow.GetStartHeadStyle(), annC_HEAD_NONE);
    EXPECT_EQ(arrow.GetEndHeadStyle(), annC_HEAD_FILLED_ARROW);
    EXPECT_EQ(arrow.GetColor(), "White");
    EXPECT_EQ(arrow.GetLineStyle(), annC_LINE_SOLID);
    EXPECT_EQ(arrow.GetLineThickness(), annC_THICKNESS_VERY_THIN);
    EXPECT_TRUE(arrow.ConstGetStartAnchor() == annC_NamedAnchor(annC_POSITION_BOTTOM_LEFT));
    EXPECT_TRUE(arrow.ConstGetEndAnchor() == annC_NamedAnchor());
    const annC_Text text;
    EXPECT_EQ(text.GetText(), "");
    EXPECT_EQ(text.GetColor(), "White");
    EXPECT_EQ(text.GetBackgroundStyle(), annC_BACKGROUND_TRANSPARENT);
    EXPECT_EQ(text.GetBackgroundColor(), "Black");
    EXPECT_EQ(text.GetJustification(), annC_JUSTIFIED_LEFT);
    EXPECT_EQ(text.GetRotationAngle(), 0.0);
    EXPECT_FALSE(text.HasBox());
    EXPECT_EQ(text.GetFont(), "-*-verdana-medium-r-normal-*-*-120-");
    EXPECT_TRUE(text.ConstGetReferencePoint() == text.ConstGetAnchor());
}

TEST(annC_Annotation, EnumeratedFieldsTakeValuesAndNames) {
    annC_Arrow arrow;
    arrow.SetLineStyle("DOTTED");
    EXPECT_EQ(static_cast<int>(arrow.GetLineStyle()), 1);
    arrow.SetLineStyle(annC_LINE_DASHED);
    EXPECT_EQ(static_cast<int>(arrow.GetLineStyle()), 2);
    EXPECT_EQ(MessageOf([&] { arrow.SetLineStyle(cow_String("WAVY")); }),
              "omu_PrimEnum(const cow_String&) - str not allowed: WAVY  Permissible: SOLID, "
              "DASHED, DOTTED, DOT_DASH or NONE");
    EXPECT_EQ(MessageOf([&] { arrow.SetLineStyle(static_cast<annC_LineStyleEnm>(9)); }),
              "omu_PrimEnum(ENUMTYPE) - Enum value not allowed: 9  Permissible: SOLID, DASHED, "
              "DOTTED, DOT_DASH or NONE");
    EXPECT_EQ(arrow.GetLineStyle(), annC_LINE_DASHED);

    arrow.SetEndHeadStyle(annC_PrimLineStyle(annC_LINE_NONE));
    EXPECT_EQ(arrow.GetEndHeadStyle(), annC_HEAD_NONE) << "by the name, not by the number 4";
    EXPECT_EQ(MessageOf([&] { arrow.SetEndHeadStyle(annC_PrimLineStyle("DOTTED")); }),
              "omu_PrimEnum(const omu_PrimEnumBase&) - str not allowed: DOTTED");
    EXPECT_EQ(MessageOf([] { annC_NamedAnchor(static_cast<annC_RelativePositionEnm>(-1)); }),
              "omu_PrimEnum(ENUMTYPE) - Enum value not allowed: -1  Permissible: BOTTOM_LEFT, "
              "BOTTOM_CENTER, BOTTOM_RIGHT, TOP_LEFT, TOP_RIGHT, TOP_CENTER, CENTER_LEFT, CENTER "
              "or CENTER_RIGHT");
}

TEST(annC_Annotation, CopiesShareAnchorsUntilOneIsWritten) {
    annC_Arrow first;
    first.SetEndAnchor(annC_Point3DAnchor(1, 2, 3));
    const annC_Anchor* const start = &first.ConstGetStartAnchor();
    annC_Arrow second(first);
    EXPECT_EQ(second.GetUid(), first.GetUid());
    dynamic_cast<annC_NamedAnchor&>(second.GetStartAnchor()).SetPosition(annC_POSITION_CENTER);
    EXPECT_EQ(&first.ConstGetStartAnchor(), start);
    EXPECT_TRUE(first.ConstGetStartAnchor() == annC_NamedAnchor());
    EXPECT_TRUE(second.ConstGetStartAnchor() == annC_NamedAnchor(annC_POSITION_CENTER));
    EXPECT_EQ(&second.ConstGetEndAnchor(), &first.ConstGetEndAnchor());
    EXPECT_FALSE(second == first);

    annC_Arrow own;
    dynamic_cast<annC_NamedAnchor&>(own.GetStartAnchor()).SetPosition("TOP_LEFT");
    EXPECT_TRUE(own.ConstGetEndAnchor() == annC_NamedAnchor()) << "the two ends of one arrow";
    EXPECT_NE(&annC_Arrow().ConstGetStartAnchor(), &annC_Arrow().ConstGetStartAnchor());
}

TEST(annC_Annotation, EqualityIsByClassAndFields) {
    const annC_NamedAnchor named;
    const annC_Point3DAnchor point;
    const annC_ViewportAnchor viewport;
    EXPECT_FALSE(named == point);
    EXPECT_FALSE(point == viewport);
    EXPECT_TRUE(viewport == annC_ViewportAnchor(0, -0.0));
    EXPECT_FALSE(point == annC_Point3DAnchor(0, 0, 1));

    const annC_Annotation plain;
    EXPECT_TRUE(plain == annC_Annotation());
    EXPECT_FALSE(plain == annC_Arrow());
    const annC_Text text;
    annC_Text other;
    EXPECT_TRUE(text == other) << "whatever the identities";
    other.SetBox(true);
    EXPECT_FALSE(text == other);
    const annC_Annotation& base = other;
    const std::unique_ptr<annC_Annotation> copy(base.Copy());
    EXPECT_EQ(copy->TypeId(), annC_Text::kTypeId);
    EXPECT_TRUE(*copy == other);
}

}  // namespace
