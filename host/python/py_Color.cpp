#include "foundation/coreutils/atr_String.h"
#include "g3d/g3d_ColorMap.h"
#include "host/python/py_Values.h"
#include "omu/omu_RangeChecker.h"

namespace {

const cow_String kName = "name";
const cow_String kRed = "red";
const cow_String kGreen = "green";
const cow_String kBlue = "blue";
const cow_String kHue = "hue";
const cow_String kSaturation = "saturation";
const cow_String kValue = "value";
const cow_String kColor = "color";
const cow_String kWeight = "weight";

constexpr int kMaxChannel = 65535;

using ColorClass = py_Class<g3d_Color>;

py_Result New(omu_Arguments& arguments) {
    cow_String name;
    arguments.Get(name, kName);
    if (arguments.Error()) return {};
    return py_Return(g3d_ColorMap::Instance().Lookup(name));
}

py_Result FromRgb(omu_Arguments& arguments) {
    int channels[3] = {};
    const cow_String* const names[] = {&kRed, &kGreen, &kBlue};
    for (int i = 0; i < 3; ++i) arguments.Get(channels[i], *names[i]);
    if (arguments.Error()) return {};
    unsigned short rgb[3];
    for (int i = 0; i < 3; ++i) {
        omu_RangeChecker::CheckInRange(*names[i], 0, true, channels[i], kMaxChannel, true);
        rgb[i] = static_cast<unsigned short>(channels[i]);
    }
    return py_Return(g3d_Color::FromRGB(rgb));
}

py_Result FromHsv(omu_Arguments& arguments) {
    double fractions[3] = {};
    const cow_String* const names[] = {&kHue, &kSaturation, &kValue};
    for (int i = 0; i < 3; ++i) arguments.Get(fractions[i], *names[i]);
    if (arguments.Error()) return {};
    float hsv[3];
    for (int i = 0; i < 3; ++i) {
        omu_RangeChecker::CheckInRange(*names[i], 0.0, true, fractions[i], 1.0, true);
        hsv[i] = static_cast<float>(fractions[i]);
    }
    return py_Return(g3d_Color::FromHSV(hsv));
}

py_Result Distance(const g3d_Color& self, omu_Arguments& arguments) {
    g3d_Color color;
    arguments.Get(color, kColor);
    if (arguments.Error()) return {};
    return py_Return(static_cast<double>(self.Distance(color)));
}

py_Result Mixed(const g3d_Color& self, omu_Arguments& arguments) {
    g3d_Color color;
    double weight = 0.5;
    arguments.Get(color, kColor);
    arguments.Optional();
    arguments.Get(weight, kWeight);
    if (arguments.Error()) return {};
    omu_RangeChecker::CheckInRange(kWeight, 0.0, true, weight, 1.0, true);
    return py_Return(
        g3d_Color::Mix(self, static_cast<float>(1 - weight), color, static_cast<float>(weight)));
}

template <int index>
int Channel(const g3d_Color& color) {
    unsigned short rgb[3];
    return color.RGB(rgb)[index];
}

cow_List<double> Hsv(const g3d_Color& color) {
    float hsv[3];
    color.HSV(hsv);
    cow_List<double> fractions;
    for (const float fraction : hsv) fractions.Append(fraction);
    return fractions;
}

py_Result ColorNames(omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    cow_List<cow_String> names;
    for (const atr_String& name : g3d_ColorMap::Instance().Names()) names.Append(name.Text());
    return py_Return(names);
}

PyMethodDef kMethods[] = {
    ColorClass::StaticMethod<&FromRgb>("fromRGB",
                                       "fromRGB(red, green, blue)\n--\n\n"
                                       "Returns the colour of three channels from 0 to "
                                       "65535."),
    ColorClass::StaticMethod<&FromHsv>("fromHSV",
                                       "fromHSV(hue, saturation, value)\n--\n\n"
                                       "Returns the colour of three fractions from 0 to "
                                       "1."),
    ColorClass::Method<&Distance>("distance",
                                  "distance($self, color)\n--\n\n"
                                  "Returns how far the colours are apart, 0 to 3."),
    ColorClass::Method<&Mixed>("mixed",
                               "mixed($self, color, weight=0.5)\n--\n\n"
                               "Returns the mixture with another colour, whose weight is "
                               "0 to 1."),
    {},
};

PyGetSetDef kAttributes[] = {
    ColorClass::Attribute<&Channel<0>>("red", "the red channel, 0 to 65535"),
    ColorClass::Attribute<&Channel<1>>("green", "the green channel, 0 to 65535"),
    ColorClass::Attribute<&Channel<2>>("blue", "the blue channel, 0 to 65535"),
    ColorClass::Attribute<&Hsv>("hsv", "hue, saturation and value, 0 to 1"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc,
     const_cast<char*>("Color(name)\n--\n\n"
                       "The colour of a name that ktsovu.colorNames() lists. Other names "
                       "raise ColorError.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    ColorClass::Constructor<&New>(),
    {},
};

PyMethodDef kFunctions[] = {
    py_Function<&ColorNames>("colorNames",
                             "colorNames($module)\n--\n\n"
                             "Returns the names of the colours, in their order."),
    {},
};

}  // namespace

cow_String py_ValueTraits<g3d_Color>::Text(const g3d_Color& color) {
    return atr("Color.fromRGB(%d, %d, %d)", Channel<0>(color), Channel<1>(color),
               Channel<2>(color));
}

void py_AddColor(PyObject* module) {
    ColorClass::Add<&New>(module, slots);
    if (PyModule_AddFunctions(module, kFunctions) < 0) throw py_PythonError();
}
