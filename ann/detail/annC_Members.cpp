#include "ann/detail/annC_Members.h"

#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_ViewportAnchor.h"

bool omu_Convert(const omu_Primitive& value, annC_Point2D& out) {
    cow_List<double> numbers;
    if (!omu_Convert(value, numbers) || numbers.Length() != 2) return false;
    out = {numbers[0], numbers[1]};
    return true;
}

bool omu_Convert(const omu_Primitive& value, annC_AnchorArgument& out, omu_TypeFault& fault) {
    annC_PrimRelativePosition position;
    cow_List<double> numbers;
    if (omu_Convert(value, position)) {
        out.anchor = std::make_unique<annC_NamedAnchor>(position.Enumerator());
        return true;
    }
    if (omu_Convert(value, numbers) && numbers.Length() == 3) {
        out.anchor = std::make_unique<annC_Point3DAnchor>(numbers[0], numbers[1], numbers[2]);
        return true;
    }
    if (numbers.Length() == 2) {
        out.anchor = std::make_unique<annC_ViewportAnchor>(numbers[0], numbers[1]);
        return true;
    }
    fault = {value.TypeString(), position.TypeString(), {}};
    return false;
}

bool omu_Convert(const omu_Primitive&, annC_GivenArgument& out, omu_TypeFault&) {
    out.isGiven = true;
    return true;
}

annC_InterfaceObj::Result annC_PointPrim(const annC_Point2D& point) {
    return omu_NewPrimitive(cow_List<double>(point.x, point.y));
}

annC_InterfaceObj::Result annC_AnchorPrim(const annC_Anchor& anchor) {
    if (const auto* named = dynamic_cast<const annC_NamedAnchor*>(&anchor)) {
        return omu_NewPrimitive(annC_PrimRelativePosition(named->GetPosition()));
    }
    if (const auto* point = dynamic_cast<const annC_Point3DAnchor*>(&anchor)) {
        return omu_NewPrimitive(cow_List<double>(point->GetX(), point->GetY(), point->GetZ()));
    }
    const auto& place = dynamic_cast<const annC_ViewportAnchor&>(anchor);
    return omu_NewPrimitive(cow_List<double>(place.GetX(), place.GetY()));
}
