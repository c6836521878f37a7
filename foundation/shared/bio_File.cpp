#include "foundation/shared/bio_File.h"

#include <cstdio>
#include <memory>
#include <string_view>

#if defined(_WIN32)
#include <windows.h>

#include <string>
#endif

namespace {

struct Close {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

#if defined(_WIN32)

/// The text in UTF-16; empty when it is no UTF-8.
std::wstring Wide(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int wideLength =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideLength), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, wide.data(),
                        wideLength);
    return wide;
}

// The narrow functions of Windows take names in the code page of the machine.
std::FILE* Open(std::string_view path, const char* mode) {
    return _wfopen(Wide(path).c_str(), Wide(mode).c_str());
}

#else

std::FILE* Open(std::string_view path, const char* mode) { return std::fopen(path.data(), mode); }

#endif

/// Null when the path names no file that opens.
File OpenFile(const KTSBasUtlFilePath& path, const char* mode) {
    const cow_String& text = path.Path();
    const std::string_view view(text.Characters(), static_cast<std::size_t>(text.Length()));
    return File(view.find('\0') == view.npos ? Open(view, mode) : nullptr);
}

}  // namespace

std::optional<bio_Buffer> bio_ReadFile(const KTSBasUtlFilePath& path) {
    constexpr std::size_t chunk = 65536;
    const File file = OpenFile(path, "rb");
    if (!file) return std::nullopt;
    bio_Buffer content;
    for (std::size_t count = chunk; count == chunk;) {
        const std::size_t end = content.Size();
        count = std::fread(content.Extend(chunk), 1, chunk, file.get());
        content.Truncate(end + count);
    }
    if (std::ferror(file.get())) return std::nullopt;
    return content;
}

bool bio_WriteFile(const KTSBasUtlFilePath& path, const void* bytes, std::size_t size) {
    File file = OpenFile(path, "wb");
    if (!file) return false;
    const bool isWritten = std::fwrite(bytes, 1, size, file.get()) == size;
    // What is still buffered may fail to reach the file.
    return std::fclose(file.release()) == 0 && isWritten;
}
