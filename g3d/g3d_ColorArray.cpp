#include "g3d/g3d_ColorArray.h"

#include <algorithm>
#include <cstdint>

#include "foundation/basicutils/KTSBasOmniSSELevel.h"
#include "g3d/detail/g3d_Simd.h"
#include "g3d/g3d_ColorC.h"

// The bodies repeat the plain functions of g3d_ColorC.cpp operation by operation, all branches
// computed and selected by lane. Triples are taken apart into one array per component, a block at a
// time, so that vectors are loaded whole.

namespace {

constexpr std::size_t kBlock = 32;
constexpr float kFull = 65535;

template <class Number>
using Components = Number[3][kBlock];

// The three components are written out: compilers turn these loops into shuffles, a nested loop
// not.

template <class Number, class Packed>
G3D_KERNEL_BODY void TakeApart(Components<Number>& components, const Packed* triples) {
    for (std::size_t i = 0; i < kBlock; ++i) {
        components[0][i] = triples[3 * i];
        components[1][i] = triples[3 * i + 1];
        components[2][i] = triples[3 * i + 2];
    }
}

template <class Packed, class Number>
G3D_KERNEL_BODY void PutTogether(Packed* triples, const Components<Number>& components) {
    for (std::size_t i = 0; i < kBlock; ++i) {
        triples[3 * i] = static_cast<Packed>(components[0][i]);
        triples[3 * i + 1] = static_cast<Packed>(components[1][i]);
        triples[3 * i + 2] = static_cast<Packed>(components[2][i]);
    }
}

template <class Float>
G3D_KERNEL_BODY void AtMostOne(Float& x) {
    const Float one = Float{} + 1;
    x = x > one ? one : x;
}

/// NaN becomes 0.
template <class Float>
G3D_KERNEL_BODY void Limit(Float& x) {
    const Float zero{};
    AtMostOne(x);
    x = x > zero ? x : zero;
}

/// Stores the whole part in 32 bits, of which the channel is the low half.
template <class Lanes>
G3D_KERNEL_BODY void StoreChannels(std::int32_t* channels, const typename Lanes::Float& fractions) {
    using Float = typename Lanes::Float;
    constexpr float kBound = 2147483648.0f;
    const Float scaled = fractions * kFull + 0.5f;
    const Float least = Float{} - kBound;
    const Float bounded = scaled >= least ? scaled : least;
    g3d_Store(channels,
              __builtin_convertvector(bounded < -least ? bounded : least, typename Lanes::Int));
}

/// Converts lanes from `first` on; `hasResult` loses the lanes whose hue has none.
template <class Lanes>
G3D_KERNEL_BODY void HSVToRGBLanes(Components<std::int32_t>& rgb, const Components<float>& hsv,
                                   std::size_t first, typename Lanes::Int& hasResult) {
    using Float = typename Lanes::Float;
    using Int = typename Lanes::Int;
    const Float zero{};
    const Float one = zero + 1;
    Float hue, s, v;
    g3d_Load(hue, hsv[0] + first);
    g3d_Load(s, hsv[1] + first);
    g3d_Load(v, hsv[2] + first);
    Float grey = v;
    AtMostOne(grey);
    const Int isGrey = s == zero;
    Limit(s);
    Limit(v);
    const Float h6 = (hue >= one ? zero : hue) * 6;
    const Int hasSector = h6 > -one;
    hasResult &= isGrey | hasSector;
    const Int sector = __builtin_convertvector(hasSector ? h6 : zero, Int);
    const Float f = h6 - __builtin_convertvector(sector, Float);
    Float p = (1 - s) * v;
    Float q = (1 - s * f) * v;
    Float t = (1 - s * (1 - f)) * v;
    AtMostOne(p);
    AtMostOne(q);
    AtMostOne(t);
    const Int is0 = sector == 0;
    const Int is1 = sector == 1;
    const Int is2 = sector == 2;
    const Int is3 = sector == 3;
    const Int is4 = sector == 4;
    const Int is5 = sector >= 5;
    const Float red = (is0 | is5) ? v : (is1 ? q : (is4 ? t : p));
    const Float green = (is1 | is2) ? v : (is0 ? t : (is3 ? q : p));
    const Float blue = (is3 | is4) ? v : (is2 ? t : (is5 ? q : p));
    StoreChannels<Lanes>(rgb[0] + first, isGrey ? grey : red);
    StoreChannels<Lanes>(rgb[1] + first, isGrey ? grey : green);
    StoreChannels<Lanes>(rgb[2] + first, isGrey ? grey : blue);
}

template <class Lanes>
G3D_KERNEL_BODY void LoadFractions(typename Lanes::Float& fractions, const std::int32_t* channels) {
    typename Lanes::Int whole;
    g3d_Load(whole, channels);
    fractions = __builtin_convertvector(whole, typename Lanes::Float) / kFull;
}

template <class Lanes>
G3D_KERNEL_BODY void RGBToHSVLanes(Components<float>& hsv, const Components<std::int32_t>& rgb,
                                   std::size_t first) {
    using Float = typename Lanes::Float;
    const Float zero{};
    Float r, g, b;
    LoadFractions<Lanes>(r, rgb[0] + first);
    LoadFractions<Lanes>(g, rgb[1] + first);
    LoadFractions<Lanes>(b, rgb[2] + first);
    const Float greatest = r > g ? r : g;
    const Float least = r < g ? r : g;
    const Float value = greatest > b ? greatest : b;
    const Float d = value - (least < b ? least : b);
    const Float saturation = value == zero ? zero : d / value;
    const Float rc = (value - r) / d;
    const Float gc = (value - g) / d;
    const Float bc = (value - b) / d;
    Float hue = r == value ? bc - gc : (g == value ? 2 + rc - bc : 4 + gc - rc);
    hue = hue < zero ? hue + 6 : hue;
    hue = saturation == zero ? zero : hue / 6;
    g3d_Store(hsv[0] + first, hue);
    g3d_Store(hsv[1] + first, saturation);
    g3d_Store(hsv[2] + first, value);
}

/// Converts one block of triples; a block with a hue without result, triple by triple.
template <class Lanes>
G3D_KERNEL_BODY void ConvertBlock(unsigned short* rgb, const float* hsv) {
    constexpr std::size_t kLanes = sizeof(typename Lanes::Int) / sizeof(std::int32_t);
    Components<std::int32_t> channels;
    Components<float> components;
    TakeApart(components, hsv);
    typename Lanes::Int hasResult = ~typename Lanes::Int{};
    for (std::size_t first = 0; first < kBlock; first += kLanes)
        HSVToRGBLanes<Lanes>(channels, components, first, hasResult);
    bool all = true;
    for (std::size_t lane = 0; lane < kLanes; ++lane) all = all && hasResult[lane] != 0;
    if (all) {
        PutTogether(rgb, channels);
    } else {
        for (std::size_t i = 0; i < 3 * kBlock; i += 3) ::HSVToRGB(rgb + i, hsv + i);
    }
}

template <class Lanes>
G3D_KERNEL_BODY void ConvertBlock(float* hsv, const unsigned short* rgb) {
    constexpr std::size_t kLanes = sizeof(typename Lanes::Int) / sizeof(std::int32_t);
    Components<std::int32_t> channels;
    Components<float> components;
    TakeApart(channels, rgb);
    for (std::size_t first = 0; first < kBlock; first += kLanes)
        RGBToHSVLanes<Lanes>(components, channels, first);
    PutTogether(hsv, components);
}

/// Converts whole blocks in place and the rest in a padded copy.
template <class Lanes, class Out, class In>
G3D_KERNEL_BODY void Convert(Out* out, const In* in, std::size_t count) {
    std::size_t done = 0;
    for (; done + kBlock <= count; done += kBlock)
        ConvertBlock<Lanes>(out + 3 * done, in + 3 * done);
    if (done == count) return;
    Out outRest[3 * kBlock] = {};
    In inRest[3 * kBlock] = {};
    std::copy(in + 3 * done, in + 3 * count, inRest);
    std::copy(out + 3 * done, out + 3 * count, outRest);
    ConvertBlock<Lanes>(outRest, inRest);
    std::copy_n(outRest, 3 * (count - done), out + 3 * done);
}

template <class Out, class In>
void ConvertBaseline(Out* out, const In* in, std::size_t count) {
    Convert<g3d_FourLanes>(out, in, count);
}

template <class Out, class In>
G3D_AVX2_KERNEL void ConvertAvx2(Out* out, const In* in, std::size_t count) {
    Convert<g3d_EightLanes>(out, in, count);
}

template <class Out, class In>
Out* ConvertOnThisProcessor(Out* out, const In* in, std::size_t count) {
    const auto convert =
        KTSBasOmniMayUse(KTSBAS_CPU_AVX2) ? ConvertAvx2<Out, In> : ConvertBaseline<Out, In>;
    convert(out, in, count);
    return out;
}

}  // namespace

unsigned short* g3d_ColorArray::RGB(unsigned short* rgb, int count) const {
    unsigned short* out = rgb;
    for (const g3d_Color& colour : *this) {
        if (count-- <= 0) break;
        colour.RGB(out);
        out += 3;
    }
    return rgb;
}

unsigned short* g3d_ColorArray::HSVToRGB(unsigned short* rgb, const float* hsv,
                                         std::size_t count) noexcept {
    return ConvertOnThisProcessor(rgb, hsv, count);
}

float* g3d_ColorArray::RGBToHSV(float* hsv, const unsigned short* rgb, std::size_t count) noexcept {
    return ConvertOnThisProcessor(hsv, rgb, count);
}
