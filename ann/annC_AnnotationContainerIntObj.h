#pragma once

#include <memory>

#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_AnnotationIntObj.h"
#include "ann/annC_InterfaceObj.h"

/// A container of annotations as scripts see it: a mapping from names to annotations whose methods
/// put them in order. All copies stand for one container. Equal when the containers are.
///
/// Methods, arguments by position or keyword:
///
///     bringToFront(name)    bringForward(name)    moveBefore(name, other)    keys()
///     sendToBack(name)      sendBackward(name)    moveAfter(name, other)
///     changeKey(fromName, toName)
///     setValues(name, ...)  the further arguments are those of the annotation's own "setValues"
///
/// A name that is not there raises `omu_KeyErrorException`. A new name must not be empty
/// (`omu_CvxNameErrorException`), hold a zero byte or, in "changeKey", be that of another
/// annotation (`omu_ValueErrorException`).
class KTSOVUGEOM_API annC_AnnotationContainerIntObj final : public annC_InterfaceObj {
  public:
    /// An empty container of its own.
    annC_AnnotationContainerIntObj();
    /// A copy of `container` as its own, a container with a new identity.
    explicit annC_AnnotationContainerIntObj(const annC_AnnotationContainer& container);

    [[nodiscard]] const annC_AnnotationContainer& ConstGet() const noexcept { return *container; }

    // The mapping.

    [[nodiscard]] int Size() const noexcept { return container->Size(); }
    [[nodiscard]] bool IsMember(const cow_String& name) const { return container->IsMember(name); }
    /// The names in drawing order.
    [[nodiscard]] cow_List<cow_String> Keys() const { return container->Keys(); }
    /// The annotation `name`: an object that stands for it as long as it is there.
    [[nodiscard]] std::unique_ptr<annC_AnnotationIntObj> GetItem(const cow_String& name) const;
    /// Puts a copy of `annotation` under `name`.
    void SetItem(const cow_String& name, const annC_AnnotationIntObj& annotation);
    void RemoveItem(const cow_String& name);

    /// "AnnotationContainer".
    [[nodiscard]] cow_String TypeString() const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    [[nodiscard]] annC_AnnotationContainerIntObj* Copy() const override;
    /// None.
    [[nodiscard]] cow_List<cow_String> MemberNames() const override;
    [[nodiscard]] cow_List<cow_String> MethodNames() const override;
    [[nodiscard]] Result GetMember(const cow_String& member) const override;
    void SetMember(const cow_String& member, const omu_Primitive& value) override;
    Result Call(const cow_String& method, omu_Arguments& arguments) override;
    /// A line for each annotation with its name and type, front to back.
    [[nodiscard]] cow_String Summary() const override;

  private:
    struct Methods;

    std::shared_ptr<annC_AnnotationContainer> container;
};
