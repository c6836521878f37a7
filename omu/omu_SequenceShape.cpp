#include "omu/detail/omu_SequenceShape.h"

#include "foundation/coreutils/atr_String.h"
#include "omu/detail/omu_TracePrimArray.h"
#include "omu/omu_PrimArray.h"

namespace {

using Extents = std::vector<int>;

omu_PrimNumber::DataTypeEnm ElementTypeOf(omu_PrimNumber::DataTypeEnm type) {
    return type == omu_PrimNumber::FLOAT || type == omu_PrimNumber::DOUBLE ? type
                                                                           : omu_PrimNumber::INT;
}

/// Walks nested sequences depth first and stops at the first fault.
class ShapeFinder {
  public:
    explicit ShapeFinder(omu_SequenceShape& found) : shape(found) {}

    /// Puts the extents of `sequence` behind each other into `extents`; false at a fault.
    bool Visit(const omu_PrimSequence& sequence, Extents& extents) {
        if (sequence.IsType(omu_PrimTag::kArray)) {
            VisitArray(static_cast<const omu_PrimArray&>(sequence), extents);
            return true;
        }
        Extents first;
        Extents other;
        const auto visitChild = [&](const omu_Primitive& child, int i) {
            Extents& ofChild = i == 0 ? first : other;
            ofChild.clear();
            return VisitChild(child, i, ofChild) && (i == 0 || AreSame(first, other, i));
        };
        if (!sequence.ForEachElement(visitChild)) return false;
        extents.push_back(sequence.Length());
        extents.insert(extents.end(), first.begin(), first.end());
        return true;
    }
    [[nodiscard]] const cow_String& Fault() const noexcept { return fault; }

  private:
    bool VisitChild(const omu_Primitive& child, int i, Extents& extents) {
        if (const omu_PrimNumber* const number = omu_NumberIn(child)) {
            Widen(number->DataType(), i);
            return true;
        }
        const auto* const sequence = dynamic_cast<const omu_PrimSequence*>(&child);
        if (sequence) return Visit(*sequence, extents);
        fault = "Child not PrimSequence or PrimNumber";
        return false;
    }

    void VisitArray(const omu_PrimArray& array, Extents& extents) {
        for (const int extent : array.ConstGetExtents()) extents.push_back(extent);
        if (extents.empty()) extents.push_back(0);  // without dimensions: as an empty tuple
        if (array.ConstGetNumElements() > 0) Widen(array.ConstGetPrimNumberType(), 0);
    }

    bool AreSame(const Extents& first, const Extents& other, int i) {
        if (first.size() != other.size()) {
            fault = atr("different num dims in child. nd=%1$d, ndTemp=%2$d, i=%3$d", first.size(),
                        other.size(), i);
            return false;
        }
        const auto difference = std::mismatch(other.begin(), other.end(), first.begin());
        if (difference.first == other.end()) return true;
        fault = atr("different dims in child. dimThis=%1$d, j=%2$d", *difference.first,
                    difference.first - other.begin());
        return false;
    }

    /// Takes the type of number `i` of an innermost sequence into account.
    void Widen(omu_PrimNumber::DataTypeEnm typeOfNumber, int i) {
        constexpr int dimensions = 1;
        const omu_PrimNumber::DataTypeEnm type = ElementTypeOf(typeOfNumber);
        if (!shape.hasNumbers) {
            shape.hasNumbers = true;
            shape.type = type;
            omu_TracePrimArray("getDimensionsFromSequence() nd=%d, i=%d, tc set to %s\n",
                               dimensions, i, omu_PrimArray::typeCode2string(type));
        } else if (omu_WiderType(shape.type, type) != shape.type) {
            shape.type = type;
            omu_TracePrimArray("    getDimensionsFromSequence() tc changed to %s\n",
                               omu_PrimArray::typeCode2string(type));
        }
    }

    omu_SequenceShape& shape;
    cow_String fault;
};

}  // namespace

cow_String getDimensionsFromSequence(const omu_PrimSequence& sequence, omu_SequenceShape& shape) {
    ShapeFinder finder(shape);
    return finder.Visit(sequence, shape.extents) ? cow_String() : finder.Fault();
}
