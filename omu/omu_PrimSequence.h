#pragma once

#include <functional>

#include "cow/cow_List.h"
#include "omu/omu_Primitive.h"

/// An ordered collection of primitives: a tuple, a list or an array. Elements are numbered from 0
/// to `Length()` - 1; none counts from the end.
class KTSOVUGEOM_API omu_PrimSequence : public omu_Primitive {
  public:
    /// Takes one element and its index; answers whether to go on.
    using ElementUse = std::function<bool(const omu_Primitive& element, int index)>;

    [[nodiscard]] virtual int Length() const noexcept = 0;
    /// The element at `index`, which stays the sequence's: valid until the sequence is written,
    /// assigned or destroyed. Raises `omu_ValueErrorException` when there is none; never null.
    [[nodiscard]] virtual const omu_Primitive* Index(int index) const = 0;
    /// Calls `use` for the elements in order until it answers false; true when it never did. An
    /// element is valid during the call. The way to walk arrays, which keep no element objects.
    virtual bool ForEachElement(const ElementUse& use) const = 0;
    /// All elements: those of a tuple or list shared with it, those of an array made anew.
    [[nodiscard]] virtual cow_List<omu_PrimHandle> Elements() const = 0;

    /// The elements from `first` up to but not including `last`, both clamped to the sequence, as a
    /// new sequence of the same kind, owned by the caller.
    [[nodiscard]] virtual omu_PrimSequence* Slice(int first, int last) const = 0;
    /// These elements and then those of `other` as a new sequence of this kind, owned by the
    /// caller. What cannot be joined or would nest too deep or be too large raises
    /// `omu_ValueErrorException`.
    [[nodiscard]] virtual omu_PrimSequence* Concat(const omu_PrimSequence& other) const = 0;
    /// The elements `count` times over as a new sequence of this kind, owned by the caller; none
    /// when `count` is 0 or less. What would be too large raises `omu_ValueErrorException` before
    /// anything is built.
    [[nodiscard]] virtual omu_PrimSequence* Repeat(int count) const = 0;

    /// "PrimSequence" unless the kind has its own.
    [[nodiscard]] cow_String TypeString() const override;
    [[nodiscard]] omu_PrimSequence* Copy() const override = 0;

    /// 19:37.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 37);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    using omu_Primitive::omu_Primitive;
    omu_PrimSequence(const omu_PrimSequence&) = default;
    omu_PrimSequence& operator=(const omu_PrimSequence&) = default;
};
