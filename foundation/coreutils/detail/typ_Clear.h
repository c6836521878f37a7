#pragma once

/// Forgets every archive component: the library's shut-down.
void typ_ClearArchCompTable() noexcept;
