#include "platform/native_path.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

std::string WithDriveColon(const NativePath& path, PathStyle style) {
  std::string bytes = path.bytes();
  if (style == PathStyle::kWindows && bytes.size() == 1) bytes += ':';
  return bytes;
}

// Where the file name begins: after the last separator, or 0.
size_t NameStart(const NativePath& path, PathStyle style) {
  const size_t separator = path.bytes().rfind(Separator(style));
  return separator == std::string::npos ? 0 : separator + 1;
}

std::string WithoutLineEnds(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, '?');
  return text;
}

}  // namespace

NativePath AddBackslash(const NativePath& path, PathStyle style) {
  std::string bytes = WithDriveColon(path, style);
  if (bytes.empty() || bytes.back() != Separator(style)) bytes += Separator(style);
  return NativePath(std::move(bytes));
}

NativePath StripBackslash(const NativePath& path, PathStyle style) {
  std::string bytes = WithDriveColon(path, style);
  if (!bytes.empty() && bytes.back() == Separator(style)) bytes.pop_back();
  return NativePath(std::move(bytes));
}

std::string FileNameOf(const NativePath& path, PathStyle style) {
  const size_t start = NameStart(path, style);
  return start == 0 ? std::string() : path.bytes().substr(start);
}

NativePath DirOf(const NativePath& path, PathStyle style) {
  const size_t start = NameStart(path, style);
  return start == 0 ? path : NativePath(path.bytes().substr(0, start));
}

std::string BaseNameOf(const NativePath& path, PathStyle style) {
  const std::string name = path.bytes().substr(NameStart(path, style));
  return name.substr(0, name.rfind('.'));
}

std::string ExtensionOf(const NativePath& path, PathStyle style) {
  const size_t dot = path.bytes().rfind('.');
  if (dot == std::string::npos || dot < NameStart(path, style)) return {};
  return path.bytes().substr(dot);
}

std::string NameForPattern(const NativePath& path, PathStyle style) {
  std::string name = path.bytes().substr(NameStart(path, style));
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
}

NativePath MakeAbsolute(const NativePath& path) {
  if (!path.empty() && path.bytes().front() == '/') return path;
  const std::unique_ptr<char, decltype(&std::free)> folder(getcwd(nullptr, 0), &std::free);
  if (folder == nullptr) return path;
  return AddBackslash(NativePath(folder.get())) + path.bytes();
}

SjisText PathToSjis(const NativePath& path) {
  return EncodeSjis(WithoutLineEnds(path.bytes()));
}

std::string PathToUtf8(const NativePath& path) {
  const std::string bytes = WithoutLineEnds(path.bytes());
  std::string text;
  for (size_t position = 0; position < bytes.size();) {
    const Utf8Char c = DecodeUtf8(bytes, position);
    AppendUtf8(text, c.valid ? c.character : kReplacementCharacter);
    position += c.size;
  }
  return text;
}

}  // namespace ledrix
