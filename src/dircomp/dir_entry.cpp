#include "dircomp/dir_entry.h"

#include <algorithm>

#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

bool IsPlain(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x80 && c != '\r' && c != '\n' && c != '\\';
  });
}

// True for "\\" and for a character that Shift_JIS would write as it.
bool BecomesBackslash(char32_t character) {
  return character == U'\\' || (character >= 0x80 && CodePage932::Get().Encode(character) == '\\');
}

bool IsWritten(const Utf8Char& c) {
  return c.valid && c.character != U'\r' && c.character != U'\n' && !BecomesBackslash(c.character);
}

bool IsLacking(const Utf8Char& c) {
  if (!c.valid || c.character < 0x80) return !c.valid;
  return CodePage932::Get().Encode(c.character) == 0 || BecomesBackslash(c.character);
}

}  // namespace

std::string RootName(const NativePath& folder) {
  const std::string bytes = StripBackslash(folder).bytes();
  std::string text;
  for (size_t start = 0; true;) {
    const size_t end = bytes.find('/', start);
    text += NameText(bytes.substr(start, end - start));
    if (end == std::string::npos) return text;
    text += '\\';
    start = end + 1;
  }
}

std::string DisplayRoot(const std::string& root_name) {
  return root_name.empty() || root_name.back() != '\\' ? root_name + "\\" : root_name;
}

std::string NameText(const std::string& name) {
  if (IsPlain(name)) return name;
  std::string text;
  for (size_t position = 0; position < name.size();) {
    const Utf8Char c = DecodeUtf8(name, position);
    AppendUtf8(text, IsWritten(c) ? c.character : U'?');
    position += c.size;
  }
  return text;
}

bool HoldsLackingCharacter(std::string_view name) {
  if (IsAscii(name)) return false;
  for (size_t position = 0; position < name.size();) {
    const Utf8Char c = DecodeUtf8(name, position);
    if (IsLacking(c)) return true;
    position += c.size;
  }
  return false;
}

}  // namespace ledrix::modDComp
