#include "desktop/key_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <set>

#include "platform/files.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr std::string_view kBlanks = " \t";

bool IsOpen(const struct stat& status) {
  const bool is_ours = status.st_uid == geteuid() || status.st_uid == 0;
  return !is_ours || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

// At most `most_bytes` and one more.
std::optional<std::string> ReadBytes(const FileDescriptor& file, size_t most_bytes) {
  std::string bytes;
  char block[4096];
  while (bytes.size() <= most_bytes) {
    const ssize_t count = ::read(file.number(), block, sizeof block);
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    bytes.append(block, static_cast<size_t>(count));
  }
  return bytes;
}

}  // namespace

bool IsOpenToOthers(const NativePath& path) {
  struct stat status {};
  return stat(path.c_str(), &status) != 0 || IsOpen(status);
}

std::optional<KeyFile> KeyFile::Read(const NativePath& path, size_t most_bytes) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file.is_open() || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  const std::optional<std::string> bytes = ReadBytes(file, most_bytes);
  if (!bytes || bytes->size() > most_bytes || bytes->find('\0') != std::string::npos) {
    return std::nullopt;
  }
  KeyFile result;
  result.is_open_to_others_ = IsOpen(status);
  result.Parse(*bytes);
  return result;
}

void KeyFile::Parse(std::string_view bytes) {
  std::string group;
  std::set<std::string> groups;
  bool counts = false;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    if (line.starts_with('[')) {
      group = line.substr(1, line.find(']') - 1);
      counts = groups.insert(group).second;
      continue;
    }
    const size_t equals = line.find('=');
    if (!counts || line.starts_with('#') || equals == std::string_view::npos) continue;
    std::string_view text = line.substr(equals + 1);
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    values_.emplace(std::pair(group, Trimmed(line.substr(0, equals), kBlanks)), text);
  }
}

std::optional<std::string> KeyFile::Get(std::string_view group, std::string_view key) const {
  const auto found = values_.find({std::string(group), std::string(key)});
  return found == values_.end() ? std::nullopt : std::optional(found->second);
}

std::string UnescapeValue(std::string_view text) {
  constexpr std::string_view kEscapes = "sntr\\";
  constexpr std::string_view kMeanings = " \n\t\r\\";
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    const size_t escape = text[i] == '\\' && i + 1 < text.size() ? kEscapes.find(text[i + 1])
                                                                 : std::string_view::npos;
    if (escape == std::string_view::npos) {
      plain += text[i];
    } else {
      plain += kMeanings[escape];
      ++i;
    }
  }
  return plain;
}

}  // namespace ledrix
