#include "g3d/g3d_Camera.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "g3d/detail/g3d_Double3.h"

namespace {

constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kGreatestWindow = 3.4028235e31f;
constexpr float kLeastSide = 1e-4f;
constexpr float kGreatestAspect = 500;
constexpr float kLeastGapRatio = 1e-5f;
constexpr double kRadPerDeg = 0.017453292519943295;
constexpr double kDegPerRad = 57.29577951308232;

/// What `g3d_Camera_SetTargetRotate` stores: the negation of its argument.
constinit bool recentresRotations = false;

float ToFloat(double value) {
    return static_cast<float>(std::clamp<double>(value, -kLargest, kLargest));
}

g3d_Point ToPoint(const g3d_Double3& p) { return {ToFloat(p.x), ToFloat(p.y), ToFloat(p.z)}; }
g3d_Vector ToVector(const g3d_Double3& v) { return {ToFloat(v.x), ToFloat(v.y), ToFloat(v.z)}; }

/// Limits an argument to finite floats; false for a NaN.
bool Admit(float& value) {
    value = std::clamp(value, -kLargest, kLargest);
    return !std::isnan(value);
}

bool Admit(g3d_Vector& v) {
    float x = v.X(), y = v.Y(), z = v.Z();
    const bool admitted = Admit(x) && Admit(y) && Admit(z);
    v = {x, y, z};
    return admitted;
}

bool Admit(g3d_Point& p) {
    float x = p.X(), y = p.Y(), z = p.Z(), w = p.W();
    const bool admitted = Admit(x) && Admit(y) && Admit(z) && Admit(w);
    p = {x, y, z, w};
    return admitted;
}

bool Admit(g3d_Sphere& sphere) {
    g3d_Point centre = sphere.Center();
    float radius = sphere.Radius();
    const bool admitted = Admit(centre) && Admit(radius) && !sphere.IsEmpty();
    sphere = {centre, radius};
    return admitted;
}

template <class... Arguments>
requires(sizeof...(Arguments) > 1) bool Admit(Arguments&... arguments) {
    return (Admit(arguments) && ...);
}

bool IsUsableRatio(float ratio) { return std::isfinite(ratio) && ratio > 0; }

/// The ready views: direction from the target to the eye, up.
struct SavedView {
    g3d_Double3 direction;
    g3d_Vector up;
};
constexpr SavedView kSavedViews[] = {
    {{0, 0, 1}, {0, 1, 0}},  {{0, 0, -1}, {0, 1, 0}}, {{0, 1, 0}, {0, 0, -1}},
    {{0, -1, 0}, {0, 0, 1}}, {{1, 0, 0}, {0, 1, 0}},  {{-1, 0, 0}, {0, 1, 0}},
    {{1, 1, 1}, {0, 1, 0}},
};

/// What a zoom-out does to its origin, with the line that says so.
struct ZoomOutMode {
    int number = 0;
    const char* notice = nullptr;
};

ZoomOutMode ReadZoomOutMode() {
    static constexpr const char* notices[] = {
        "use start drag for zoom out origin.\n",
        "use center for zoom out origin.\n",
        "transpose center toward start drag position.\n",
    };
    const char* text = std::getenv("ZRX_ZOOM_TOWARD");
    if (text == nullptr) return {};
    const auto value = std::strtol(text, nullptr, 10);
    const int number = value >= 1 ? static_cast<int>(std::min(value, decltype(value){3})) : 1;
    return {number, notices[number - 1]};
}

/// Reads the environment once per process.
int AnnouncedZoomOutMode() {
    static const ZoomOutMode mode = ReadZoomOutMode();
    if (mode.notice != nullptr)
        std::fprintf(stderr, "ZRX_ZOOM_TOWARD: Zoom-out set to %s", mode.notice);
    return mode.number;
}

}  // namespace

struct g3d_Camera::Axes {
    g3d_Double3 x, y, z;
};

/// A rotation about an axis of length 1.
struct g3d_Camera::Turn {
    g3d_Double3 axis{0, 0, 1};
    double sine = 0;
    double cosine = 1;

    [[nodiscard]] g3d_Double3 Apply(const g3d_Double3& v) const noexcept {
        return v * cosine + axis.Cross(v) * sine + axis * (axis.Dot(v) * (1 - cosine));
    }
};

void g3d_Camera_SetTargetRotate(bool aboutTarget) { recentresRotations = !aboutTarget; }

const g3d_XForm& g3d_Camera::GetVOM() const noexcept {
    if (orientationStale) {
        const Axes axes = ViewAxes();
        const g3d_Double3 place(eye);
        orientationMatrix.SetAxes(axes.x.AsVector(), axes.y.AsVector(), axes.z.AsVector());
        orientationMatrix.Transpose();
        orientationMatrix.Translate(-place.x, -place.y, -place.z);
        orientationStale = false;
    }
    return orientationMatrix;
}

const g3d_XForm& g3d_Camera::GetProjectionMatrix() const noexcept {
    if (projectionStale) {
        const float left = (viewportXMin - 0.5f) * windowWidth + offsetX;
        const float right = (viewportXMax - 0.5f) * windowWidth + offsetX;
        const float top = (viewportYMax - 0.5f) * windowHeight + offsetY;
        const float bottom = (viewportYMin - 0.5f) * windowHeight + offsetY;
        if (IsPerspective()) {
            projectionMatrix.SetPerspectiveProjection(left, right, top, bottom, nearDistance,
                                                      farDistance);
        } else {
            projectionMatrix.SetOrthographicProjection(left, right, top, bottom, nearDistance,
                                                       farDistance);
        }
        projectionStale = false;
    }
    return projectionMatrix;
}

float g3d_Camera::GetViewDistance() const noexcept {
    return std::min((target - eye).Length(), kLargest);
}

float g3d_Camera::GetFieldOfView() const noexcept {
    const double half = 0.5 * std::max(windowWidth, windowHeight);
    const double distance = IsPerspective() ? nearDistance : GetViewDistance();
    return static_cast<float>(2 * std::atan2(half, distance) * kDegPerRad);
}

g3d_Camera& g3d_Camera::SetLocation(const g3d_Point& eyePoint, const g3d_Point& targetPoint,
                                    const g3d_Vector& upVector) noexcept {
    g3d_Point newEye = eyePoint;
    g3d_Point newTarget = targetPoint;
    g3d_Vector newUp = upVector;
    if (!Admit(newEye, newTarget, newUp)) return *this;
    eye = newEye;
    target = newTarget;
    up = newUp;
    orientationStale = true;
    return *this;
}

g3d_Camera& g3d_Camera::SetWindow(float width, float height) noexcept {
    if (std::isnan(width) || std::isnan(height)) return *this;
    if (!IsLimitsOff()) {
        const float least = LeastWindow();
        width = std::clamp(width, least, kGreatestWindow);
        height = std::clamp(height, least, kGreatestWindow);
        if (height > width && height / width > kGreatestAspect) width = height / kGreatestAspect;
        if (width > height && width / height > kGreatestAspect) height = width / kGreatestAspect;
    }
    StoreWindow(width, height);
    return *this;
}

g3d_Camera& g3d_Camera::SetNearFar(float nearValue, float farValue) noexcept {
    if (std::isnan(nearValue) || std::isnan(farValue)) return *this;
    if (!IsLimitsOff()) Admit(nearValue, farValue);
    if (nearValue != nearDistance || farValue != farDistance) StoreNearFar(nearValue, farValue);
    return *this;
}

g3d_Camera& g3d_Camera::SetViewOffset(float x, float y) noexcept {
    if (!Admit(x, y) || (x == offsetX && y == offsetY)) return *this;
    offsetX = x;
    offsetY = y;
    projectionStale = true;
    return *this;
}

g3d_Camera& g3d_Camera::SetFieldOfView(float angleDeg, bool keepNear) noexcept {
    if (!Admit(angleDeg)) return *this;
    const float longer = std::max(windowWidth, windowHeight);
    if (keepNear) {
        const float distance = IsPerspective() ? nearDistance : GetViewDistance();
        float side = ToFloat(2.0 * distance * std::tan(angleDeg * kRadPerDeg / 2));
        if (!IsLimitsOff()) {
            const float shape = longer / std::min(windowWidth, windowHeight);
            side =
                std::clamp(side, std::min(LeastWindow() * shape, kGreatestWindow), kGreatestWindow);
        }
        // Within this distance of the present size the request changes nothing.
        constexpr float kSameSize = 1e-4f;
        const float scale = side / longer;
        if (!(std::abs(side - longer) <= kSameSize) && std::isfinite(scale)) {
            if (windowWidth >= windowHeight) {
                StoreWindow(side, side * (windowHeight / windowWidth));
            } else {
                StoreWindow(side * (windowWidth / windowHeight), side);
            }
            ScaleOffsets(scale);
        }
    } else {
        const double half = 0.5 * ToFloat(longer);
        nearDistance = ToFloat(std::tan((180.0 - angleDeg) * kRadPerDeg / 2) * half);
        if (!IsLimitsOff()) ApplyNearFarRule();
        projectionStale = true;
    }
    modeBits &= ~aspectCorrectedBit;
    return *this;
}

bool g3d_Camera::SetProjection(ProjectionEnum projection) noexcept {
    const bool perspective = projection == PERSPECTIVE;
    if (perspective == IsPerspective()) return false;
    StoreProjection(perspective);
    return true;
}

bool g3d_Camera::SetProjection(g3d_ProjectionEnum projection) noexcept {
    return SetProjection(static_cast<ProjectionEnum>(projection));
}

g3d_Camera& g3d_Camera::MakeParallel() noexcept {
    if (!IsPerspective()) return *this;
    if (recentresRotations) TargetBetweenPlanes();
    StoreProjection(false);
    ScaleWindowAndOffsets(GetViewDistance() / nearDistance);
    return *this;
}

g3d_Camera& g3d_Camera::MakePerspective() noexcept {
    if (IsPerspective()) return *this;
    StoreProjection(true);
    ScaleWindowAndOffsets(nearDistance / GetViewDistance());
    return *this;
}

g3d_Camera& g3d_Camera::SetViewport(float xMin, float xMax, float yMin, float yMax) noexcept {
    if (!Admit(xMin, xMax, yMin, yMax) || !(xMin < xMax && yMin < yMax)) return *this;
    viewportXMin = xMin;
    viewportXMax = xMax;
    viewportYMin = yMin;
    viewportYMax = yMax;
    projectionStale = true;
    return *this;
}

g3d_Camera& g3d_Camera::SetLimitsOff(bool off) noexcept {
    if (off) {
        modeBits |= limitsOffBit;
        return *this;
    }
    if (!IsLimitsOff()) return *this;
    modeBits &= ~limitsOffBit;
    float nearValue = nearDistance;
    float farValue = farDistance;
    Admit(nearValue, farValue);
    StoreNearFar(nearValue, farValue);
    return SetWindow(windowWidth, windowHeight);
}

g3d_Camera& g3d_Camera::SetFitDistanceFactor(float factor) noexcept {
    if (Admit(factor) && factor > 2) fitDistanceFactor = factor;
    return *this;
}

g3d_Camera& g3d_Camera::Pan(float dx, float dy, float dz, bool keepTarget) noexcept {
    if (!Admit(dx, dy, dz)) return *this;
    const double right = static_cast<double>(dx) * windowWidth;
    const double upward = static_cast<double>(dy) * windowHeight;
    if (keepTarget) return SetViewOffset(ToFloat(offsetX + right), ToFloat(offsetY + upward));
    const double distance = GetViewDistance();
    const double atTarget = IsPerspective() ? distance / nearDistance : 1;
    const Axes axes = ViewAxes();
    const g3d_Double3 move =
        axes.x * (right * atTarget) + axes.y * (upward * atTarget) - axes.z * (dz * distance);
    // With limits off near may be 0.
    if (std::isfinite(move.Length())) Place(g3d_Double3(eye) + move, g3d_Double3(target) + move);
    return *this;
}

g3d_Camera& g3d_Camera::Zoom(float factor, bool keepTarget) noexcept {
    if (!Admit(factor) || factor <= 0) return *this;
    const float scale = LimitedFactor(factor);
    SetWindow(ToFloat(static_cast<double>(windowWidth) * scale),
              ToFloat(static_cast<double>(windowHeight) * scale));
    if (keepTarget) ScaleOffsets(scale);
    return *this;
}

g3d_Camera& g3d_Camera::Zoom(float x0, float y0, float x1, float y1, bool keepTarget) noexcept {
    if (!Admit(x0, y0, x1, y1)) return *this;
    const float factor = std::min(std::max(std::abs(x1 - x0), std::abs(y1 - y0)), kLargest);
    if (factor == 0) return *this;
    Pan(x0 / 2 + x1 / 2 - 0.5f, y0 / 2 + y1 / 2 - 0.5f, 0, keepTarget);
    return Zoom(factor, false);
}

g3d_Camera& g3d_Camera::ZoomTo(float x, float y, float factor, bool keepTarget,
                               bool drag) noexcept {
    const int mode = AnnouncedZoomOutMode();
    if (!Admit(x, y, factor) || factor <= 0) return *this;
    const float scale = LimitedFactor(factor);
    float originScale = scale;
    if (scale > 1 && drag) {
        if (mode == 2) originScale = 1;
        if (mode == 3) originScale = 1 / scale;
    }
    Pan((x - 0.5f) * (1 - originScale), (y - 0.5f) * (1 - originScale), 0, keepTarget);
    return Zoom(scale, false);
}

g3d_Camera& g3d_Camera::Rotate(float angleDeg, const g3d_Vector& axis, bool keepTarget) noexcept {
    g3d_Vector about = axis;
    if (!Admit(angleDeg, about)) return *this;
    if (recentresRotations && !keepTarget) TargetBetweenPlanes();
    RotateAbout(target, TurnAbout(angleDeg, about));
    return *this;
}

g3d_Camera& g3d_Camera::Rotate(float angleDeg, const g3d_Vector& axis,
                               const g3d_Point& centre) noexcept {
    g3d_Vector about = axis;
    g3d_Point middle = centre;
    if (Admit(angleDeg, about, middle)) RotateAbout(middle, TurnAbout(angleDeg, about));
    return *this;
}

g3d_Camera& g3d_Camera::Rotate(const g3d_Vector& from, const g3d_Vector& to,
                               bool keepTarget) noexcept {
    g3d_Vector first = from;
    g3d_Vector last = to;
    if (!Admit(first, last)) return *this;
    if (recentresRotations && !keepTarget) TargetBetweenPlanes();
    RotateAbout(target, ShortestTurn(first, last));
    return *this;
}

g3d_Camera& g3d_Camera::Rotate(const g3d_Vector& from, const g3d_Vector& to,
                               const g3d_Point& centre) noexcept {
    g3d_Vector first = from;
    g3d_Vector last = to;
    g3d_Point middle = centre;
    if (Admit(first, last, middle)) RotateAbout(middle, ShortestTurn(first, last));
    return *this;
}

g3d_Camera& g3d_Camera::Fit(const g3d_Sphere& sphere) noexcept {
    g3d_Sphere model = sphere;
    if (Admit(model)) FitAlong(ViewDirection({0, 0, 1}), model);
    return *this;
}

g3d_Camera& g3d_Camera::Fit(const g3d_Point& corner, const g3d_Point& opposite) noexcept {
    return Fit(g3d_BoundingVolume(corner, opposite));
}

g3d_Camera& g3d_Camera::Fit(const g3d_BoundingVolume& volume) noexcept {
    g3d_Point low = volume.Low();
    g3d_Point high = volume.High();
    if (volume.IsEmpty() || !Admit(low, high)) return *this;
    float largest = 0;
    for (const float coordinate : {low.X(), low.Y(), low.Z(), high.X(), high.Y(), high.Z()})
        largest = std::max(largest, std::abs(coordinate));
    const g3d_Sphere sphere = g3d_BoundingVolume(low, high).BoundingSphere();
    const float leastRadius = std::max(1e-4f, 1e-5f * largest);
    return Fit(g3d_Sphere(sphere.Center(), std::max(sphere.Radius(), leastRadius)));
}

g3d_Camera& g3d_Camera::FitVP(float deviceWidth, float deviceHeight) noexcept {
    if (!Admit(deviceWidth, deviceHeight) || deviceWidth <= 0 || deviceHeight <= 0) return *this;
    const double shape = static_cast<double>(deviceWidth) / deviceHeight *
                         (static_cast<double>(viewportYMax) - viewportYMin) /
                         (static_cast<double>(viewportXMax) - viewportXMin);
    const double side = std::min(windowWidth, windowHeight);
    return shape >= 1 ? SetWindow(ToFloat(side * shape), ToFloat(side))
                      : SetWindow(ToFloat(side), ToFloat(side / shape));
}

g3d_Camera& g3d_Camera::FitCenterVP(float x, float y, float factor, bool keepTarget) noexcept {
    if (!Admit(x, y, factor) || factor <= 0) return *this;
    const float scale = LimitedFactor(factor);
    Pan(x - 0.5f, y - 0.5f, 0, keepTarget);
    return Zoom(scale, false);
}

g3d_Camera& g3d_Camera::Canned(const g3d_Sphere& sphere, g3d_SavedViewIdEnum view) noexcept {
    g3d_Sphere model = sphere;
    if (!Admit(model) || view < g3d_VIEW_FRONT || view > g3d_VIEW_ISOMETRIC) return *this;
    const SavedView& saved = kSavedViews[view];
    g3d_Double3 direction = saved.direction;
    direction.Normalize();
    up = saved.up;
    FitAlong(direction, model);
    return *this;
}

g3d_Camera& g3d_Camera::SetModelBoundingVolume(const g3d_BoundingVolume& volume,
                                               float margin) noexcept {
    g3d_Point low = volume.Low();
    g3d_Point high = volume.High();
    if (!Admit(margin, low, high) || volume.IsEmpty()) return *this;
    const g3d_Sphere sphere = g3d_BoundingVolume(low, high).BoundingSphere();
    const double radius = sphere.Radius() * (1.0 + std::max(margin, 0.0f));
    const double ahead = (g3d_Double3(eye) - g3d_Double3(sphere.Center())).Dot(ViewAxes().z);
    const double newFar = ahead + radius;
    if (!(newFar > 0)) return *this;
    double newNear = ahead - radius;
    if (IsPerspective()) newNear = std::max(newNear, newFar * 1e-3);
    const float oldNear = nearDistance;
    SetNearFar(ToFloat(newNear), ToFloat(newFar));
    if (IsPerspective()) ScaleWindowAndOffsets(nearDistance / oldNear);
    return *this;
}

g3d_Camera& g3d_Camera::CorrectAspect(float deviceWidth, float deviceHeight, float pixelAspect,
                                      float xMin, float xMax, float yMin, float yMax) noexcept {
    if (!Admit(deviceWidth, deviceHeight, pixelAspect, xMin, xMax, yMin, yMax)) return *this;
    const float squareWidth = ToFloat(static_cast<double>(deviceWidth) * pixelAspect);
    const bool usable = deviceWidth > 0 && deviceHeight > 0 && pixelAspect > 0 && squareWidth > 0;
    if (!usable || !(xMin < xMax && yMin < yMax)) return *this;
    SetViewport(xMin, xMax, yMin, yMax);
    FitVP(squareWidth, deviceHeight);
    modeBits |= aspectCorrectedBit;
    return *this;
}

g3d_Camera& g3d_Camera::SetLayerXForm(bool world, g3d_XForm* layer) noexcept {
    if (layer == nullptr) return *this;
    if (world) {
        *layer = GetProjectionMatrix() * GetVOM();
    } else {
        // The parallel projection of the unit square, with clip z = z.
        layer->SetOrthographicProjection(0, 1, 1, 0, 1, -1);
    }
    return *this;
}

int g3d_Camera::operator==(const g3d_Camera& other) const noexcept {
    const auto compared = [](unsigned char bits) { return bits & ~aspectCorrectedBit; };
    return eye == other.eye && target == other.target && up == other.up &&
           windowWidth == other.windowWidth && windowHeight == other.windowHeight &&
           nearDistance == other.nearDistance && farDistance == other.farDistance &&
           compared(modeBits) == compared(other.modeBits) && offsetX == other.offsetX &&
           offsetY == other.offsetY && viewportXMin == other.viewportXMin &&
           viewportXMax == other.viewportXMax && viewportYMin == other.viewportYMin &&
           viewportYMax == other.viewportYMax && fitDistanceFactor == other.fitDistanceFactor;
}

/// The unit direction from the target to the eye. The difference is taken in floats, so that the
/// products of later cross products are exact and a parallel up gives exactly zero.
g3d_Double3 g3d_Camera::ViewDirection(const g3d_Double3& whenDegenerate) const noexcept {
    g3d_Double3 direction(eye - target);
    return direction.Normalize() ? direction : whenDegenerate;
}

g3d_Camera::Axes g3d_Camera::ViewAxes() const noexcept {
    Axes axes;
    g3d_Double3 back(eye - target);
    axes.z = back;
    if (!axes.z.Normalize()) axes.z = back = {0, 0, 1};
    for (const g3d_Double3& upward :
         {g3d_Double3(up), g3d_Double3(0, 1, 0), g3d_Double3(0, 0, 1)}) {
        axes.x = upward.Cross(back);
        if (axes.x.Normalize()) break;
    }
    axes.y = axes.z.Cross(axes.x);
    return axes;
}

/// The least side of a window, never above the greatest.
float g3d_Camera::LeastWindow() const noexcept {
    const float distance = GetViewDistance();
    if (!IsPerspective() || distance == 0) return kLeastSide;
    return std::min(std::max(kLeastSide, nearDistance * kLeastSide / distance), kGreatestWindow);
}

/// The factor that keeps both sides of the window within their limits.
float g3d_Camera::LimitedFactor(float factor) const noexcept {
    if (IsLimitsOff()) return factor;
    const float least = LeastWindow() / std::min(windowWidth, windowHeight);
    const float greatest = kGreatestWindow / std::max(windowWidth, windowHeight);
    return std::min(std::max(factor, least), greatest);
}

g3d_Camera::Turn g3d_Camera::TurnAbout(float angleDeg, const g3d_Vector& axis) const noexcept {
    g3d_Double3 direction(axis);
    if (!direction.Normalize()) return {};
    const double angleRad = angleDeg * kRadPerDeg;
    return {direction, std::sin(angleRad), std::cos(angleRad)};
}

g3d_Camera::Turn g3d_Camera::ShortestTurn(const g3d_Vector& from,
                                          const g3d_Vector& to) const noexcept {
    const g3d_Double3 first(from);
    const g3d_Double3 last(to);
    const g3d_Double3 normal = first.Cross(last);
    const double sine = normal.Length();
    const double cosine = first.Dot(last);
    const double length = std::sqrt(sine * sine + cosine * cosine);
    if (length == 0) return {};
    g3d_Double3 axis = normal;
    if (axis.Normalize()) return {axis, sine / length, cosine / length};
    if (cosine > 0) return {};
    g3d_Double3 direction = first;
    direction.Normalize();
    const Axes axes = ViewAxes();
    constexpr double kParallel = 1e-7;
    for (const g3d_Double3& candidate : {axes.y, axes.x}) {
        axis = candidate - direction * direction.Dot(candidate);
        if (axis.Length() > kParallel) break;
    }
    axis.Normalize();
    return {axis, 0, -1};
}

void g3d_Camera::ApplyNearFarRule() noexcept {
    if (nearDistance < GetNearPlane_MinValue()) nearDistance = GetNearPlane_MinValue();
    const float gap = nearDistance * kLeastGapRatio;
    if (!(gap > farDistance - nearDistance)) return;
    if (nearDistance > kLargest - gap) {
        nearDistance = kLargest - gap;
        farDistance = kLargest;
    } else {
        farDistance = nearDistance + gap;
    }
}

void g3d_Camera::ScaleOffsets(float factor) noexcept {
    SetViewOffset(ToFloat(static_cast<double>(offsetX) * factor),
                  ToFloat(static_cast<double>(offsetY) * factor));
}

void g3d_Camera::ScaleWindowAndOffsets(float factor) noexcept {
    if (!IsUsableRatio(factor)) return;
    ScaleOffsets(factor);
    SetWindow(ToFloat(static_cast<double>(windowWidth) * factor),
              ToFloat(static_cast<double>(windowHeight) * factor));
}

void g3d_Camera::Place(const g3d_Double3& newEye, const g3d_Double3& newTarget) noexcept {
    eye = ToPoint(newEye);
    target = ToPoint(newTarget);
    orientationStale = true;
}

void g3d_Camera::StoreProjection(bool perspective) noexcept {
    modeBits &= ~(perspectiveBit | aspectCorrectedBit);
    if (perspective) modeBits |= perspectiveBit;
    projectionStale = true;
}

void g3d_Camera::StoreNearFar(float nearValue, float farValue) noexcept {
    const float oldNear = nearDistance;
    const float oldFar = farDistance;
    nearDistance = nearValue;
    farDistance = farValue;
    if (!IsLimitsOff()) ApplyNearFarRule();
    if (nearDistance != oldNear || farDistance != oldFar) modeBits &= ~aspectCorrectedBit;
    projectionStale = true;
}

void g3d_Camera::StoreWindow(float width, float height) noexcept {
    const bool same = width == windowWidth && height == windowHeight;
    if (same || std::isnan(width) || std::isnan(height)) return;
    windowWidth = width;
    windowHeight = height;
    modeBits &= ~aspectCorrectedBit;
    projectionStale = true;
}

void g3d_Camera::TargetBetweenPlanes() noexcept {
    const g3d_Double3 direction = ViewDirection({0, 0, 1});
    const float middle = ToFloat(nearDistance) / 2 + ToFloat(farDistance) / 2;
    target = ToPoint(g3d_Double3(eye) - direction * middle);
    orientationStale = true;
}

void g3d_Camera::RotateAbout(const g3d_Double3& centre, const Turn& turn) noexcept {
    if (turn.sine == 0 && turn.cosine == 1) return;
    const auto turned = [&](const g3d_Double3& p) { return centre + turn.Apply(p - centre); };
    const g3d_Double3 newEye = turned(eye);
    const g3d_Double3 newTarget = turned(target);
    up = ToVector(turn.Apply(up));
    Place(newEye, newTarget);
}

void g3d_Camera::FitAlong(const g3d_Double3& direction, const g3d_Sphere& sphere) noexcept {
    const float factor = fitDistanceFactor;
    const float radius = std::min(sphere.Radius(), kLargest / (factor + 2));
    const g3d_Double3 centre(sphere.Center());
    offsetX = offsetY = 0;
    Place(centre + direction * (static_cast<double>(factor) * radius), centre);
    nearDistance = std::min((factor - 2) * radius, kLargest);
    farDistance = std::min((factor + 2) * radius, kLargest);
    ApplyNearFarRule();
    const double side = IsPerspective() ? 2.1 / factor * nearDistance : 2.1 * radius;
    SetWindow(ToFloat(side), ToFloat(side));
    modeBits &= ~aspectCorrectedBit;
    projectionStale = true;
}
