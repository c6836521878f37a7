#pragma once

#include "omu/omu_PrimTuple.h"

/// A sequence of any primitives that can be changed, tag `[`.
///
/// What is added by reference is copied, what is added by pointer is taken over (also when that
/// raises; null raises `omu_GenericTypeErrorException`). A list added to itself adds itself as it
/// was, so that no value contains itself. A change beyond what `omu_PrimNesting` allows raises
/// `omu_ValueErrorException`; every change that raises leaves the list as it was. Copies share the
/// elements until one is changed. The list never equals a tuple.
class KTSOVUGEOM_API omu_PrimList : public omu_PrimTuple {
  public:
    /// The empty list.
    omu_PrimList() : omu_PrimList(cow_List<omu_PrimHandle>()) {}
    /// The list of `elements`. A null one raises `omu_GenericTypeErrorException`.
    explicit omu_PrimList(const cow_List<omu_PrimHandle>& elements)
        : omu_PrimTuple(omu_PrimTag::kList, elements) {}
    /// The elements of any sequence.
    explicit omu_PrimList(const omu_PrimSequence& sequence) : omu_PrimList(sequence.Elements()) {}
    /// Reads the record of a list.
    explicit omu_PrimList(cls_ReadVisitor& visitor);
    omu_PrimList(const omu_PrimList& other) : omu_PrimTuple(omu_PrimTag::kList, other) {}
    omu_PrimList& operator=(const omu_PrimList&) = default;

    void Append(const omu_Primitive& value) { Insert(Length(), value); }
    void Append(omu_Primitive* adopted) { Insert(Length(), adopted); }
    /// Adds a value in front of the element at `index`, at the end when it is `Length()`; any other
    /// index raises "List Index returned NULL".
    void Insert(int index, const omu_Primitive& value);
    void Insert(int index, omu_Primitive* adopted);
    /// Replaces the element at `index`; raises as `Index` when there is none.
    void Set(int index, const omu_Primitive& value);
    void Set(int index, omu_Primitive* adopted);
    /// Removes the element at `index`; raises as `Index` when there is none.
    void Remove(int index) { RemoveElement(index); }

    [[nodiscard]] omu_PrimList* Slice(int first, int last) const override;
    [[nodiscard]] omu_PrimList* Concat(const omu_PrimSequence& other) const override;
    [[nodiscard]] omu_PrimList* Repeat(int count) const override;

    /// "list".
    [[nodiscard]] cow_String TypeString() const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimList* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes the tuple that the list is.
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:39.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 39);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};
