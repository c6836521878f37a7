#include "gsl/gsl_Util.h"

#include <chrono>

template class omi_SingletonBase<gsl_Util>;
template class omi_Singleton<gsl_Util>;

gsl_Util::gsl_Util() noexcept
    : creationTime(std::chrono::steady_clock::now().time_since_epoch().count()) {}
