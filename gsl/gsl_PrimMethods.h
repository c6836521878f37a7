#pragma once

#include "gsl/gsl_Dot.h"
#include "omu/omu_PrimEnum.h"

/// How a direction and a line came to be, by numbers that the application gives.
enum gsl_DirMethod : int {};
enum gsl_LineMethod : int {};

/// Scripts have no names for the methods, so their primitives permit no value and hold 0.
template <>
struct omu_PrimEnumNames<gsl_DotMethod, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{}};
};
template <>
struct omu_PrimEnumNames<gsl_DirMethod, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{}};
};
template <>
struct omu_PrimEnumNames<gsl_LineMethod, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{}};
};

using gsl_PrimDotMethod = omu_PrimEnum<gsl_DotMethod, 1>;
using gsl_PrimDirMethod = omu_PrimEnum<gsl_DirMethod, 1>;
using gsl_PrimLineMethod = omu_PrimEnum<gsl_LineMethod, 1>;
