#pragma once

#include <string>

enum class pic_Format { Png, Svg };

/// The format that the ending of a file name asks for, in small or capital letters. Throws
/// `hst_Error` for another ending.
[[nodiscard]] pic_Format pic_FormatOf(const std::string& path);

/// A picture on its way to its file. The bytes go to a file beside it that takes its place with
/// `Commit`, so that nobody sees half a picture, and what was there stays when something fails.
/// Every failure is an `hst_Error` that names the file.
class pic_PictureFile {
  public:
    /// Throws unless a picture can be written there. Writes nothing.
    static void RequireWritable(const std::string& path);

    pic_PictureFile(std::string path, const std::string& bytes);
    /// Takes the bytes away again unless they were committed.
    ~pic_PictureFile();
    pic_PictureFile(const pic_PictureFile&) = delete;
    pic_PictureFile& operator=(const pic_PictureFile&) = delete;

    void Commit();

  private:
    std::string path;
    std::string temporary;
};
