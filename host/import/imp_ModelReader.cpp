#include "host/import/imp_ModelReader.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <limits>
#include <new>
#include <system_error>

#include "host/import/imp_PartStream.h"
#include "host/import/imp_SceneReader.h"
#include "host/model/hst_Error.h"

namespace {

void RequireReadableFile(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw hst_Error(path, status.type() == std::filesystem::file_type::not_found
                                  ? "no such file"
                                  : error.message());
    }
    if (std::filesystem::is_directory(status)) throw hst_Error(path, "is a directory");
    if (!std::filesystem::is_regular_file(status)) throw hst_Error(path, "is no regular file");
    errno = 0;
    if (!std::ifstream(path, std::ios::binary)) {
        throw hst_Error(path, "cannot be opened: " + std::generic_category().message(errno));
    }
}

/// The whole life of the child: reads the file and sends the parts or the cause of the refusal.
int ReadInChild(const std::string& path, const imp_Limits& limits, int pipe) noexcept {
    try {
        imp_PartWriter writer(pipe);
        const std::string outOfMemory = "it needs more memory than " +
                                        std::to_string(limits.memoryMiB) + " MiB (--memory-limit)";
        try {
            imp_ReadScene(path, writer);
            return EXIT_SUCCESS;
        } catch (const std::bad_alloc&) {
            writer.Failure(outOfMemory);
        } catch (const std::exception& error) {
            const std::string cause = error.what();
            // The importer library turns its exceptions into texts.
            writer.Failure(cause.find("bad_alloc") == std::string::npos ? cause : outOfMemory);
        }
    } catch (...) {
        return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}

}  // namespace

imp_Limits imp_ReadLimits::For(std::uintmax_t fileBytes) const {
    const std::uint64_t fileMiB = fileBytes >> 20;
    constexpr std::uint64_t kMaxSeconds = std::numeric_limits<int>::max();
    return {memoryMiB.value_or(BASE_MIB + MIB_PER_MIB * fileMiB),
            seconds.value_or(
                static_cast<int>(std::min(BASE_SECONDS + SECONDS_PER_MIB * fileMiB, kMaxSeconds)))};
}

std::vector<hst_Part> imp_ReadModel(const std::string& path, const imp_ReadLimits& readLimits,
                                    const std::function<void(double)>& onProgress) {
    RequireReadableFile(path);
    const imp_Limits limits = readLimits.For(std::filesystem::file_size(path));
    imp_ChildProcess child(limits, [&](int pipe) { return ReadInChild(path, limits, pipe); });
    double fraction = -1;
    child.OnWait([&] { onProgress(fraction); });
    imp_PartReader reader(child, path, limits.memoryMiB << 20);
    reader.OnProgress([&](double done) { onProgress(fraction = done); });
    return reader.ReadAll();
}
