#include "support.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>

#include "platform/temporary_copy.h"
#include "settings/pattern_slots.h"

namespace ledrix::fuzz {
namespace {

constexpr const char* kCharsets[] = {
    "UTF-8",      "EUC-JP",   "ISO-2022-JP",     "SJIS",           "UTF-7",    "UTF-16",
    "UTF-16LE",   "UTF-16BE", "_autodetect",     "FULLAUTO(遅め)", "UNICODE",  "UCS-2",
    "ISO-8859-1", "GB18030",  "ISO-2022-JP-2",   "EUC-KR",         "BIG5",     "UTF-32",
    "EUC-TW",     "IBM930",   "ISO-2022-CN-EXT", "TCVN",           "Shift_JIS"};

// The folder and a process that removes it when this one has ended.
NativePath MakeWorkFolder() {
  const bool has_memory = access("/dev/shm", W_OK) == 0;
  std::string name = (has_memory ? "/dev/shm/" : TemporaryFolder().bytes()) + "ledrix.fuzz.XXXXXX";
  int ends[2];
  Require(mkdtemp(name.data()) != nullptr && pipe2(ends, O_CLOEXEC) == 0, "a folder to work in");
  if (fork() == 0) {
    char byte;
    setsid();  // what ends the fuzzer from the keyboard must not end this
    close(ends[1]);
    while (read(ends[0], &byte, 1) > 0) {
    }
    std::error_code ignored;
    std::filesystem::remove_all(name, ignored);
    _exit(0);
  }
  close(ends[0]);
  return NativePath(name + "/");
}

}  // namespace

void Require(bool holds, const char* what) {
  if (holds) return;
  (void)std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

unsigned Input::Byte() {
  if (bytes_.empty()) return 0;
  const unsigned byte = static_cast<unsigned char>(bytes_.front());
  bytes_.remove_prefix(1);
  return byte;
}

int Input::Number(int lowest, int highest, int usual) {
  const int count = highest - lowest + 1;
  unsigned steps = Byte();
  if (count > 256) steps = steps << 8 | Byte();
  return lowest + (usual - lowest + static_cast<int>(steps)) % count;
}

std::string_view Input::Piece() {
  const size_t end = std::min(bytes_.find('\x1C'), bytes_.size());
  const std::string_view piece = bytes_.substr(0, end);
  bytes_.remove_prefix(std::min(end + 1, bytes_.size()));
  return piece;
}

OptionRecord TakeOptions(Input& input) {
  OptionRecord record;
  if (!input.Flag()) return record;
  const auto take = [&](const OptionField& field) {
    if (field.number == nullptr) return;
    int16_t& number = field.number(record);
    number = static_cast<int16_t>(input.Number(field.lowest - 1, field.highest + 1, number));
  };
  for (const OptionKey key : PatternKeys()) take(FieldOf(key));
  take(FieldOf("MergeOld"));
  return record;
}

std::string TakeCharset(Input& input) {
  return kCharsets[input.Number(0, std::ssize(kCharsets) - 1, 0)];
}

MemoryFile::MemoryFile() : descriptor_(memfd_create("input", MFD_CLOEXEC)) {
  Require(descriptor_ >= 0, "a file in memory");
}

MemoryFile::~MemoryFile() {
  close(descriptor_);
}

NativePath MemoryFile::path() const {
  return NativePath("/proc/self/fd/" + std::to_string(descriptor_));
}

void MemoryFile::Fill(std::string_view bytes) const {
  Require(ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, bytes.data(), bytes.size(), 0) ==
                                                static_cast<ssize_t>(bytes.size()),
          "a file in memory is written");
}

InputFile MemoryFile::Open(std::string_view bytes) const {
  Fill(bytes);
  return std::move(InputFile::OpenRegular(path()).value());
}

const NativePath& WorkFolder() {
  static const NativePath folder = MakeWorkFolder();
  return folder;
}

void WriteFile(const NativePath& path, std::string_view bytes) {
  Result<OutputFile> file = OutputFile::Create(path);
  Require(file.ok(), "a file is made");
  file.value().Write(bytes);
  Require(file.value().Close().ok(), "a file is written");
}

std::string ReadFile(const NativePath& path) {
  return ReadWholeFile(path).value();
}

}  // namespace ledrix::fuzz
