#pragma once

#include <cstdint>
#include <memory>

#include "cow/cow_List.h"
#include "omu/omu_InterfaceObj.h"

class omu_Arguments;

/// What annotations and their containers are to scripts: objects with members that are read and
/// set, and methods that are called with arguments. The host's boundary to the interpreter needs
/// no more of them than this.
///
/// A copy stands for the same object, as it does in scripts. Wrong arguments raise the scripting
/// exceptions, and then nothing is changed.
class KTSOVUGEOM_API annC_InterfaceObj : public omu_InterfaceObj {
  public:
    using Result = std::unique_ptr<omu_Primitive>;

    /// The names of the members and of the methods.
    [[nodiscard]] virtual cow_List<cow_String> MemberNames() const = 0;
    [[nodiscard]] virtual cow_List<cow_String> MethodNames() const = 0;
    /// The value of `member`. A name that is none raises `omu_AttributeErrorException`.
    [[nodiscard]] virtual Result GetMember(const cow_String& member) const = 0;
    /// Sets `member` as the method "setValues" does. A name that is none raises
    /// `omu_AttributeErrorException`.
    virtual void SetMember(const cow_String& member, const omu_Primitive& value) = 0;
    /// Calls `method`; null is the interpreter's None. A name that is none raises
    /// `omu_AttributeErrorException`.
    virtual Result Call(const cow_String& method, omu_Arguments& arguments) = 0;
    /// A line or more for a user who asks what the object is; "Empty Summary" when there is nothing
    /// to tell.
    [[nodiscard]] virtual cow_String Summary() const = 0;

    /// The type name of an annotation of class `classId`: "Arrow", "Text", "Annotation" for other
    /// classes of this module and "UNKNOWN TYPE" for those of others.
    [[nodiscard]] static cow_String TypeNameOf(std::uint32_t classId);

  protected:
    static constexpr const char* kEmptySummary = "Empty Summary";

    [[noreturn]] void RaiseNoSuchMember(const cow_String& member) const;
};
