#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/import/imp_ChildProcess.h"
#include "host/model/hst_Part.h"

/// The stream of parts between the child that reads a file and this process: messages of a kind and
/// a body, in the byte order of the machine that both run on.
enum class imp_MessageEnm : std::uint8_t {
    Progress = 1,  ///< done part of the reading in 1/1000
    Part = 2,
    Failure = 3,  ///< why the file is refused
    End = 4,      ///< number of parts sent
};

/// One part as the reader of a file found it: placed by the first three rows of a 4 x 4 matrix.
struct imp_RawPart {
    std::string name;
    double placement[3][4];
    std::vector<float> positions;
    std::vector<int> triangles;
};

/// The child's end.
class imp_PartWriter {
  public:
    explicit imp_PartWriter(int pipe) : descriptor(pipe) {}

    void Progress(double fraction);
    void Part(const imp_RawPart& part);
    void Failure(const std::string& cause);
    void End();

  private:
    void Put(const void* bytes, std::size_t count);
    template <class T>
    void Put(const T& value) {
        Put(&value, sizeof value);
    }

    int descriptor;
    std::uint32_t partCount = 0;
};

/// This process's end. It trusts nothing that comes: counts are held against a bound, memory grows
/// with the bytes that are there, and every part is checked by `hst_Part::Fault`.
class imp_PartReader {
  public:
    /// Reads the parts of `file` from `child`; all parts together take `byteLimit` bytes at most.
    imp_PartReader(imp_ChildProcess& child, const std::string& file, std::uint64_t byteLimit)
        : source(child), fileName(file), bytesLeft(byteLimit) {}

    /// Called with the done part of the reading, 0 to 1.
    void OnProgress(std::function<void(double)> callback) { onProgress = std::move(callback); }

    /// Reads the parts up to the end of the stream. Throws `hst_Error` when the child failed, died
    /// or sent anything that is not right.
    [[nodiscard]] std::vector<hst_Part> ReadAll();

  private:
    void Get(void* bytes, std::size_t count);
    template <class T>
    T Get() {
        T value;
        Get(&value, sizeof value);
        return value;
    }
    template <class T>
    std::vector<T> GetList(std::uint64_t count);
    std::string GetText();
    hst_Part GetPart();
    [[noreturn]] void Refuse(const std::string& cause) const;

    imp_ChildProcess& source;
    std::string fileName;
    std::uint64_t bytesLeft;
    std::function<void(double)> onProgress;
};
