#include "host/import/imp_PartStream.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"

namespace {

constexpr std::uint32_t kMaxText = 65536;
constexpr std::uint64_t kBlockBytes = 1 << 20;

gsl_Matrix MakeMatrix(const double (&rows)[3][4]) {
    gsl_Matrix matrix;
    for (int column = 0; column < 4; ++column) {
        matrix.SetColumn(column, gsl_Vector(rows[0][column], rows[1][column], rows[2][column]));
    }
    return matrix;
}

}  // namespace

void imp_PartWriter::Put(const void* bytes, std::size_t count) {
    // Without a reader there is nobody left to tell.
    if (!imp_WriteAll(descriptor, bytes, count)) _exit(EXIT_FAILURE);
}

void imp_PartWriter::Progress(double fraction) {
    Put(imp_MessageEnm::Progress);
    Put(static_cast<std::uint32_t>(std::clamp(fraction, 0.0, 1.0) * 1000));
}

void imp_PartWriter::Part(const imp_RawPart& part) {
    Put(imp_MessageEnm::Part);
    Put(static_cast<std::uint32_t>(part.name.size()));
    Put(part.name.data(), part.name.size());
    Put(part.placement);
    Put(static_cast<std::uint64_t>(part.positions.size()));
    Put(static_cast<std::uint64_t>(part.triangles.size()));
    Put(part.positions.data(), part.positions.size() * sizeof(float));
    Put(part.triangles.data(), part.triangles.size() * sizeof(int));
    ++partCount;
}

void imp_PartWriter::Failure(const std::string& cause) {
    const std::string text = cause.substr(0, kMaxText);
    Put(imp_MessageEnm::Failure);
    Put(static_cast<std::uint32_t>(text.size()));
    Put(text.data(), text.size());
}

void imp_PartWriter::End() {
    Put(imp_MessageEnm::End);
    Put(partCount);
}

void imp_PartReader::Refuse(const std::string& cause) const { throw hst_Error(fileName, cause); }

void imp_PartReader::Get(void* bytes, std::size_t count) {
    char* next = static_cast<char*>(bytes);
    while (count > 0) {
        const std::size_t got = source.Read(next, count);
        if (got == 0) {
            const std::string cause = source.Finish();
            Refuse(cause.empty() ? "its reader ended half-way" : cause);
        }
        next += got;
        count -= got;
    }
}

template <class T>
std::vector<T> imp_PartReader::GetList(std::uint64_t count) {
    if (count > bytesLeft / sizeof(T) || count > std::numeric_limits<int>::max()) {
        Refuse("its triangles need more memory than allowed (--memory-limit)");
    }
    bytesLeft -= count * sizeof(T);
    std::vector<T> values;
    while (values.size() < count) {
        const std::size_t start = values.size();
        values.resize(start + std::min<std::uint64_t>(count - start, kBlockBytes / sizeof(T)));
        Get(values.data() + start, (values.size() - start) * sizeof(T));
    }
    return values;
}

std::string imp_PartReader::GetText() {
    const auto length = Get<std::uint32_t>();
    if (length > kMaxText) Refuse("its reader sent a text of impossible length");
    std::string text(length, '\0');
    Get(text.data(), length);
    return hst_CleanName(text);
}

hst_Part imp_PartReader::GetPart() {
    std::string name = GetText();
    double placement[3][4];
    Get(placement, sizeof placement);
    const auto positionCount = Get<std::uint64_t>();
    const auto triangleCount = Get<std::uint64_t>();
    std::vector<float> positions = GetList<float>(positionCount);
    std::vector<int> triangles = GetList<int>(triangleCount);
    hst_Part part(std::move(name), MakeMatrix(placement), std::move(positions),
                  std::move(triangles));
    if (const std::string fault = part.Fault(); !fault.empty()) {
        throw hst_Error(fileName, part.Name(), fault);
    }
    return part;
}

std::vector<hst_Part> imp_PartReader::ReadAll() {
    std::vector<hst_Part> parts;
    for (;;) {
        switch (Get<imp_MessageEnm>()) {
            case imp_MessageEnm::Progress: {
                const auto thousandths = Get<std::uint32_t>();
                if (onProgress) onProgress(std::min(thousandths, 1000u) / 1000.0);
                break;
            }
            case imp_MessageEnm::Part:
                parts.push_back(GetPart());
                break;
            case imp_MessageEnm::Failure:
                Refuse(GetText());
            case imp_MessageEnm::End: {
                const bool complete = Get<std::uint32_t>() == parts.size();
                const std::string cause = source.Finish();
                if (!cause.empty()) Refuse(cause);
                if (!complete) Refuse("its reader lost parts");
                return parts;
            }
            default:
                Refuse("its reader sent something that is no message");
        }
    }
}
