#pragma once

#include "g3d/g3d_Camera.h"
#include "omu/omu_PrimEnum.h"

/// The ready views of a camera by the names that scripts use.
template <>
struct omu_PrimEnumNames<g3d_SavedViewIdEnum, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"FRONT", g3d_VIEW_FRONT},
                                                 {"BACK", g3d_VIEW_BACK},
                                                 {"TOP", g3d_VIEW_TOP},
                                                 {"BOTTOM", g3d_VIEW_BOTTOM},
                                                 {"RIGHT", g3d_VIEW_RIGHT},
                                                 {"LEFT", g3d_VIEW_LEFT},
                                                 {"ISOMETRIC", g3d_VIEW_ISOMETRIC},
                                                 {}};
};

using py_ViewConstant = omu_PrimEnum<g3d_SavedViewIdEnum, 1>;
