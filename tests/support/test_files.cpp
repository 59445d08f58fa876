#include "support/test_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "text/ascii.h"
#include "text/code_page_932.h"

namespace ledrix::test {
namespace {

constexpr std::string_view kFolderInGolden = "/tmp/ledrix.######";

void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at)) {
    text.replace(at, what.size(), with);
  }
}

// Directory listings write the folder with backslashes.
std::string InGoldenForm(std::string bytes, const TempFolder& folder) {
  std::string what = folder.path();
  std::string with(kFolderInGolden);
  ReplaceAll(bytes, what, with);
  std::replace(what.begin(), what.end(), '/', '\\');
  std::replace(with.begin(), with.end(), '/', '\\');
  ReplaceAll(bytes, what, with);
  return bytes;
}

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string Unescaped(const std::string& field) {
  std::string bytes;
  for (size_t i = 0; i < field.size(); ++i) {
    const char letter = field[i] == '\\' ? field.at(++i) : '\0';
    if (letter == 'x') {
      bytes += static_cast<char>(std::stoi(field.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else if (letter == '(') {
      const size_t begin = field.find(':', i) + 1;
      const size_t end = field.find(')', begin);
      bytes += Repeat(Unescaped(field.substr(begin, end - begin)), std::stoul(field.substr(i + 1)));
      i = end;
    } else {
      bytes += letter == 'n' ? '\n' : letter == 'r' ? '\r' : letter == 't' ? '\t' : field[i];
    }
  }
  return bytes;
}

}  // namespace

TempFolder::TempFolder() {
  char name[] = "/tmp/ledrix.XXXXXX";
  path_ = mkdtemp(name);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

NativePath TempFolder::Write(std::string_view name, std::string_view bytes) const {
  NativePath path = At(name);
  std::ofstream(path.bytes(), std::ios::binary) << bytes;
  return path;
}

std::string ReadFile(const NativePath& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path.bytes(), std::ios::binary).rdbuf();
  return bytes.str();
}

bool FileExists(const NativePath& path) {
  return std::filesystem::exists(std::filesystem::symlink_status(path.bytes()));
}

bool WaitForFile(const NativePath& path) {
  for (int i = 0; i < 1000 && !FileExists(path); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return FileExists(path);
}

void SetModified(const NativePath& path, time_t seconds, long nanoseconds) {
  const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

std::vector<std::string> ReadLines(const NativePath& path) {
  const std::string bytes = ReadFile(path);
  std::vector<std::string> lines;
  for (std::string& line : SplitLines(bytes)) {
    EXPECT_TRUE(!line.empty() && line.back() == '\r') << "line without CR LF in " << path.bytes();
    if (!line.empty()) line.pop_back();
    lines.push_back(DecodeSjis(SjisView::FromBytes(line)));
  }
  EXPECT_TRUE(bytes.empty() || bytes.back() == '\n') << "no end of the last line";
  return lines;
}

std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

std::vector<std::vector<std::string>> ReadTable(std::string_view name) {
  std::vector<std::vector<std::string>> rows;
  const std::string path = LEDRIX_DATA_FOLDER "/tables/" + std::string(name);
  for (const std::string& line : SplitLines(ReadFile(NativePath(path)))) {
    if (line.starts_with('#')) continue;
    rows.emplace_back();
    for (const std::string& field : SplitAt(line, '\t')) rows.back().push_back(Unescaped(field));
  }
  EXPECT_FALSE(rows.empty()) << path;
  return rows;
}

std::string Repeat(std::string_view piece, size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) text += piece;
  return text;
}

std::string Sjis(std::string_view utf8) {
  return EncodeSjis(utf8).bytes();
}

void ExpectGolden(std::string_view name, std::string bytes, const TempFolder& folder) {
  const NativePath golden(std::string(LEDRIX_GOLDEN_FOLDER "/") + std::string(name));
  bytes = InGoldenForm(std::move(bytes), folder);
  if (std::getenv("LEDRIX_APPROVE") != nullptr) {
    if (!::testing::Test::HasFailure()) std::ofstream(golden.bytes(), std::ios::binary) << bytes;
    return;
  }
  const std::string expected = ReadFile(golden);
  if (bytes == expected) return;
  const std::vector<std::string> got = SplitLines(bytes);
  const std::vector<std::string> want = SplitLines(expected);
  for (size_t i = 0; i < std::max(got.size(), want.size()); ++i) {
    const std::string g = i < got.size() ? got[i] : "(no line)";
    const std::string w = i < want.size() ? want[i] : "(no line)";
    if (g == w) continue;
    const auto shown = [&](const std::string& line) {
      return name.ends_with(".txt") ? line : DecodeSjis(SjisView::FromBytes(line));
    };
    ADD_FAILURE() << name << ", line " << i + 1 << "\n  recorded: " << shown(w)
                  << "\n  now:      " << shown(g);
    return;
  }
  ADD_FAILURE() << name << " differs";
}

}  // namespace ledrix::test
