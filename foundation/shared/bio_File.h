#pragma once

#include <cstddef>
#include <optional>

#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/KTSBasUtlFilePath.h"
#include "foundation/shared/bio_Buffer.h"

// The bytes of a stream from and to a file. A path is UTF-8 on every platform, whatever the code
// page or the locale of the process is, and bytes are never translated.

/// The content of the file; nothing when the path is empty, holds a zero byte or is no name for
/// the system, or the file cannot be opened and read to its end. Throws `std::bad_alloc` for a file
/// that memory does not hold.
[[nodiscard]] KTSBASSHARED_API std::optional<bio_Buffer> bio_ReadFile(
    const KTSBasUtlFilePath& path);

/// Creates the file, or replaces what it held, with the `size` bytes at `bytes`; false when the
/// path is none (as above) or not all can be written, which may leave a part of the bytes.
[[nodiscard]] KTSBASSHARED_API bool bio_WriteFile(const KTSBasUtlFilePath& path, const void* bytes,
                                                  std::size_t size);
