#pragma once

#include "foundation/coreutils/cow_String.h"

/// The path of a file as a user or a script gave it: UTF-8, with the separators of its origin. It
/// is carried, not looked at: whoever opens the file interprets it.
class KTSBasUtlFilePath {
  public:
    /// The empty path, which names no file.
    KTSBasUtlFilePath() noexcept = default;
    explicit KTSBasUtlFilePath(const cow_String& path) noexcept : text(path) {}

    [[nodiscard]] const cow_String& Path() const noexcept { return text; }
    [[nodiscard]] bool IsEmpty() const noexcept { return text.IsEmpty(); }

    /// Equality of the texts, byte for byte.
    friend bool operator==(const KTSBasUtlFilePath&, const KTSBasUtlFilePath&) noexcept = default;

  private:
    cow_String text;
};

/// The path of a model database, a type of its own so that commands cannot mix it up with that of
/// any other file.
class KTSBasUtlFilePathCae : public KTSBasUtlFilePath {
  public:
    using KTSBasUtlFilePath::KTSBasUtlFilePath;

    friend bool operator==(const KTSBasUtlFilePathCae&,
                           const KTSBasUtlFilePathCae&) noexcept = default;
};
