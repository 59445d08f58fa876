#include "dircomp/dir_entry.h"

#include <algorithm>

#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

bool IsPlain(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x80 && c != '\r' && c != '\n' && c != '\\';
  });
}

}  // namespace

std::string RootName(const NativePath& folder) {
  std::string text = StripBackslash(folder).bytes();
  for (char& c : text) {
    if (c == '\r' || c == '\n' || c == '\\') c = '?';
    if (c == '/') c = '\\';
  }
  return text;
}

std::string DisplayRoot(const std::string& root_name) {
  return root_name.empty() || root_name.back() != '\\' ? root_name + "\\" : root_name;
}

std::string NameText(const std::string& name) {
  if (IsPlain(name)) return name;
  std::string text;
  for (size_t position = 0; position < name.size();) {
    const Utf8Char c = DecodeUtf8(name, position);
    const bool shown = c.valid && c.character != '\r' && c.character != '\n' && c.character != '\\';
    AppendUtf8(text, shown ? c.character : U'?');
    position += c.size;
  }
  return text;
}

}  // namespace ledrix::modDComp
