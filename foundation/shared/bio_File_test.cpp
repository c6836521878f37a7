#include "foundation/shared/bio_File.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

KTSBasUtlFilePath Utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return KTSBasUtlFilePath(
        std::string_view(reinterpret_cast<const char*>(text.data()), text.size()));
}

TEST(bio_File, NamesAreUtf8AndBytesAreKeptOnEveryPlatform) {
    const std::filesystem::path folder = u8"bio_File_test größe 角度 Ψ";
    const std::filesystem::path file = folder / u8"näme \U0001F4D0.bin";
    std::filesystem::create_directory(folder);
    std::string bytes = "\r\n\n\x1A";
    bytes.resize(200000, '\0');
    for (const std::string& content : {bytes, std::string(65536, '\n'), std::string()}) {
        ASSERT_TRUE(bio_WriteFile(Utf8(file), content.data(), content.size()));
        EXPECT_EQ(std::filesystem::file_size(file), content.size());
        const std::optional<bio_Buffer> read = bio_ReadFile(Utf8(file));
        ASSERT_TRUE(read);
        EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(read->Data()), read->Size()),
                  content);
    }
    EXPECT_FALSE(bio_ReadFile(Utf8(folder)));
    EXPECT_FALSE(bio_WriteFile(Utf8(folder), "x", 1));
    std::filesystem::remove_all(folder);
    EXPECT_FALSE(bio_ReadFile(Utf8(file)));
    EXPECT_FALSE(bio_WriteFile(Utf8(file), "x", 1));
}

TEST(bio_File, APathThatIsEmptyOrHoldsAZeroByteNamesNoFile) {
    for (const std::string_view path :
         {std::string_view(), std::string_view("bio_File_test.bin\0x", 19)}) {
        EXPECT_FALSE(bio_WriteFile(KTSBasUtlFilePath(path), "x", 1));
        EXPECT_FALSE(bio_ReadFile(KTSBasUtlFilePath(path)));
    }
    EXPECT_FALSE(std::filesystem::exists("bio_File_test.bin"));
}

}  // namespace
