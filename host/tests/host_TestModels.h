#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/model/hst_Classes.h"
#include "host/model/hst_Part.h"

/// A folder of the test's own, gone with the object.
class host_TemporaryFolder {
  public:
    host_TemporaryFolder() {
        std::string name = ::testing::TempDir() + "ktsovuXXXXXX";
        folder = mkdtemp(name.data());
    }
    ~host_TemporaryFolder() { std::filesystem::remove_all(folder); }
    host_TemporaryFolder(const host_TemporaryFolder&) = delete;
    host_TemporaryFolder& operator=(const host_TemporaryFolder&) = delete;

    [[nodiscard]] std::string Path(const std::string& name) const { return folder / name; }
    /// Writes a file and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return Path(name);
    }
    /// Number of files and folders right in it.
    [[nodiscard]] int FileCount() const {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

  private:
    std::filesystem::path folder;
};

inline std::string host_ReadFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A tetrahedron with the corner `x` on the x axis.
inline hst_Part host_Tetrahedron(const std::string& name, float x) {
    return {name,
            gsl_Matrix(),
            {0, 0, 0, x, 0, 0, 0, 1, 0, 0, 0, 1},
            {0, 2, 1, 0, 1, 3, 1, 2, 3, 0, 3, 2}};
}
