#pragma once

#include <concepts>
#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_ClassMetadata.h"
#include "mdl/mdl_1DArray.h"
#include "mdl/mdl_JaggedArray.h"
#include "mdl/mdl_PropagationStatus.h"

/// What archives know of the attribute of one type of value.
struct mdl_PropClass {
    const char* name;
    std::uint32_t typeId;
    int valueKind;  ///< a `cls_KindEnm`
    cls_CollectionType collectionType = cls_NO_COLLECTION;
    std::uint32_t objectClass = 0;  ///< of a value that is an object, or of its elements
};

template <class V>
extern const mdl_PropClass mdl_PropClassOf;
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<bool>{"mdl_PropBool", typ_TypeId(10, 15),
                                                     cls_KIND_BOOL};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<int>{"mdl_PropInt", typ_TypeId(10, 16),
                                                    cls_KIND_INT};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<double>{"mdl_PropDouble", typ_TypeId(10, 17),
                                                       cls_KIND_DOUBLE};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<cow_String>{"mdl_PropString", typ_TypeId(10, 18),
                                                           cls_KIND_STRING};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<cow_List<int>>{"mdl_PropListInt", typ_TypeId(10, 19),
                                                              cls_KIND_COLLECTION, cls_LIST_INT};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<cow_List<cow_String>>{
    "mdl_PropListString", typ_TypeId(10, 20), cls_KIND_COLLECTION, cls_LIST_STRING};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<mdl_1DArray<int>>{
    "mdl_Prop1DArrayInt", typ_TypeId(10, 21), cls_KIND_COLLECTION, cls_ALT_LIST_INT};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<mdl_JaggedArray>{
    "mdl_Prop1DArrayListFloat", typ_TypeId(10, 22), cls_KIND_EMBEDDED_OBJ, cls_NO_COLLECTION,
    mdl_JaggedArray::TypeId()};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<cow_List<mdl_JaggedArray>>{
    "mdl_PropList1DArrayListFloat", typ_TypeId(10, 23), cls_KIND_COLLECTION, cls_LIST_OBJ,
    mdl_JaggedArray::TypeId()};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<mdl_1DArray<bool>>{
    "mdl_PropBoolArray", typ_TypeId(10, 24), cls_KIND_COLLECTION, cls_ALT_LIST_BOOL};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<mdl_1DArray<cow_String>>{
    "mdl_PropStringArray", typ_TypeId(10, 25), cls_KIND_COLLECTION, cls_ALT_LIST_STRING};
template <>
inline constexpr mdl_PropClass mdl_PropClassOf<mdl_1DArray<double>>{
    "mdl_PropDoubleArray", typ_TypeId(10, 26), cls_KIND_COLLECTION, cls_ALT_LIST_DOUBLE};

/// An attribute of a model object: a value and the state that tells what stands behind it.
///
/// The value can be read in every state and is `V()` in those in which there is none (all but
/// `mdl_UNCHANGED`, `mdl_ABS_DEFAULT` and `mdl_COMP_DEFAULT`); it cannot be written past the state.
/// A copy shares what the value shares. Attributes belong to one thread at a time.
template <class V>
class mdl_PropAttr {
  public:
    /// No value: `mdl_UNSET`.
    mdl_PropAttr() = default;
    /// The given value: `mdl_UNCHANGED`.
    explicit mdl_PropAttr(const V& given) : value(given), state(mdl_UNCHANGED) {}
    /// (No pointer becomes a truth value.)
    explicit mdl_PropAttr(const void*) requires std::same_as<V, bool>
    = delete;
    /// Reads the record of an attribute. A state that the record does not name becomes
    /// `mdl_INVALID`, with a line on standard error; a value that the state has no room for is
    /// dropped.
    explicit mdl_PropAttr(cls_ReadVisitor& visitor);

    [[nodiscard]] const V& ConstGetValue() const noexcept { return value; }
    [[nodiscard]] mdl_PropStateEnm State() const noexcept { return state; }
    [[nodiscard]] bool HasValue() const noexcept { return mdl_HasValue(state); }
    /// Takes the value: `mdl_UNCHANGED`.
    void SetValue(const V& given) {
        value = given;
        state = mdl_UNCHANGED;
    }
    void SetValue(const void*) requires std::same_as<V, bool>
    = delete;

    /// Follows the propagation of the object that the attribute belongs to into the next step.
    /// `acceptsDerived` tells whether the step may derive from a base state, modes, a frequency
    /// extraction or a computation:
    ///
    ///     status                                          accepted     state and value then
    ///     NOT_YET_ACTIVE                                  always       UNSET, none
    ///     CREATED, PROPAGATED, MODIFIED                   always       UNCHANGED, kept
    ///     DEACTIVATED, NO_LONGER_ACTIVE                   always       FREED, none
    ///     TYPE_NOT_APPLICABLE, INSTANCE_NOT_APPLICABLE    always       NOT_APPLICABLE, none
    ///     RESET_TO_INITIAL                                always       ABS_DEFAULT, kept
    ///     BUILT_INTO_BASE_STATE, BUILT_INTO_MODES         if derived   UNCHANGED, kept
    ///     PROPAGATED_FROM_BASE_STATE, _COMPUTED and
    ///         _FREQUENCY, MODIFIED_FROM_BASE_STATE        if derived   UNCHANGED, kept
    ///     DEACTIVATED_FROM_BASE_STATE                     if derived   FREED, none
    ///     COMPUTED                                        if derived   COMP_DEFAULT, kept
    ///
    /// A status that keeps the value is refused where there is none, and so is a number that no
    /// status has: `nex_PrimException` with the translated message, which names the attribute by
    /// `name`; value and state stay as they were.
    void SetStatus(const cow_String& name, mdl_PropagationStatusEnm status, bool acceptsDerived);

    /// True when state and value are equal (a NaN is not equal to itself).
    friend bool operator==(const mdl_PropAttr& a, const mdl_PropAttr& b) {
        return a.state == b.state && a.value == b.value;
    }

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept {
        return mdl_PropClassOf<V>.typeId;
    }
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept { return TypeId(); }
    /// Reads an attribute from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor) { return new mdl_PropAttr(visitor); }
    /// Destroys what `Ctor` built.
    static void CowDtor(void* attribute) { delete static_cast<mdl_PropAttr*>(attribute); }
    /// Writes "val" and "state", the name of the state.
    void DBWrite(cls_WriteVisitor& visitor) const;
    /// Describes the class. Those of bool, double, text and jagged arrays describe also the class
    /// of the array or list of such values, so that one registration serves for both.
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    V value{};
    mdl_PropStateEnm state = mdl_UNSET;
};

using mdl_PropBool = mdl_PropAttr<bool>;
using mdl_PropInt = mdl_PropAttr<int>;
using mdl_PropDouble = mdl_PropAttr<double>;
using mdl_PropString = mdl_PropAttr<cow_String>;
using mdl_PropListInt = mdl_PropAttr<cow_List<int>>;
using mdl_PropListString = mdl_PropAttr<cow_List<cow_String>>;
using mdl_Prop1DArrayInt = mdl_PropAttr<mdl_1DArray<int>>;
using mdl_Prop1DArrayListFloat = mdl_PropAttr<mdl_JaggedArray>;
using mdl_PropList1DArrayListFloat = mdl_PropAttr<cow_List<mdl_JaggedArray>>;
using mdl_PropBoolArray = mdl_PropAttr<mdl_1DArray<bool>>;
using mdl_PropStringArray = mdl_PropAttr<mdl_1DArray<cow_String>>;
using mdl_PropDoubleArray = mdl_PropAttr<mdl_1DArray<double>>;

extern template class KTSOVUGEOM_API mdl_PropAttr<bool>;
extern template class KTSOVUGEOM_API mdl_PropAttr<int>;
extern template class KTSOVUGEOM_API mdl_PropAttr<double>;
extern template class KTSOVUGEOM_API mdl_PropAttr<cow_String>;
extern template class KTSOVUGEOM_API mdl_PropAttr<cow_List<int>>;
extern template class KTSOVUGEOM_API mdl_PropAttr<cow_List<cow_String>>;
extern template class KTSOVUGEOM_API mdl_PropAttr<mdl_1DArray<int>>;
extern template class KTSOVUGEOM_API mdl_PropAttr<mdl_JaggedArray>;
extern template class KTSOVUGEOM_API mdl_PropAttr<cow_List<mdl_JaggedArray>>;
extern template class KTSOVUGEOM_API mdl_PropAttr<mdl_1DArray<bool>>;
extern template class KTSOVUGEOM_API mdl_PropAttr<mdl_1DArray<cow_String>>;
extern template class KTSOVUGEOM_API mdl_PropAttr<mdl_1DArray<double>>;
