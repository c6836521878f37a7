#include "host/picture/pic_PictureFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "host/model/hst_Error.h"

namespace {

/// The ending of the file's name in small letters, whatever the language of the user.
std::string Ending(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    });
    return ending;
}

/// Writes a new file; 0, or the error number of what failed.
int WriteNew(const std::string& path, const std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wbx");
    if (!file) return errno;
    int error = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) error = errno;
    if (std::fclose(file) != 0 && error == 0) error = errno;
    if (error != 0) std::remove(path.c_str());
    return error;
}

}  // namespace

pic_Format pic_FormatOf(const std::string& path) {
    const std::string ending = Ending(path);
    if (ending == ".png") return pic_Format::Png;
    if (ending == ".svg") return pic_Format::Svg;
    throw hst_Error(path, "a picture's name ends in .png or .svg");
}

void pic_PictureFile::RequireWritable(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::path file(path);
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    (void)pic_FormatOf(path);
    if (std::filesystem::is_directory(file, ignored)) throw hst_Error(path, "is a directory");
    if (!std::filesystem::is_directory(folder, ignored)) {
        throw hst_Error(path, "there is no folder '" + folder.string() + "'");
    }
    const bool mayReplace = access(path.c_str(), W_OK) == 0 || errno == ENOENT;
    if (!mayReplace || access(folder.c_str(), W_OK | X_OK) != 0) {
        throw hst_Error(path, std::string("cannot be written: ") + std::strerror(errno));
    }
}

pic_PictureFile::pic_PictureFile(std::string filePath, const std::string& bytes)
    : path(std::move(filePath)), temporary(path + '.' + std::to_string(getpid()) + ".part") {
    const int error = WriteNew(temporary, bytes);
    if (error != 0) {
        throw hst_Error(path, std::string("cannot be written: ") + std::strerror(error));
    }
}

pic_PictureFile::~pic_PictureFile() {
    if (!temporary.empty()) std::remove(temporary.c_str());
}

void pic_PictureFile::Commit() {
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        throw hst_Error(path, std::string("cannot be written: ") + std::strerror(errno));
    }
    temporary.clear();
}
