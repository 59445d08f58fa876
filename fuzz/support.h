// What the fuzz targets share: choices and texts cut off an input, files to read and to write, and
// a job without anybody who looks on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/native_path.h"
#include "run/run_services.h"
#include "settings/option_record.h"

namespace ledrix::fuzz {

// Ends the program, and tells what does not hold, unless it does.
void Require(bool holds, const char* what);

// An input on its way through a target, which takes numbers and texts off its front.
class Input {
 public:
  explicit Input(std::string_view bytes) : bytes_(bytes) {}

  // A number of a range, `usual` for zero bytes and at the end of the input.
  int Number(int lowest, int highest, int usual);
  bool Flag() { return Number(0, 1, 0) == 1; }
  // The bytes up to the next separator 1C.
  std::string_view Piece();
  std::string_view Rest() const { return bytes_; }

 private:
  unsigned Byte();
  std::string_view bytes_;
};

// The options of a compare: all defaults, or any, now and then one beyond its range.
OptionRecord TakeOptions(Input& input);

// The name of a charset that is available.
std::string TakeCharset(Input& input);

// A file in memory that is filled again and again.
class MemoryFile {
 public:
  MemoryFile();
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  NativePath path() const;
  void Fill(std::string_view bytes) const;
  // Fills and opens it.
  InputFile Open(std::string_view bytes) const;

 private:
  int descriptor_;
};

// A folder of this process, in memory where the system has such; it goes with the process, however
// that ends. Ends in a separator.
const NativePath& WorkFolder();
void WriteFile(const NativePath& path, std::string_view bytes);
// REQUIRES: the file can be read.
std::string ReadFile(const NativePath& path);

// One run of a job at a fixed time. Nothing is shown to anybody.
struct QuietRun {
  class Platform : public PlatformServices {
    LocalTime Now() override { return {2024, 3, 9, 14, 5, 7}; }
  };
  OptionRecord options;
  JobRecord job;
  Platform platform;
  RunFrontEnd front_end;
  RunServices services{options, job, platform, front_end};
};

}  // namespace ledrix::fuzz
