#include "gsl/gsl_Util.h"

#include <chrono>

constinit gsl_Util* gsl_Util::singleton = nullptr;

gsl_Util::gsl_Util() noexcept
    : creationTime(std::chrono::steady_clock::now().time_since_epoch().count()) {}
