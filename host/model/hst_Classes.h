#pragma once

#include <cstdint>

#include "foundation/coreutils/typ_ArchCompTable.h"

/// The archive component of this program's own persistent classes. Rows keep their place for good.
inline constexpr unsigned short hst_ARCH_COMPONENT = 1201;
inline constexpr std::uint32_t hst_PART_CLASS = typ_TypeId(hst_ARCH_COMPONENT, 1);
inline constexpr std::uint32_t hst_CHECK_CLASS = typ_TypeId(hst_ARCH_COMPONENT, 2);

/// Makes the classes of this program known to the archives as long as it lives. One per process.
class hst_ClassRegistration {
  public:
    hst_ClassRegistration();
    ~hst_ClassRegistration();
    hst_ClassRegistration(const hst_ClassRegistration&) = delete;
    hst_ClassRegistration& operator=(const hst_ClassRegistration&) = delete;
};
