#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/omi_Singleton.h"

/// The tolerances that every geometric comparison of the process reads. One instance, created by
/// the start-up of the geometry module or on first use, and only read afterwards (apart from
/// `SetOldDisplayFactor`).
class KTSOVUGEOM_API gsl_Util {
  public:
    /// The instance; a load and a test once it exists.
    [[nodiscard]] static inline gsl_Util& Instance();

    /// Linear tolerance in model units: points coincide, vectors are null, segments are degenerate.
    [[nodiscard]] double LinTol() const noexcept { return linearTolerance; }
    /// Tolerance of squared distances.
    [[nodiscard]] double LinTolSq() const noexcept { return squaredLinearTolerance; }
    /// Angular tolerance in radians: orthogonality, degenerate cross products, axis extraction.
    [[nodiscard]] double AngTol() const noexcept { return angularTolerance; }

    /// Sets the third display factor to 15 (`old` true) or back to 11.25; nothing else changes.
    void SetOldDisplayFactor(bool old) noexcept { displayFactors[2] = old ? 15.0 : 11.25; }

  private:
    friend class omi_Singleton<gsl_Util>;
    friend class omi_SingletonBase<gsl_Util>;
    static gsl_Util* singleton;
    friend struct gsl_UtilTestAccess;
    gsl_Util() noexcept;
    ~gsl_Util() = default;

    double linearTolerance = 1e-6;
    double squaredLinearTolerance = 1e-12;
    double angularTolerance = 1e-10;
    [[maybe_unused]] double coarseTolerance = 1e-4;
    /// Kept: construction does not write this field, so it holds whatever the allocation held, and
    /// nothing reads it. One would expect a tolerance here; it only keeps the places of the others.
    [[maybe_unused]] double unset;
    double displayFactors[5] = {45.0, 22.5, 11.25, 5.625, 2.8125};
    /// Ticks of the steady clock at creation.
    [[maybe_unused]] std::int64_t creationTime;
};

inline gsl_Util& gsl_Util::Instance() { return omi_Singleton<gsl_Util>::Instance(); }
