/* The colour functions and the camera switch as a C program sees them. */

#include "g3d/g3d_CameraC.h"
#include "g3d/g3d_ColorC.h"

/* Calls every function; returns the number of the first one with a wrong result, else 0. */
int g3d_ColorC_CallAllFromC(void) {
    const unsigned short red[3] = {65535, 0, 0};
    const unsigned short blue[3] = {0, 0, 65535};
    unsigned short rgb[3];
    float hsv[3];
    if (PctToRGB(rgb, 0.7f, 0.9f, 0.1f) != rgb || rgb[0] != 45875 || rgb[1] != 58982) return 1;
    if (PctToHSV(hsv, 2.0f, -1.0f, 0.5f) != hsv || hsv[0] != 1.0f || hsv[1] != -1.0f) return 2;
    if (RGBToHSV(hsv, blue) != hsv || hsv[0] != 4.0f / 6.0f || hsv[1] != 1.0f) return 3;
    if (HSVToRGB(rgb, hsv) != rgb || rgb[2] != 65535 || rgb[0] != 0) return 4;
    if (RGBToCMY(rgb, red) != rgb || rgb[0] != 0 || rgb[1] != 65535) return 5;
    if (CMYToRGB(rgb, rgb) != rgb || rgb[0] != 65535 || rgb[1] != 0) return 6;
    if (MixRGB(rgb, red, 0.5f, blue, 0.25f) != rgb || rgb[0] != 32767 || rgb[2] != 16383) return 7;
    if (MixHSV(rgb, red, 1.0f, blue, 0.0f) != rgb || rgb[0] != 0 || rgb[1] != 65535) return 8;
    if (RGBDist(red, blue) != 2.0f) return 9;
    g3d_Camera_SetTargetRotate(true);
    return 0;
}
