#pragma once

#include "foundation/basicutils/omn_FixedString.h"
#include "omu/omu_PrimEnum.h"

/// The vocabulary by which scripts address a model: its enumerations, and for each attribute the
/// command's accessor and the name that scripts use.
class mdl_Model {
  public:
    /// Which field of the waves a loading is computed from.
    enum FormulationEnm : int { NOT_SET = 0, SCATTERED = 1, TOTAL = 2 };
    /// A restart increment that is no number.
    enum RestartIncEnm : int { STEP_END = -2 };

    [[nodiscard]] static constexpr omn_FixedString absoluteZeroCmd() noexcept {
        return "absoluteZero";
    }
    [[nodiscard]] static constexpr omn_FixedString aquaAnalysisCmd() noexcept {
        return "aquaAnalysis";
    }
    [[nodiscard]] static constexpr omn_FixedString copyConnectorsCmd() noexcept {
        return "copyConnectors";
    }
    [[nodiscard]] static constexpr omn_FixedString copyConstraintsCmd() noexcept {
        return "copyConstraints";
    }
    [[nodiscard]] static constexpr omn_FixedString copyInteractionsCmd() noexcept {
        return "copyInteractions";
    }
    [[nodiscard]] static constexpr omn_FixedString descriptionCmd() noexcept {
        return "description";
    }
    [[nodiscard]] static constexpr omn_FixedString endRestartStepCmd() noexcept {
        return "endRestartStep";
    }
    [[nodiscard]] static constexpr omn_FixedString fluidMassDensityCmd() noexcept {
        return "fluidMassDensity";
    }
    [[nodiscard]] static constexpr omn_FixedString globalJobCmd() noexcept { return "globalJob"; }
    [[nodiscard]] static constexpr omn_FixedString gravitationalConstantCmd() noexcept {
        return "gravitationalConstant";
    }
    [[nodiscard]] static constexpr omn_FixedString keywordBlockCmd() noexcept {
        return "keywordBlock";
    }
    [[nodiscard]] static constexpr omn_FixedString lastChangedCountCmd() noexcept {
        return "lastChangedCount";
    }
    [[nodiscard]] static constexpr omn_FixedString modelTypeCmd() noexcept { return "modelType"; }
    [[nodiscard]] static constexpr omn_FixedString nameCmd() noexcept { return "name"; }
    [[nodiscard]] static constexpr omn_FixedString restartIncrementCmd() noexcept {
        return "restartIncrement";
    }
    [[nodiscard]] static constexpr omn_FixedString restartJobCmd() noexcept { return "restartJob"; }
    [[nodiscard]] static constexpr omn_FixedString restartStepCmd() noexcept {
        return "restartStep";
    }
    [[nodiscard]] static constexpr omn_FixedString seabedElevationCmd() noexcept {
        return "seabedElevation";
    }
    [[nodiscard]] static constexpr omn_FixedString shellToSolidCmd() noexcept {
        return "shellToSolid";
    }
    [[nodiscard]] static constexpr omn_FixedString steadyCurrentDataCmd() noexcept {
        return "steadyCurrentData";
    }
    [[nodiscard]] static constexpr omn_FixedString stefanBoltzmannCmd() noexcept {
        return "stefanBoltzmann";
    }
    [[nodiscard]] static constexpr omn_FixedString stillFluidSurfaceElevationCmd() noexcept {
        return "stillFluidSurfaceElevation";
    }
    [[nodiscard]] static constexpr omn_FixedString universalGasCmd() noexcept {
        return "universalGas";
    }
    [[nodiscard]] static constexpr omn_FixedString waveFormulationCmd() noexcept {
        return "waveFormulation";
    }

    /// The settings of what the solver prints.
    ///
    /// Kept: the four names begin with an underscore ("_contactPrint"), where one would have
    /// expected "contactPrint" beside the others; scripts and recorded journals use them so.
    [[nodiscard]] static constexpr omn_FixedString contactPrintCmd() noexcept {
        return "_contactPrint";
    }
    [[nodiscard]] static constexpr omn_FixedString echoPrintCmd() noexcept { return "_echoPrint"; }
    [[nodiscard]] static constexpr omn_FixedString historyPrintCmd() noexcept {
        return "_historyPrint";
    }
    [[nodiscard]] static constexpr omn_FixedString modelPrintCmd() noexcept {
        return "_modelPrint";
    }

    /// The form of the solver's input file.
    ///
    /// Kept: the name is "noPartsInputFile", where one would have expected "solverVersion"; scripts
    /// know the attribute by the older name.
    [[nodiscard]] static constexpr omn_FixedString solverVersionCmd() noexcept {
        return "noPartsInputFile";
    }
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
