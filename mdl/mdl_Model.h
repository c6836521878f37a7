#pragma once

#include "omu/omu_PrimEnum.h"

/// The vocabulary by which scripts address a model.
class mdl_Model {
  public:
    /// Which field of the waves a loading is computed from.
    enum FormulationEnm : int { NOT_SET = 0, SCATTERED = 1, TOTAL = 2 };
    /// A restart increment that is no number.
    enum RestartIncEnm : int { STEP_END = -2 };
};

/// The solvers that a model is made for.
enum mdl_ModelTypeEnm : int {
    mdl_STANDARD_EXPLICIT = 1,
    mdl_CFD = 2,
    mdl_EMAG = 4,
};

template <>
struct omu_PrimEnumNames<mdl_Model::FormulationEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {
        {"NOT_SET", 0}, {"SCATTERED", 1}, {"TOTAL", 2}, {}};
};

template <>
struct omu_PrimEnumNames<mdl_Model::RestartIncEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"STEP_END", -2}, {}};
};

template <>
struct omu_PrimEnumNames<mdl_ModelTypeEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {
        {"STANDARD_EXPLICIT", 1}, {"CFD", 2}, {"EMAG", 4}, {}};
};

using mdl_PrimFormulation = omu_PrimEnum<mdl_Model::FormulationEnm, 1>;
using mdl_PrimRestartInc = omu_PrimEnum<mdl_Model::RestartIncEnm, 1>;
using mdl_PrimModelType = omu_PrimEnum<mdl_ModelTypeEnm, 1>;
