#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_CountedHld.h"
#include "foundation/alloc/mem_Alloc.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_Uid.h"
#include "omu/omu_PrimNesting.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class omu_PrimVisitor;

/// The type tags, one a kind. Every constructor of a kind writes its tag.
namespace omu_PrimTag {
inline constexpr char kInt = 'i';
inline constexpr char kFloat = 'f';
inline constexpr char kBoolean = 'b';
inline constexpr char kComplex = 'x';
inline constexpr char kString = 's';
inline constexpr char kTranslatedString = 'l';
inline constexpr char kNone = 'n';
inline constexpr char kEnum = 'c';
inline constexpr char kPath = 'p';
inline constexpr char kExpression = 'e';
inline constexpr char kType = 't';
inline constexpr char kWrapper = 'w';
inline constexpr char kPyObject = 'W';
inline constexpr char kException = 'E';
inline constexpr char kArray = 'o';
inline constexpr char kInterfaceObj = '<';
inline constexpr char kTuple = '(';
inline constexpr char kList = '[';
inline constexpr char kDictionary = '{';
}  // namespace omu_PrimTag

/// Every value that crosses between the application and the interpreter: a small copyable object
/// with a one-character type tag.
///
/// The tag is set by the constructor of the kind and never changes. The identity is unallocated,
/// and copies do not take one over, so that archives never take a value and its changed copy for
/// one object. Assignment changes neither. Values belong to one thread at a time.
///
/// The virtual operations stand in the order of their slots, which kinds defined elsewhere rely on.
class KTSOVUGEOM_API omu_Primitive {
  public:
    virtual ~omu_Primitive();
    /// The word for the kind in messages: "primitive" unless the kind has its own.
    [[nodiscard]] virtual cow_String TypeString() const;
    /// The display text. `flag` is handed on to elements; no kind of its own reads it.
    [[nodiscard]] virtual cow_String AsString(int flag) const = 0;
    /// The text that `repr` shows: `AsString(0)` unless the kind has its own.
    [[nodiscard]] virtual cow_String AsRepr() const;
    /// Equality of values within a kind; `==` between primitives of any kinds calls it.
    [[nodiscard]] virtual bool operator==(const omu_Primitive& other) const = 0;
    /// Calls the operation of `visitor` for the kind.
    virtual void Accept(omu_PrimVisitor* visitor) const = 0;
    /// A deep, independent copy of the same kind; new, owned by the caller.
    [[nodiscard]] virtual omu_Primitive* Copy() const = 0;
    /// The class id in archives.
    [[nodiscard]] virtual std::uint32_t TypeId() const;
    /// Writes the fields of the record; the base has none.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    /// How deep and large the value is; a scalar unless the kind holds primitives.
    [[nodiscard]] virtual omu_PrimNesting Nesting() const noexcept;

    [[nodiscard]] char Type() const noexcept { return tag; }
    [[nodiscard]] bool IsType(char wanted) const noexcept { return tag == wanted; }
    /// True when the class registrar says that the object's class is `classId` or inherits from it.
    [[nodiscard]] bool IsA(unsigned classId) const;
    [[nodiscard]] const cls_Uid& GetUid() const noexcept { return uid; }
    [[nodiscard]] bool operator!=(const omu_Primitive& other) const { return !operator==(other); }

    /// Primitives live in the small cells of the allocator, since every call makes several.
    static void* operator new(std::size_t bytes) { return mem_OperatorNewTinyThrow(bytes); }
    static void operator delete(void* primitive, std::size_t bytes) noexcept {
        mem_OperatorDeleteTiny(primitive, bytes);
    }

    /// 19:21.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 21);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    explicit omu_Primitive(char typeTag) noexcept : tag(typeTag) {}
    omu_Primitive(const omu_Primitive& other) noexcept : tag(other.tag) {}
    /// Leaves tag and identity as they are.
    omu_Primitive& operator=(const omu_Primitive&) noexcept { return *this; }

  private:
    const char tag;
    cls_Uid uid;
};

/// Equality of primitives of whatever kinds, by the virtual operation of the left one. (Without it
/// the members of two kinds would compete with each other's reversed forms.)
template <std::derived_from<omu_Primitive> A, std::derived_from<omu_Primitive> B>
[[nodiscard]] bool operator==(const A& a, const B& b) {
    return static_cast<const omu_Primitive&>(a).operator==(b);
}

/// A primitive shared by its holders, which only read it.
using omu_PrimHandle = cow_CountedHld<omu_Primitive>;
