#pragma once

/// The data types of engineering quantities, by the number that callers and archives keep. Numbers
/// not named here belong to other components.
enum res_DataTypeEnm : int {
    res_QUATERNION_2D = 6,
    res_QUATERNION_3D = 7,
    res_TENSOR_2D_PLANAR = 12,
    res_TENSOR_2D_SURFACE = 13,
};
