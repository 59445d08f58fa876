#include "evidence/record.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/sha256.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

constexpr std::string_view kFirst = "Ledrix 証跡 版 ";
constexpr std::string_view kDigestName = "SHA-256: ";
constexpr size_t kDigestDigits = 64;
constexpr const char* kHexDigits = "0123456789ABCDEF";

bool IsControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x2028 || c == 0x2029;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// Takes a line without its LF off the front of a text that ends with one.
std::string_view TakeLine(std::string_view& text) {
  const size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end + 1);
  return line;
}

bool HasItsDigest(std::string_view bytes) {
  constexpr size_t kFootSize = kDigestDigits + 1;
  if (bytes.size() < kFootSize + kDigestName.size() || bytes.back() != '\n') return false;
  const std::string_view body = bytes.substr(0, bytes.size() - kFootSize);
  if (!body.ends_with(kDigestName)) return false;
  Sha256 hash;
  hash.Add(body);
  return bytes.substr(body.size(), kDigestDigits) == hash.Digest();
}

// False when the line is none of a section.
bool AddLine(std::string_view line, RecordSection& section) {
  const size_t colon = line.find(": ");
  if (colon == std::string_view::npos || colon == 0) return false;
  std::optional<std::string> value = FromRecordValue(line.substr(colon + 2));
  if (!value) return false;
  section.lines.emplace_back(line.substr(0, colon), std::move(*value));
  return true;
}

constexpr std::array<std::pair<PairEnd, const char*>, 6> kEndWords = {
    {{PairEnd::kChanged, "相違あり"},
     {PairEnd::kUnchanged, "相違なし"},
     {PairEnd::kSkipped, "同一のため省略"},
     {PairEnd::kExcluded, "除外"},
     {PairEnd::kFailed, "エラー"},
     {PairEnd::kStopped, "中断"}}};

}  // namespace

std::string ToRecordValue(std::string_view bytes) {
  std::string value;
  for (size_t i = 0; i < bytes.size();) {
    const Utf8Char c = DecodeUtf8(bytes, i);
    const std::string_view taken = bytes.substr(i, c.size);
    if (c.valid && c.character != '%' && !IsControl(c.character)) {
      value += taken;
    } else {
      for (const char byte : taken) {
        const auto code = static_cast<unsigned char>(byte);
        value += {'%', kHexDigits[code >> 4], kHexDigits[code & 15]};
      }
    }
    i += c.size;
  }
  return value;
}

std::optional<std::string> FromRecordValue(std::string_view value) {
  std::string bytes;
  for (size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '%') {
      bytes += value[i];
      continue;
    }
    if (i + 2 >= value.size()) return std::nullopt;
    const int high = HexDigit(value[i + 1]);
    const int low = HexDigit(value[i + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return bytes;
}

const std::string* RecordSection::Find(std::string_view name) const {
  const auto found = std::find_if(lines.begin(), lines.end(),
                                  [&](const auto& line) { return line.first == name; });
  return found == lines.end() ? nullptr : &found->second;
}

std::string RecordSection::Text(std::string_view name) const {
  const std::string* const found = Find(name);
  return found == nullptr ? std::string() : *found;
}

const RecordSection* EvidenceRecord::Find(std::string_view title) const {
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const RecordSection& s) { return s.title == title; });
  return found == sections.end() ? nullptr : &*found;
}

std::optional<int> RecordVersion(std::string_view bytes) {
  if (!bytes.starts_with(kFirst)) return std::nullopt;
  bytes.remove_prefix(kFirst.size());
  int version = 0;
  const auto read = std::from_chars(bytes.data(), bytes.data() + bytes.size(), version);
  const bool whole = read.ec == std::errc() && read.ptr != bytes.data() + bytes.size();
  return whole && *read.ptr == '\n' ? std::optional(version) : std::nullopt;
}

std::variant<EvidenceRecord, RecordFault> ReadRecord(std::string_view bytes) {
  const std::optional<int> version = RecordVersion(bytes);
  if (!HasItsDigest(bytes)) {
    // A record whose first line was damaged is one all the same.
    const bool is_like_one = bytes.starts_with("Ledrix") || bytes.find(kDigestName) != bytes.npos;
    return is_like_one ? RecordFault::kAltered : RecordFault::kNone;
  }
  if (!version) return RecordFault::kNone;
  if (*version > kRecordVersion) return RecordFault::kNewer;
  EvidenceRecord record;
  record.sections.emplace_back();
  TakeLine(bytes);
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    if (line.empty()) continue;
    if (line.front() == '[' && line.back() == ']') {
      record.sections.push_back({std::string(line.substr(1, line.size() - 2)), {}});
    } else if (!AddLine(line, record.sections.back())) {
      return RecordFault::kNone;
    }
  }
  return record;
}

const char* EndWord(PairEnd end) {
  return kEndWords[static_cast<size_t>(end)].second;
}

std::optional<PairEnd> EndOfWord(std::string_view word) {
  for (const auto& [end, text] : kEndWords) {
    if (word == text) return end;
  }
  return std::nullopt;
}

const char* RuleWord(EqualityRule rule) {
  constexpr const char* kWords[kEqualityRules] = {"桁の範囲", "空白", "タブ", "大文字小文字",
                                                  "Shift_JIS にない区別"};
  return kWords[static_cast<size_t>(rule)];
}

}  // namespace ledrix
