#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"
#include "foundation/coreutils/cow_String.h"

/// The stream that `Print` functions write to: text, characters, integers in decimal and doubles
/// with 15 significant digits (`aio_FormatDouble`). Where the text goes is the derived class's
/// matter.
class KTSBASCOREUTILS_API aio_ostream {
  public:
    virtual ~aio_ostream();

    aio_ostream& operator<<(const char* text);
    aio_ostream& operator<<(std::string_view text);
    aio_ostream& operator<<(const cow_String& text);
    aio_ostream& operator<<(char character);
    aio_ostream& operator<<(int value);
    aio_ostream& operator<<(unsigned value);
    aio_ostream& operator<<(double value);

    /// Writes `count` blanks; none for zero or less.
    aio_ostream& Blanks(int count);

  protected:
    aio_ostream() = default;
    aio_ostream(const aio_ostream&) = default;
    aio_ostream& operator=(const aio_ostream&) = default;

    virtual void Put(std::string_view text) = 0;
};

/// Gathers what is written in memory.
class KTSBASCOREUTILS_API aio_StringStream : public aio_ostream {
  public:
    aio_StringStream() = default;
    ~aio_StringStream() override;
    aio_StringStream(const aio_StringStream&) = delete;
    aio_StringStream& operator=(const aio_StringStream&) = delete;

    /// What was written so far.
    [[nodiscard]] cow_String Text() const;

  protected:
    void Put(std::string_view text) override;

  private:
    char* buffer = nullptr;
    std::size_t length = 0;
    std::size_t capacity = 0;
};

/// Writes to the standard output of the process.
class KTSBASCOREUTILS_API aio_StandardOutput : public aio_ostream {
  public:
    ~aio_StandardOutput() override;

  protected:
    void Put(std::string_view text) override;
};
