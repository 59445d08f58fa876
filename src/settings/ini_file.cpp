#include "settings/ini_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <vector>

#include "platform/files.h"
#include "platform/replacement.h"
#include "text/ascii.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

constexpr size_t kLongestValue = 255;  // bytes
constexpr std::string_view kBlanks = " \t";

std::string_view Unquoted(std::string_view text) {
  const bool quoted = text.size() >= 2 && (text.front() == '"' || text.front() == '\'') &&
                      text.front() == text.back();
  return quoted ? text.substr(1, text.size() - 2) : text;
}

// In Shift_JIS a trail byte can be a letter, so the texts are compared as characters in UTF-8.
bool SameName(std::string_view sjis, std::string_view name) {
  return SameIgnoringAsciiCase(DecodeSjis(SjisView::FromBytes(sjis)), name);
}

// The lines of an INI file as Shift_JIS bytes, without their ends.
class IniLines {
 public:
  explicit IniLines(std::string_view bytes) {
    while (!bytes.empty()) {
      const std::string_view line = TakeLine(bytes);
      lines_.emplace_back(line);
    }
  }

  std::optional<std::string> Find(std::string_view section, std::string_view key) const {
    const Place place = FindPlace(section, key);
    if (!place.value) return std::nullopt;
    const std::string& line = lines_[*place.value];
    return std::string(
        Unquoted(Trimmed(std::string_view(line).substr(line.find('=') + 1), kBlanks)));
  }

  void Put(std::string_view section, std::string_view key, const std::string& value_line) {
    const Place place = FindPlace(section, key);
    if (place.value) {
      lines_[*place.value] = value_line;
    } else if (place.section_end) {
      lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(*place.section_end), value_line);
    } else {
      lines_.push_back("[" + EncodeSjis(section).bytes() + "]");
      lines_.push_back(value_line);
    }
  }

  std::string Bytes() const {
    std::string bytes;
    for (const std::string& line : lines_) bytes += line + "\r\n";
    return bytes;
  }

 private:
  struct Place {
    std::optional<size_t> value;        // the line of the value
    std::optional<size_t> section_end;  // behind the last line of the section that is not blank
  };

  Place FindPlace(std::string_view section, std::string_view key) const {
    Place place;
    bool inside = false;
    for (size_t i = 0; i < lines_.size(); ++i) {
      const std::string_view line = Trimmed(lines_[i], kBlanks);
      if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
        if (place.section_end) break;  // the section has ended
        inside = SameName(line.substr(1, line.size() - 2), section);
        if (inside) place.section_end = i + 1;
        continue;
      }
      if (!inside || line.empty()) continue;
      place.section_end = i + 1;
      const size_t equals = line.find('=');
      if (line.front() == ';' || equals == std::string_view::npos) continue;
      if (SameName(Trimmed(line.substr(0, equals), kBlanks), key)) {
        place.value = i;
        break;
      }
    }
    return place;
  }

  std::vector<std::string> lines_;
};

// A missing file has no lines.
Result<IniLines> ReadLines(const NativePath& path) {
  const Result<std::string> bytes = ReadWholeFile(path);
  if (!bytes.ok() && !bytes.error().IsMissing()) return bytes.error();
  return IniLines(bytes.ok() ? std::string_view(bytes.value()) : std::string_view());
}

std::optional<std::string> FindValue(const NativePath& path, std::string_view section,
                                     std::string_view key) {
  const Result<IniLines> lines = ReadLines(path);
  return lines.ok() ? lines.value().Find(section, key) : std::nullopt;
}

std::string TextOr(std::string_view default_text, const std::optional<std::string>& value) {
  if (!value || value->empty()) return std::string(default_text);
  return DecodeSjis(SjisView::FromBytes(*value).First(kLongestValue));
}

// Spaces and quotation marks at the ends survive only between quotation marks.
std::string ValueText(std::string_view value) {
  std::string text(value);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  const bool plain = text == Trimmed(text, kBlanks) && text == Unquoted(text);
  return plain ? text : "\"" + text + "\"";
}

}  // namespace

Status clsIniFile::GetAll(std::span<IniValue> values) const {
  const Result<IniLines> lines = ReadLines(file_name_);
  if (!lines.ok()) return lines.error();
  for (auto& [section, key, text] : values) {
    text = TextOr(text, lines.value().Find(section, key));
  }
  return Status();
}

Status clsIniFile::SetAll(std::span<const IniValue> values) {
  Result<IniLines> lines = ReadLines(file_name_);
  if (!lines.ok()) return lines.error();
  for (const auto& [section, key, text] : values) {
    lines.value().Put(section, key, EncodeSjis(std::string(key) + "=" + ValueText(text)).bytes());
  }
  return ReplaceFile(file_name_, lines.value().Bytes());
}

bool clsIniFile::mSetString(std::string_view section, std::string_view key,
                            std::string_view value) {
  const IniValue all[] = {{section, key, std::string(value)}};
  return SetAll(all).ok();
}

std::string clsIniFile::mGetString(std::string_view section, std::string_view key,
                                   std::string_view default_text) const {
  return TextOr(default_text, FindValue(file_name_, section, key));
}

int16_t clsIniFile::mGetInteger(std::string_view section, std::string_view key,
                                int16_t default_number) const {
  const std::optional<std::string> value = FindValue(file_name_, section, key);
  if (!value) return default_number;
  const bool plus = !value->empty() && value->front() == '+';
  int64_t number = 0;
  const char* const first = value->data() + (plus ? 1 : 0);
  const auto parsed = std::from_chars(first, value->data() + value->size(), number);
  if (parsed.ec == std::errc::result_out_of_range) {
    number = value->front() == '-' ? std::numeric_limits<int16_t>::min()
                                   : std::numeric_limits<int16_t>::max();
  }
  return static_cast<int16_t>(std::clamp<int64_t>(number, std::numeric_limits<int16_t>::min(),
                                                  std::numeric_limits<int16_t>::max()));
}

}  // namespace ledrix
