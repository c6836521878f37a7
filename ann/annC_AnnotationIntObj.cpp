#include "ann/annC_AnnotationIntObj.h"

#include "ann/annC_AnnotationClient.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_Text.h"
#include "ann/detail/annC_FieldNames.h"
#include "ann/detail/annC_Members.h"

namespace {

using Result = annC_InterfaceObj::Result;

void RequireColorIfNew(const cow_String& before, const cow_String& now) {
    if (now != before) annC_AnnotationClient::Instance().RequireColor(now);
}

void RequireFontIfNew(const cow_String& before, const cow_String& now) {
    if (now == before || annC_Font::IsValid(now)) return;
    KTSBasThrow(omu_FontErrorException(atr_translate("%s is not a valid font.", now)));
}

// Setting one of several parts of a value.

template <class Annotation>
void SetAnchorOf(Annotation& annotation, void (Annotation::*set)(const annC_Anchor&),
                 const annC_Argument& argument) {
    const annC_AnchorArgument given = argument(annC_AnchorArgument());
    if (given.anchor) (annotation.*set)(*given.anchor);
}

annC_Point2D WithX(const annC_Point2D& point, const annC_Argument& argument) {
    return {argument(point.x), point.y};
}

annC_Point2D WithY(const annC_Point2D& point, const annC_Argument& argument) {
    return {point.x, argument(point.y)};
}

using A = const annC_Arrow&;
using Argument = const annC_Argument&;

constexpr annC_Member<annC_Arrow> kArrowMembers[] = {
    {annC_ArrowField::kStartPoint.Name(), [](A a) { return annC_PointPrim(a.GetStartPoint()); },
     [](annC_Arrow& a, Argument given) { a.SetStartPoint(given(a.GetStartPoint())); }},
    {annC_ArrowField::kEndPoint.Name(), [](A a) { return annC_PointPrim(a.GetEndPoint()); },
     [](annC_Arrow& a, Argument given) { a.SetEndPoint(given(a.GetEndPoint())); }},
    {annC_ArrowField::kStartAnchor.Name(),
     [](A a) { return annC_AnchorPrim(a.ConstGetStartAnchor()); },
     [](annC_Arrow& a, Argument given) { SetAnchorOf(a, &annC_Arrow::SetStartAnchor, given); }},
    {annC_ArrowField::kEndAnchor.Name(), [](A a) { return annC_AnchorPrim(a.ConstGetEndAnchor()); },
     [](annC_Arrow& a, Argument given) { SetAnchorOf(a, &annC_Arrow::SetEndAnchor, given); }},
    {annC_ArrowField::kStartHeadStyle.Name(),
     [](A a) { return omu_NewPrimitive(annC_PrimArrowHeadStyle(a.GetStartHeadStyle())); },
     [](annC_Arrow& a, Argument given) {
         a.SetStartHeadStyle(given(annC_PrimArrowHeadStyle(a.GetStartHeadStyle())));
     }},
    {annC_ArrowField::kEndHeadStyle.Name(),
     [](A a) { return omu_NewPrimitive(annC_PrimArrowHeadStyle(a.GetEndHeadStyle())); },
     [](annC_Arrow& a, Argument given) {
         a.SetEndHeadStyle(given(annC_PrimArrowHeadStyle(a.GetEndHeadStyle())));
     }},
    {annC_ArrowField::kStartGap.Name(), [](A a) { return omu_NewPrimitive(a.GetStartGap()); },
     [](annC_Arrow& a, Argument given) { a.SetStartGap(given(a.GetStartGap())); }},
    {annC_ArrowField::kEndGap.Name(), [](A a) { return omu_NewPrimitive(a.GetEndGap()); },
     [](annC_Arrow& a, Argument given) { a.SetEndGap(given(a.GetEndGap())); }},
    {annC_ArrowField::kColor.Name(), [](A a) { return omu_NewPrimitive(a.GetColor()); },
     [](annC_Arrow& a, Argument given) { a.SetColor(given(a.GetColor())); }},
    {annC_ArrowField::kLineStyle.Name(),
     [](A a) { return omu_NewPrimitive(annC_PrimLineStyle(a.GetLineStyle())); },
     [](annC_Arrow& a, Argument given) {
         a.SetLineStyle(given(annC_PrimLineStyle(a.GetLineStyle())));
     }},
    {annC_ArrowField::kLineThickness.Name(),
     [](A a) { return omu_NewPrimitive(annC_PrimLineThickness(a.GetLineThickness())); },
     [](annC_Arrow& a, Argument given) {
         a.SetLineThickness(given(annC_PrimLineThickness(a.GetLineThickness())));
     }},
    {"startPointX", [](A a) { return omu_NewPrimitive(a.GetStartPoint().x); },
     [](annC_Arrow& a, Argument given) { a.SetStartPoint(WithX(a.GetStartPoint(), given)); }},
    {"startPointY", [](A a) { return omu_NewPrimitive(a.GetStartPoint().y); },
     [](annC_Arrow& a, Argument given) { a.SetStartPoint(WithY(a.GetStartPoint(), given)); }},
    {"endPointX", [](A a) { return omu_NewPrimitive(a.GetEndPoint().x); },
     [](annC_Arrow& a, Argument given) { a.SetEndPoint(WithX(a.GetEndPoint(), given)); }},
    {"endPointY", [](A a) { return omu_NewPrimitive(a.GetEndPoint().y); },
     [](annC_Arrow& a, Argument given) { a.SetEndPoint(WithY(a.GetEndPoint(), given)); }},
};

using T = const annC_Text&;

annC_Point2D SizeOf(T text) { return annC_AnnotationClient::Instance().TextSize(text); }

constexpr annC_Member<annC_Text> kTextMembers[] = {
    {annC_TextField::kText.Name(), [](T t) { return omu_NewPrimitive(t.GetText()); },
     [](annC_Text& t, Argument given) { t.SetText(given(t.GetText())); }},
    {annC_TextField::kOffset.Name(), [](T t) { return annC_PointPrim(t.GetOffset()); },
     [](annC_Text& t, Argument given) { t.SetOffset(given(t.GetOffset())); }},
    {annC_TextField::kAnchor.Name(), [](T t) { return annC_AnchorPrim(t.ConstGetAnchor()); },
     [](annC_Text& t, Argument given) { SetAnchorOf(t, &annC_Text::SetAnchor, given); }},
    {annC_TextField::kReferencePoint.Name(),
     [](T t) { return annC_AnchorPrim(t.ConstGetReferencePoint()); },
     [](annC_Text& t, Argument given) { SetAnchorOf(t, &annC_Text::SetReferencePoint, given); }},
    {annC_TextField::kRotationAngle.Name(),
     [](T t) { return omu_NewPrimitive(t.GetRotationAngle()); },
     [](annC_Text& t, Argument given) { t.SetRotationAngle(given(t.GetRotationAngle())); }},
    {annC_TextField::kFont.Name(), [](T t) { return omu_NewPrimitive(t.GetFont()); },
     [](annC_Text& t, Argument given) { t.SetFont(given(t.GetFont())); }},
    {annC_TextField::kColor.Name(), [](T t) { return omu_NewPrimitive(t.GetColor()); },
     [](annC_Text& t, Argument given) { t.SetColor(given(t.GetColor())); }},
    {annC_TextField::kBackgroundStyle.Name(),
     [](T t) { return omu_NewPrimitive(annC_PrimBackgroundStyle(t.GetBackgroundStyle())); },
     [](annC_Text& t, Argument given) {
         t.SetBackgroundStyle(given(annC_PrimBackgroundStyle(t.GetBackgroundStyle())));
     }},
    {annC_TextField::kBackgroundColor.Name(),
     [](T t) { return omu_NewPrimitive(t.GetBackgroundColor()); },
     [](annC_Text& t, Argument given) { t.SetBackgroundColor(given(t.GetBackgroundColor())); }},
    {annC_TextField::kBox.Name(), [](T t) { return omu_NewPrimitive(omu_OnOffConst(t.HasBox())); },
     [](annC_Text& t, Argument given) { t.SetBox(given(t.HasBox())); }},
    {annC_TextField::kJustification.Name(),
     [](T t) { return omu_NewPrimitive(annC_PrimJustification(t.GetJustification())); },
     [](annC_Text& t, Argument given) {
         t.SetJustification(given(annC_PrimJustification(t.GetJustification())));
     }},
    {"offsetX", [](T t) { return omu_NewPrimitive(t.GetOffset().x); },
     [](annC_Text& t, Argument given) { t.SetOffset(WithX(t.GetOffset(), given)); }},
    {"offsetY", [](T t) { return omu_NewPrimitive(t.GetOffset().y); },
     [](annC_Text& t, Argument given) { t.SetOffset(WithY(t.GetOffset(), given)); }},
    {"width", [](T t) { return omu_NewPrimitive(SizeOf(t).x); }},
    {"height", [](T t) { return omu_NewPrimitive(SizeOf(t).y); }},
};

annC_Arrow ReadArrow(const annC_Arrow& current, omu_Arguments& arguments) {
    const annC_Arrow changed = annC_WithArguments(kArrowMembers, current, arguments);
    RequireColorIfNew(current.GetColor(), changed.GetColor());
    return changed;
}

annC_Text ReadText(const annC_Text& current, omu_Arguments& arguments) {
    const annC_Text changed = annC_WithArguments(kTextMembers, current, arguments);
    RequireColorIfNew(current.GetColor(), changed.GetColor());
    RequireColorIfNew(current.GetBackgroundColor(), changed.GetBackgroundColor());
    RequireFontIfNew(current.GetFont(), changed.GetFont());
    return changed;
}

Result SetValuesOf(annC_AnnotationIntObj& object, omu_Arguments& arguments) {
    object.SetValues(arguments);
    return nullptr;
}

}  // namespace

// Any annotation.

annC_AnnotationIntObj::Place annC_AnnotationIntObj::PlaceOf(const annC_Annotation& annotation) {
    Place place;
    const annC_AnnotationCow held(annotation.Copy());
    place.own = std::make_shared<annC_AnnotationCow>(held);
    return place;
}

std::unique_ptr<annC_AnnotationIntObj> annC_AnnotationIntObj::Make(const Place& place,
                                                                   std::uint32_t classId) {
    annC_AnnotationIntObj* object = nullptr;
    if (classId == annC_Arrow::kTypeId) {
        object = new annC_ArrowIntObj(place);
    } else if (classId == annC_Text::kTypeId) {
        object = new annC_TextIntObj(place);
    } else {
        object = new annC_AnnotationIntObj(place, classId);
    }
    return std::unique_ptr<annC_AnnotationIntObj>(object);
}

std::unique_ptr<annC_AnnotationIntObj> annC_AnnotationIntObj::Make(
    const annC_Annotation& annotation) {
    return Make(PlaceOf(annotation), annotation.TypeId());
}

std::unique_ptr<annC_AnnotationIntObj> annC_AnnotationIntObj::Make(
    const std::shared_ptr<annC_AnnotationContainer>& container, int id) {
    const annC_Annotation* const annotation = container->ConstGet(id);
    return Make({nullptr, container, id}, annotation ? annotation->TypeId() : 0);
}

const annC_Annotation* annC_AnnotationIntObj::Find() const {
    const annC_Annotation* const annotation =
        place.own ? place.own->ConstGet() : place.container->ConstGet(place.id);
    return annotation && annotation->TypeId() == classId ? annotation : nullptr;
}

void annC_AnnotationIntObj::RaiseGone() const {
    KTSBasThrow(omu_AccessErrorException(atr("%s is no longer there", TypeString())));
}

const annC_Annotation& annC_AnnotationIntObj::ConstGet() const {
    const annC_Annotation* const annotation = Find();
    if (!annotation) RaiseGone();
    return *annotation;
}

annC_Annotation& annC_AnnotationIntObj::Get() {
    if (!Find()) RaiseGone();
    return place.own ? *place.own->Get() : *place.container->Get(place.id);
}

cow_String annC_AnnotationIntObj::TypeString() const { return TypeNameOf(classId); }

bool annC_AnnotationIntObj::operator==(const omu_Primitive& other) const {
    const auto* const object = dynamic_cast<const annC_AnnotationIntObj*>(&other);
    if (!object) return false;
    const annC_Annotation* const annotation = Find();
    const annC_Annotation* const otherAnnotation = object->Find();
    if (!annotation || !otherAnnotation) return annotation == otherAnnotation;
    return *annotation == *otherAnnotation;
}

annC_AnnotationIntObj* annC_AnnotationIntObj::Copy() const {
    return new annC_AnnotationIntObj(*this);
}

cow_List<cow_String> annC_AnnotationIntObj::MemberNames() const { return {}; }

cow_List<cow_String> annC_AnnotationIntObj::MethodNames() const { return {}; }

Result annC_AnnotationIntObj::GetMember(const cow_String& member) const {
    RaiseNoSuchMember(member);
}

void annC_AnnotationIntObj::SetMember(const cow_String& member, const omu_Primitive& value) {
    if (!MemberNames().IsMember(member)) RaiseNoSuchMember(member);
    omu_Arguments arguments;
    arguments.Put(value, member);
    SetValues(arguments);
}

Result annC_AnnotationIntObj::Call(const cow_String& method, omu_Arguments&) {
    RaiseNoSuchMember(method);
}

cow_String annC_AnnotationIntObj::Summary() const {
    static_cast<void>(ConstGet());  // an annotation that is gone has none
    return TypeString();
}

void annC_AnnotationIntObj::SetValues(omu_Arguments& arguments) { arguments.End(); }

// Arrows.

namespace {

const annC_Arrow& ArrowIn(const annC_AnnotationIntObj& object) {
    return static_cast<const annC_Arrow&>(object.ConstGet());
}

/// Reads the displacement that all the methods take.
annC_Point2D ReadDisplacement(omu_Arguments& arguments) {
    annC_Point2D by;
    arguments.Get(by.x, "x");
    arguments.Get(by.y, "y");
    arguments.End();
    return by;
}

}  // namespace

annC_ArrowIntObj::annC_ArrowIntObj(const Place& whereItIs)
    : annC_AnnotationIntObj(whereItIs, annC_Arrow::kTypeId) {}

annC_ArrowIntObj::annC_ArrowIntObj(omu_Arguments& arguments)
    : annC_ArrowIntObj(PlaceOf(ReadArrow(annC_Arrow(), arguments))) {}

annC_ArrowIntObj* annC_ArrowIntObj::Copy() const { return new annC_ArrowIntObj(*this); }

cow_List<cow_String> annC_ArrowIntObj::MemberNames() const { return annC_NamesOf(kArrowMembers); }

Result annC_ArrowIntObj::GetMember(const cow_String& member) const {
    const auto* const row = annC_FindRow(kArrowMembers, member);
    if (!row) RaiseNoSuchMember(member);
    return row->get(ArrowIn(*this));
}

void annC_ArrowIntObj::SetValues(omu_Arguments& arguments) {
    const annC_Arrow changed = ReadArrow(ArrowIn(*this), arguments);
    static_cast<annC_Arrow&>(Get()) = changed;
}

struct annC_ArrowIntObj::Methods {
    template <auto move>
    static Result Translate(annC_ArrowIntObj& object, omu_Arguments& arguments) {
        const annC_Point2D by = ReadDisplacement(arguments);
        (static_cast<annC_Arrow&>(object.Get()).*move)(by.x, by.y);
        return nullptr;
    }
    static Result SetValues(annC_ArrowIntObj& object, omu_Arguments& arguments) {
        return SetValuesOf(object, arguments);
    }
    static constexpr annC_Method<annC_ArrowIntObj> kTable[] = {
        {"setValues", &SetValues},
        {"translate", &Translate<&annC_Arrow::Translate>},
        {"translateStartPoint", &Translate<&annC_Arrow::TranslateStartPoint>},
        {"translateEndPoint", &Translate<&annC_Arrow::TranslateEndPoint>},
    };
};

cow_List<cow_String> annC_ArrowIntObj::MethodNames() const { return annC_NamesOf(Methods::kTable); }

Result annC_ArrowIntObj::Call(const cow_String& method, omu_Arguments& arguments) {
    const auto* const row = annC_FindRow(Methods::kTable, method);
    if (!row) RaiseNoSuchMember(method);
    return row->call(*this, arguments);
}

// Texts.

namespace {

const annC_Text& TextIn(const annC_AnnotationIntObj& object) {
    return static_cast<const annC_Text&>(object.ConstGet());
}

constexpr annC_Method<annC_AnnotationIntObj> kTextMethods[] = {{"setValues", &SetValuesOf}};

}  // namespace

annC_TextIntObj::annC_TextIntObj(const Place& whereItIs)
    : annC_AnnotationIntObj(whereItIs, annC_Text::kTypeId) {}

annC_TextIntObj::annC_TextIntObj(omu_Arguments& arguments)
    : annC_TextIntObj(PlaceOf(ReadText(annC_Text(), arguments))) {}

annC_TextIntObj* annC_TextIntObj::Copy() const { return new annC_TextIntObj(*this); }

cow_List<cow_String> annC_TextIntObj::MemberNames() const { return annC_NamesOf(kTextMembers); }

cow_List<cow_String> annC_TextIntObj::MethodNames() const { return annC_NamesOf(kTextMethods); }

Result annC_TextIntObj::GetMember(const cow_String& member) const {
    const auto* const row = annC_FindRow(kTextMembers, member);
    if (!row) RaiseNoSuchMember(member);
    return row->get(TextIn(*this));
}

Result annC_TextIntObj::Call(const cow_String& method, omu_Arguments& arguments) {
    const auto* const row = annC_FindRow(kTextMethods, method);
    if (!row) RaiseNoSuchMember(method);
    return row->call(*this, arguments);
}

cow_String annC_TextIntObj::Summary() const {
    const cow_String& text = TextIn(*this).GetText();
    return text.IsEmpty() ? kEmptySummary : text;
}

void annC_TextIntObj::SetValues(omu_Arguments& arguments) {
    const annC_Text changed = ReadText(TextIn(*this), arguments);
    static_cast<annC_Text&>(Get()) = changed;
}
