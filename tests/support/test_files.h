// Folders and files of a test, and byte-exact comparison with recorded outputs.
#pragma once

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "platform/native_path.h"

namespace ledrix::test {

// A new folder under /tmp whose path always has the same length, removed with what it holds.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& path() const { return path_; }  // without a separator at its end
  NativePath At(std::string_view name) const { return NativePath(path_ + "/" + std::string(name)); }
  // Writes a file and returns its path.
  NativePath Write(std::string_view name, std::string_view bytes) const;

 private:
  std::string path_;
};

// Seconds since the epoch of every file and clock that a test fixes: 2024/03/09 14:05:07 in Japan.
inline constexpr time_t kTestTime = 1709960707;

std::string ReadFile(const NativePath& path);
bool FileExists(const NativePath& path);
// Waits up to ten seconds for a file that another program makes; false when it does not.
bool WaitForFile(const NativePath& path);
void SetModified(const NativePath& path, time_t seconds, long nanoseconds = 0);

// The lines of a Shift_JIS file as UTF-8, without their CR LF. Fails the test when a line ends
// otherwise.
std::vector<std::string> ReadLines(const NativePath& path);

// Joins lines with CR LF behind each.
std::string Lines(const std::vector<std::string>& lines);

// The rows of tests/data/tables/`name`: fields between tabs, in which \r, \n, \t, \\ and \xHH
// stand for bytes and \(N:TEXT) for N times the text. Lines that begin with "#" are comments.
std::vector<std::vector<std::string>> ReadTable(std::string_view name);

// The piece so many times.
std::string Repeat(std::string_view piece, size_t count);

// UTF-8 to Shift_JIS bytes.
std::string Sjis(std::string_view utf8);

// Fails the test unless the bytes are those of tests/golden/`name`, in which the folder's path
// reads "/tmp/ledrix.######". With LEDRIX_APPROVE=1 in the environment records them instead. A name
// that ends in ".txt" is one of a UTF-8 text, any other one of Shift_JIS.
void ExpectGolden(std::string_view name, std::string bytes, const TempFolder& folder);

}  // namespace ledrix::test
