#pragma once

#include "foundation/coreutils/typ_ArchCompTable.h"
#include "gsl/gsl_Dot.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_StLine.h"
#include "omu/omu_xoObjVarray.h"

template <>
struct omu_xoObjVarrayTraits<gsl_Plane> {
    static constexpr const char* kClassName = "gsl_PlaneArray";
    static constexpr std::uint32_t kTypeId = typ_TypeId(778, 13);
    static cls_Uid IdentityOf(const gsl_Plane&) noexcept { return {}; }
};

template <>
struct omu_xoObjVarrayTraits<gsl_StLine> {
    static constexpr const char* kClassName = "gsl_LineArray";
    static constexpr std::uint32_t kTypeId = typ_TypeId(778, 10);
    static cls_Uid IdentityOf(const gsl_StLine&) noexcept { return {}; }
};

/// Dots have identities of their own, and their records carry them.
template <>
struct omu_xoObjVarrayTraits<gsl_Dot> {
    static constexpr const char* kClassName = "gsl_DotArray";
    static constexpr std::uint32_t kTypeId = typ_TypeId(778, 14);
    static cls_Uid IdentityOf(const gsl_Dot& dot) noexcept { return dot.GetUid(); }
};

/// The archivable arrays of the geometry kernel.
using gsl_PlaneArray = omu_xoObjVarray<gsl_Plane>;
using gsl_LineArray = omu_xoObjVarray<gsl_StLine>;
using gsl_DotArray = omu_xoObjVarray<gsl_Dot>;
