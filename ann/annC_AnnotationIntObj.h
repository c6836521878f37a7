#pragma once

#include <memory>

#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_InterfaceObj.h"

/// An annotation as scripts see it, by itself one without members: either its own, or one that
/// stands in a container and is looked up by its id at each use. When it is there no more, or
/// another kind of annotation took its place, every use raises `omu_AccessErrorException`, also
/// after a new annotation got its name.
///
/// Equal when both stand for equal annotations.
class KTSOVUGEOM_API annC_AnnotationIntObj : public annC_InterfaceObj {
  public:
    /// The object for a copy of `annotation`, of the kind of its class.
    [[nodiscard]] static std::unique_ptr<annC_AnnotationIntObj> Make(
        const annC_Annotation& annotation);
    /// The object for the annotation `id` of `container`, which it keeps alive.
    [[nodiscard]] static std::unique_ptr<annC_AnnotationIntObj> Make(
        const std::shared_ptr<annC_AnnotationContainer>& container, int id);

    /// The annotation, valid until the next call that changes it.
    [[nodiscard]] const annC_Annotation& ConstGet() const;

    /// "Annotation", "Arrow" or "Text".
    [[nodiscard]] cow_String TypeString() const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    [[nodiscard]] annC_AnnotationIntObj* Copy() const override;
    [[nodiscard]] cow_List<cow_String> MemberNames() const override;
    [[nodiscard]] cow_List<cow_String> MethodNames() const override;
    [[nodiscard]] Result GetMember(const cow_String& member) const override;
    void SetMember(const cow_String& member, const omu_Primitive& value) override;
    Result Call(const cow_String& method, omu_Arguments& arguments) override;
    /// The type name, of a text its words.
    [[nodiscard]] cow_String Summary() const override;

    /// Sets the fields that the remaining arguments give, all or, when it raises, none.
    virtual void SetValues(omu_Arguments& arguments);

  protected:
    /// Where the annotation is: on its own, or in a container by its id.
    struct Place {
        std::shared_ptr<annC_AnnotationCow> own;
        std::shared_ptr<annC_AnnotationContainer> container;
        int id = 0;
    };
    annC_AnnotationIntObj(const Place& whereItIs, std::uint32_t annotationClass)
        : place(whereItIs), classId(annotationClass) {}
    [[nodiscard]] static Place PlaceOf(const annC_Annotation& annotation);
    /// The annotation for writing.
    [[nodiscard]] annC_Annotation& Get();

  private:
    [[nodiscard]] static std::unique_ptr<annC_AnnotationIntObj> Make(const Place& place,
                                                                     std::uint32_t classId);
    [[nodiscard]] const annC_Annotation* Find() const;
    [[noreturn]] void RaiseGone() const;

    Place place;
    std::uint32_t classId;
};

/// An arrow as scripts see it. Its members are the fields in their stored order and "startPointX",
/// "startPointY", "endPointX" and "endPointY"; its methods "setValues" with the members as
/// keywords, and "translate", "translateStartPoint" and "translateEndPoint" with "x" and "y" in
/// viewport units.
///
/// Points are sequences of two numbers; anchors the constant of a named position, three numbers for
/// a point of the model or two for one of the viewport. A single coordinate wins over its point.
class KTSOVUGEOM_API annC_ArrowIntObj final : public annC_AnnotationIntObj {
  public:
    /// An arrow of its own with the values that are given by position, in the order of the members,
    /// or by keyword; the others have their defaults.
    explicit annC_ArrowIntObj(omu_Arguments& arguments);

    [[nodiscard]] annC_ArrowIntObj* Copy() const override;
    [[nodiscard]] cow_List<cow_String> MemberNames() const override;
    [[nodiscard]] cow_List<cow_String> MethodNames() const override;
    [[nodiscard]] Result GetMember(const cow_String& member) const override;
    Result Call(const cow_String& method, omu_Arguments& arguments) override;
    void SetValues(omu_Arguments& arguments) override;

  private:
    friend class annC_AnnotationIntObj;
    struct Methods;
    explicit annC_ArrowIntObj(const Place& whereItIs);
};

/// A text as scripts see it. Its members are the fields in their stored order, "offsetX" and
/// "offsetY", and "width" and "height", the size in viewport units that the host tells
/// (`annC_AnnotationClient`); to set these two raises `omu_AccessErrorException`. Its method is
/// "setValues" with the members as keywords.
class KTSOVUGEOM_API annC_TextIntObj final : public annC_AnnotationIntObj {
  public:
    /// A text of its own with the values that are given by position, in the order of the members,
    /// or by keyword; the others have their defaults.
    explicit annC_TextIntObj(omu_Arguments& arguments);

    [[nodiscard]] annC_TextIntObj* Copy() const override;
    [[nodiscard]] cow_List<cow_String> MemberNames() const override;
    [[nodiscard]] cow_List<cow_String> MethodNames() const override;
    [[nodiscard]] Result GetMember(const cow_String& member) const override;
    Result Call(const cow_String& method, omu_Arguments& arguments) override;
    [[nodiscard]] cow_String Summary() const override;
    void SetValues(omu_Arguments& arguments) override;

  private:
    friend class annC_AnnotationIntObj;
    explicit annC_TextIntObj(const Place& whereItIs);
};
