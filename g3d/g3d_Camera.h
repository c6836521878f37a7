#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "g3d/g3d_BoundingVolume.h"
#include "g3d/g3d_CameraC.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_Sphere.h"
#include "g3d/g3d_Vector.h"
#include "g3d/g3d_XForm.h"

struct g3d_Double3;

/// Parallel or perspective; values other than 1 mean parallel.
enum g3d_ProjectionEnum : int { g3d_PARALLEL = 0, g3d_PERSPECTIVE = 1 };

/// The ready views, by the side that is seen: direction from the target to the eye / up.
enum g3d_SavedViewIdEnum : int {
    g3d_VIEW_FRONT = 0,      ///< +z / +y
    g3d_VIEW_BACK = 1,       ///< -z / +y
    g3d_VIEW_TOP = 2,        ///< +y / -z
    g3d_VIEW_BOTTOM = 3,     ///< -y / +z
    g3d_VIEW_RIGHT = 4,      ///< +x / +y
    g3d_VIEW_LEFT = 5,       ///< -x / +y
    g3d_VIEW_ISOMETRIC = 6,  ///< (1, 1, 1) / +y
};

/// The viewing camera: eye, target and up vector in world coordinates, a rectangular window (at the
/// near plane in perspective, at the target in parallel projection), clipping distances, and a
/// viewport, the part of the window that is shown. Two matrices follow from these and are rebuilt
/// when they are asked for after a change. `g3d_XForm` states the spaces.
///
/// Picture coordinates run over the whole window from (0, 0) at the lower left to (1, 1), as the
/// numbers of the viewport do. x, y, z below are the axes of the view (right, up, toward the
/// viewer), D is the view distance, and q is D / near in perspective and 1 in parallel projection:
/// what one unit of the window measures at the target.
///
/// `keepTarget` means the same in every pan and zoom: true leaves eye and target where they are and
/// lets the view offsets carry the change; false leaves the offsets alone. In `Rotate`, which turns
/// the camera either way, true keeps the target from being re-centred.
///
/// Limits: near and far obey the near/far rule, every window set passes the window limits (see
/// `SetNearFar`, `SetWindow`); out-of-range values are limited silently. `SetLimitsOff(true)` takes
/// windows and near/far as given, infinite ones included.
///
/// Bad input: a call with a NaN argument does nothing. Any other infinite argument counts as the
/// largest float of its sign, and results beyond the range of a float are limited to it. The fields
/// are floats; sums of products, lengths, rotations and angles are computed in double and rounded
/// once. At coordinates far from the origin the steps of a float set the least movement: at 1000 a
/// move below 3e-5 is lost. View offsets (`keepTarget` true) have no such limit.
///
/// "The window matches the device" is a mark that `CorrectAspect` sets, and that every change of
/// window, near/far, field of view or projection takes away (`SetFieldOfView`, the fits and
/// `Canned` do so always).
///
/// A plain value of about 230 bytes: copies are independent. Const calls may rebuild the cached
/// matrices, so one camera belongs to one thread.
class g3d_Camera {
  public:
    /// Parallel or perspective; values other than 1 mean parallel.
    enum ProjectionEnum : int { PARALLEL = 0, PERSPECTIVE = 1 };

    /// Eye (2, 0, 0), target at the origin, up (0, 1, 0), window 1 x 1, near 1, far 10000,
    /// perspective, offsets 0, viewport 0 to 1, fit distance factor 4.
    g3d_Camera() noexcept = default;

    /// The view orientation matrix, world to view space; valid until the camera goes. A change of
    /// the camera shows in it after the next call.
    ///
    /// Its rows are the axes z = normalised eye - target, x = normalised up x z, y = z x x,
    /// followed by the translation by -eye. When eye and target coincide z is (0, 0, 1); when up is
    /// zero or lies along z, (0, 1, 0) takes its place, or (0, 0, 1) when that lies along z too.
    [[nodiscard]] KTSOVUGEOM_API const g3d_XForm& GetVOM() const noexcept;
    /// The projection matrix, view to clip space, of the part of the window that the viewport
    /// shows; otherwise as `GetVOM`.
    [[nodiscard]] KTSOVUGEOM_API const g3d_XForm& GetProjectionMatrix() const noexcept;

    [[nodiscard]] const g3d_Point& GetEye() const noexcept { return eye; }
    [[nodiscard]] const g3d_Point& GetTarget() const noexcept { return target; }
    [[nodiscard]] const g3d_Vector& GetUp() const noexcept { return up; }
    /// |target - eye|.
    [[nodiscard]] KTSOVUGEOM_API float GetViewDistance() const noexcept;
    [[nodiscard]] float GetWindowWidth() const noexcept { return windowWidth; }
    [[nodiscard]] float GetWindowHeight() const noexcept { return windowHeight; }
    [[nodiscard]] float GetNear() const noexcept { return nearDistance; }
    [[nodiscard]] float GetFar() const noexcept { return farDistance; }
    /// The least near distance that the near/far rule lets stand, 1e-5.
    [[nodiscard]] static constexpr float GetNearPlane_MinValue() noexcept { return 1e-5f; }
    [[nodiscard]] bool IsPerspective() const noexcept { return (modeBits & perspectiveBit) != 0; }
    [[nodiscard]] bool IsLimitsOff() const noexcept { return (modeBits & limitsOffBit) != 0; }
    /// True from `CorrectAspect` until the window, near/far or the projection changes.
    [[nodiscard]] bool IsAspectCorrected() const noexcept {
        return (modeBits & aspectCorrectedBit) != 0;
    }
    [[nodiscard]] float GetViewOffsetX() const noexcept { return offsetX; }
    [[nodiscard]] float GetViewOffsetY() const noexcept { return offsetY; }
    [[nodiscard]] float GetViewportXMin() const noexcept { return viewportXMin; }
    [[nodiscard]] float GetViewportXMax() const noexcept { return viewportXMax; }
    [[nodiscard]] float GetViewportYMin() const noexcept { return viewportYMin; }
    [[nodiscard]] float GetViewportYMax() const noexcept { return viewportYMax; }
    [[nodiscard]] float GetFitDistanceFactor() const noexcept { return fitDistanceFactor; }
    /// True while `GetVOM` (`GetProjectionMatrix`) has yet to rebuild its matrix.
    [[nodiscard]] bool IsOrientationStale() const noexcept { return orientationStale; }
    [[nodiscard]] bool IsProjectionStale() const noexcept { return projectionStale; }
    /// The full angle across the longer side of the window in degrees, 2 atan2(max(w, h) / 2, d),
    /// where d is near in perspective and the view distance in parallel projection.
    [[nodiscard]] KTSOVUGEOM_API float GetFieldOfView() const noexcept;

    /// Places the camera. `up` need not be orthogonal to the view direction.
    KTSOVUGEOM_API g3d_Camera& SetLocation(const g3d_Point& eyePoint, const g3d_Point& targetPoint,
                                           const g3d_Vector& upVector) noexcept;

    /// Sets the window within its limits: each side in [m, 3.4028235e31], where m is 1e-4 in
    /// parallel projection and max(1e-4, near * 1e-4 / D) in perspective (1e-4 when D is 0); then
    /// the longer side bounds the shorter one from below by 1/500 of it. An unchanged window leaves
    /// everything as it was.
    ///
    /// Kept: the limits are a rule of this call, not of the camera: `SetNearFar`, `SetLocation` or
    /// `Rotate` move m and leave a window below it as it is. One would expect a new limit to apply
    /// at once; saved views restore location and window in either order.
    KTSOVUGEOM_API g3d_Camera& SetWindow(float width, float height) noexcept;

    /// Sets the clipping distances under the near/far rule; unchanged values do nothing. The rule:
    /// near is at least 1e-5; when near * 1e-5 exceeds far - near, far becomes near + near * 1e-5,
    /// or, where that leaves the float range, near 3.4028235e38 - near * 1e-5 and far 3.4028235e38.
    ///
    /// Kept: the rule runs once and is no guarantee of the gap: after rounding, far - near may be
    /// an ulp below near * 1e-5. Running it again changes nothing.
    KTSOVUGEOM_API g3d_Camera& SetNearFar(float nearValue, float farValue) noexcept;

    /// Shifts the centre of the window.
    KTSOVUGEOM_API g3d_Camera& SetViewOffset(float x, float y) noexcept;

    /// Sets the field of view, `angleDeg` across the longer side. With `keepNear` true the window
    /// is scaled, keeping its shape within the window limits, and the view offsets with it; a
    /// window within 1e-4 of the present one changes nothing. With `keepNear` false the window
    /// stays and near becomes tan((180 - angleDeg) / 2) * max(w, h) / 2, under the near/far rule.
    ///
    /// Kept: `SetFieldOfView(a, false)` on a parallel camera moves near and leaves `GetFieldOfView`
    /// where it was, since that asks for the view distance there; angles of 0 or less and of 180 or
    /// more end in the near/far rule. One would expect the view distance to follow; viewers set
    /// near this way before they switch to perspective.
    KTSOVUGEOM_API g3d_Camera& SetFieldOfView(float angleDeg, bool keepNear) noexcept;

    /// Switches the projection, keeping the window; true when that is a change.
    KTSOVUGEOM_API bool SetProjection(ProjectionEnum projection) noexcept;
    KTSOVUGEOM_API bool SetProjection(g3d_ProjectionEnum projection) noexcept;
    /// Converts to parallel projection: window and offsets times D / near, which keeps the field of
    /// view. With the re-centring switch on (`g3d_Camera_SetTargetRotate`) the target first moves
    /// to (near + far) / 2 from the eye. No effect on a parallel camera. A ratio that is not finite
    /// and positive leaves window and offsets.
    KTSOVUGEOM_API g3d_Camera& MakeParallel() noexcept;
    /// Converts to perspective: window and offsets times near / D. Otherwise as `MakeParallel`,
    /// without a move of the target.
    ///
    /// Kept: the new window passes the window limits, so that a field of view below the least
    /// window grows (D 1000, window 1e-3, near 1: from 5.7e-5 to 5.7e-3 degrees). One would expect
    /// the conversion to keep the field of view always.
    KTSOVUGEOM_API g3d_Camera& MakePerspective() noexcept;

    /// Sets the part of the window that is shown, in picture coordinates. Refused unless
    /// xMin < xMax and yMin < yMax.
    KTSOVUGEOM_API g3d_Camera& SetViewport(float xMin, float xMax, float yMin, float yMax) noexcept;
    /// Switches the limits of window and near/far off or on; switching them on applies them.
    KTSOVUGEOM_API g3d_Camera& SetLimitsOff(bool off) noexcept;
    /// Sets the distance, in sphere radii, at which fits place the eye. Refused unless above 2.
    /// Below 3.28 the silhouette of the sphere no longer fits the window.
    KTSOVUGEOM_API g3d_Camera& SetFitDistanceFactor(float factor) noexcept;

    /// Moves the camera by fractions of the window to the right and up and by `dz` view distances
    /// forward: eye and target += x dx w q + y dy h q - z dz D. With `keepTarget` the offsets
    /// += (dx w, dy h), and `dz` is ignored.
    KTSOVUGEOM_API g3d_Camera& Pan(float dx, float dy, float dz, bool keepTarget) noexcept;

    /// Multiplies the window by `factor`; below 1 magnifies. The factor is limited first, so that
    /// both sides stay within the window limits and the shape is kept; a factor of 0 or less does
    /// nothing. About the centre of the window, or with `keepTarget` with the offsets scaled too,
    /// so that the target keeps its place in the picture.
    KTSOVUGEOM_API g3d_Camera& Zoom(float factor, bool keepTarget) noexcept;
    /// Zooms to the rectangle between two corners in picture coordinates: pans its middle to the
    /// centre and zooms by its longer side, so that all of it is visible. An empty one does
    /// nothing.
    KTSOVUGEOM_API g3d_Camera& Zoom(float x0, float y0, float x1, float y1,
                                    bool keepTarget) noexcept;
    /// Zooms by `factor` (limited as in `Zoom`) toward the picture position (x, y): what lies there
    /// at the depth of the target stays under the cursor, so that 1 / factor returns the view.
    ///
    /// A zoom-out (factor above 1) in a `drag` follows the environment variable ZRX_ZOOM_TOWARD,
    /// read by the first call of the process: 2 zooms about the centre, 3 moves the start of the
    /// drag toward the centre (by 1 / factor^2), 1 and unset as above. Larger integers count as 3;
    /// any other value, also one that is no number, as 1. While it is set, each call writes one
    /// line about the mode to standard error.
    KTSOVUGEOM_API g3d_Camera& ZoomTo(float x, float y, float factor, bool keepTarget,
                                      bool drag) noexcept;

    /// Turns the camera about the target by `angleDeg` around the world direction `axis` (of any
    /// length, right-hand rule; a zero axis does not turn): eye' = t + R (eye - t), up' = R up.
    /// When the re-centring switch is on and `keepTarget` is false, the target first moves to the
    /// point halfway between the clipping planes.
    KTSOVUGEOM_API g3d_Camera& Rotate(float angleDeg, const g3d_Vector& axis,
                                      bool keepTarget) noexcept;
    /// Turns eye and target about `centre`; never re-centres.
    KTSOVUGEOM_API g3d_Camera& Rotate(float angleDeg, const g3d_Vector& axis,
                                      const g3d_Point& centre) noexcept;
    /// As the first, by the shortest turn that carries the world direction `from` into `to` (a zero
    /// one: no turn). Opposite directions: half a turn about the camera's y made orthogonal to
    /// `from`, about x when they are parallel.
    KTSOVUGEOM_API g3d_Camera& Rotate(const g3d_Vector& from, const g3d_Vector& to,
                                      bool keepTarget) noexcept;
    KTSOVUGEOM_API g3d_Camera& Rotate(const g3d_Vector& from, const g3d_Vector& to,
                                      const g3d_Point& centre) noexcept;

    /// Shows the whole sphere, keeping the view direction: target at its centre, eye f radii away
    /// (f the fit distance factor), near (f - 2) r, far (f + 2) r under the near/far rule (with
    /// limits off too), offsets 0, and a square window of 2.1 r at the target, within the limits.
    /// The empty sphere does nothing; r is limited to 3.4028235e38 / (f + 2).
    ///
    /// Kept: far from the origin a tiny sphere may round the eye onto the target, which loses the
    /// view direction, and radius 0 always does. The fits of a box keep a least radius.
    KTSOVUGEOM_API g3d_Camera& Fit(const g3d_Sphere& sphere) noexcept;
    /// Shows the box between two corners, in any order: fits its sphere, whose radius is at least
    /// 1e-4 and at least 1e-5 of the largest coordinate.
    KTSOVUGEOM_API g3d_Camera& Fit(const g3d_Point& corner, const g3d_Point& opposite) noexcept;
    KTSOVUGEOM_API g3d_Camera& Fit(const g3d_BoundingVolume& volume) noexcept;
    /// Gives the window the shape of a device of `deviceWidth` x `deviceHeight` pixels, as the
    /// viewport sees it, keeping its smaller side: what a fit showed stays visible, and resizing
    /// back restores the window. A size of 0 or less does nothing.
    KTSOVUGEOM_API g3d_Camera& FitVP(float deviceWidth, float deviceHeight) noexcept;
    /// Moves the picture position (x, y) to the centre and zooms by `factor` (as in `Zoom`).
    KTSOVUGEOM_API g3d_Camera& FitCenterVP(float x, float y, float factor,
                                           bool keepTarget) noexcept;
    /// Fits the sphere from one of the ready views. Another view or the empty sphere does nothing.
    KTSOVUGEOM_API g3d_Camera& Canned(const g3d_Sphere& sphere, g3d_SavedViewIdEnum view) noexcept;

    /// Sets near and far closely around the model, from the sphere of `volume` grown by `margin`
    /// (a fraction of its radius, negative as 0); in perspective near is at least far / 1000, and
    /// window and offsets follow so that the field of view is kept. Does nothing when the volume is
    /// empty or lies behind the eye. The camera does not remember the volume.
    KTSOVUGEOM_API g3d_Camera& SetModelBoundingVolume(const g3d_BoundingVolume& volume,
                                                      float margin) noexcept;
    /// Sets the viewport, then the shape of the window for a device of `deviceWidth` x
    /// `deviceHeight` pixels that are `pixelAspect` times as wide as high, then the mark that the
    /// window matches the device. Sizes of 0 or less, or a refused viewport: does nothing.
    KTSOVUGEOM_API g3d_Camera& CorrectAspect(float deviceWidth, float deviceHeight,
                                             float pixelAspect, float xMin, float xMax, float yMin,
                                             float yMax) noexcept;
    /// Fills `layer` for drawing over or in the scene; the camera stays as it is. `world` true:
    /// world coordinates to clip space. False: picture coordinates to clip space, 2 x - 1, 2 y - 1,
    /// z unchanged. Null does nothing.
    KTSOVUGEOM_API g3d_Camera& SetLayerXForm(bool world, g3d_XForm* layer) noexcept;

    /// Equal (1) when eye, target, up, window, near/far, projection, limits switch, offsets,
    /// viewport and fit distance factor are exactly equal.
    KTSOVUGEOM_API int operator==(const g3d_Camera& other) const noexcept;
    int operator!=(const g3d_Camera& other) const noexcept { return !(*this == other); }

  private:
    struct Axes;
    struct Turn;

    static constexpr unsigned char perspectiveBit = 1u << 0;
    static constexpr unsigned char aspectCorrectedBit = 1u << 4;
    static constexpr unsigned char limitsOffBit = 1u << 5;

    [[nodiscard]] Axes ViewAxes() const noexcept;
    [[nodiscard]] g3d_Double3 ViewDirection(const g3d_Double3& whenDegenerate) const noexcept;
    [[nodiscard]] float LeastWindow() const noexcept;
    [[nodiscard]] float LimitedFactor(float factor) const noexcept;
    [[nodiscard]] Turn TurnAbout(float angleDeg, const g3d_Vector& axis) const noexcept;
    [[nodiscard]] Turn ShortestTurn(const g3d_Vector& from, const g3d_Vector& to) const noexcept;
    void ApplyNearFarRule() noexcept;
    void ScaleOffsets(float factor) noexcept;
    void ScaleWindowAndOffsets(float factor) noexcept;
    void Place(const g3d_Double3& newEye, const g3d_Double3& newTarget) noexcept;
    void StoreProjection(bool perspective) noexcept;
    void StoreNearFar(float nearValue, float farValue) noexcept;
    void StoreWindow(float width, float height) noexcept;
    void TargetBetweenPlanes() noexcept;
    void RotateAbout(const g3d_Double3& centre, const Turn& turn) noexcept;
    void FitAlong(const g3d_Double3& direction, const g3d_Sphere& sphere) noexcept;

    mutable g3d_XForm orientationMatrix;
    mutable g3d_XForm projectionMatrix;
    g3d_Point eye{2, 0, 0, 1};
    g3d_Point target{0, 0, 0, 1};
    g3d_Vector up{0, 1, 0};
    float windowWidth = 1;
    float windowHeight = 1;
    float nearDistance = 1;
    float farDistance = 10000;
    mutable bool orientationStale = true;
    mutable bool projectionStale = true;
    unsigned char modeBits = perspectiveBit;
    float offsetX = 0;
    float offsetY = 0;
    float viewportXMin = 0;
    float viewportXMax = 1;
    float viewportYMin = 0;
    float viewportYMax = 1;
    float fitDistanceFactor = 4;
};
