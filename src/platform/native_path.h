// Paths as the file system has them, and the path rules of the program.
//
// A NativePath holds the file system's own bytes. They go to open() as they are; only PathToSjis
// and PathToUtf8 turn them into text, for printing.
//
// PathStyle names the rules: kWindows has "\" as the separator and drive letters; kPosix is the
// same rules with "/" and no drive letter.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "text/sjis_text.h"

namespace ledrix {

enum class PathStyle { kWindows, kPosix };
inline constexpr PathStyle kPlatformPathStyle = PathStyle::kPosix;

class NativePath {
 public:
  NativePath() = default;
  explicit NativePath(std::string bytes) : bytes_(std::move(bytes)) {}

  const std::string& bytes() const { return bytes_; }
  const char* c_str() const { return bytes_.c_str(); }
  bool empty() const { return bytes_.empty(); }
  // The path with more bytes directly behind it: no separator is put between.
  NativePath operator+(std::string_view more) const {
    return NativePath(bytes_ + std::string(more));
  }

  friend bool operator==(const NativePath& a, const NativePath& b) = default;

 private:
  std::string bytes_;
};

constexpr char Separator(PathStyle style) {
  return style == PathStyle::kWindows ? '\\' : '/';
}

// The path with a separator at its end. A path of one character is a drive letter in Windows
// style and gets ":" first; the empty path becomes the separator alone.
NativePath AddBackslash(const NativePath& path, PathStyle style = kPlatformPathStyle);

// The path without one separator at its end; the drive letter rule of AddBackslash comes first.
NativePath StripBackslash(const NativePath& path, PathStyle style = kPlatformPathStyle);

// The text after the last separator; empty without one.
std::string FileNameOf(const NativePath& path, PathStyle style = kPlatformPathStyle);

// The path up to and including the last separator; the whole path without one.
NativePath DirOf(const NativePath& path, PathStyle style = kPlatformPathStyle);

// The text after the last separator (the whole path without one), without its last "." and what
// follows it.
std::string BaseNameOf(const NativePath& path, PathStyle style = kPlatformPathStyle);

// The text from the last "." on when that "." lies after the last separator; otherwise empty.
std::string ExtensionOf(const NativePath& path, PathStyle style = kPlatformPathStyle);

// The text after the last separator (the whole path without one) with every "." made "_".
std::string NameForPattern(const NativePath& path, PathStyle style = kPlatformPathStyle);

// An absolute path is returned as it is; before any other, the empty one as well, the current
// folder is put. Links and ".." stay as they stand.
NativePath MakeAbsolute(const NativePath& path);

// For listings and records: "?" for each character that Shift_JIS lacks, each byte that is no
// valid UTF-8, and each CR and LF, which would break a line in two.
SjisText PathToSjis(const NativePath& path);

// For messages: U+FFFD for each byte that is no valid UTF-8, "?" for CR and LF.
std::string PathToUtf8(const NativePath& path);

}  // namespace ledrix
