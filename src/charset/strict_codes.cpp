#include "charset/strict_codes.h"

#include <bitset>
#include <cstdint>
#include <cstring>
#include <utility>

#include "charset/byte_ranges.h"
#include "charset/japanese_codes.h"
#include "text/code_page_932.h"
#include "text/sjis_text.h"

namespace ledrix::modJudgeCode {
namespace {

constexpr unsigned kEscape = 0x1B;
constexpr char32_t kByteOrderMark = 0xFEFF;

Step PutAscii(unsigned byte, TextWeight& weight) {
  const char character = static_cast<char>(byte);
  weight.AddAscii({&character, 1});
  return Step::kDone;
}

// What Japanese text holds of the first plane: code page 932, JIS X 0212, and what is written with
// them: letters of other languages, signs and symbols, but none whose units look like a line end.
class JapaneseUnits {
 public:
  JapaneseUnits() {
    for (unsigned unit = 0x80; unit < 0xE000; ++unit) {
      if (CodePage932::Get().Encode(unit) != 0) units_.set(unit);
    }
    for (int row = 1; row <= kSupplementaryRows; ++row) {
      for (int cell = 1; cell <= kCells; ++cell) {
        units_.set(CharacterOfSupplementaryRowCell(row, cell));
      }
    }
    constexpr std::pair<unsigned, unsigned> kRanges[] = {
        {0x20, 0x7E},     {0xA0, 0x6FF},    {0xE00, 0xE7F},   {0x1E00, 0x1FFF}, {0x2000, 0x27BF},
        {0xAC00, 0xD7A3}, {0x3000, 0x33FF}, {0xF900, 0xFAFF}, {0xFE00, 0xFE0F}, {0xFF00, 0xFFEF}};
    for (const auto& [first, last] : kRanges) {
      for (unsigned unit = first; unit <= last; ++unit) units_.set(unit);
    }
    units_.reset(0);
    for (const char control : {'\t', '\n', '\r', '\f'}) {
      units_.set(static_cast<unsigned char>(control));
    }
  }
  bool Hold(unsigned unit) const { return units_[unit]; }

 private:
  static constexpr int kSupplementaryRows = 84;
  std::bitset<0x10000> units_;
};

bool IsJapanese(unsigned unit) {
  static const JapaneseUnits units;
  return units.Hold(unit);
}

// Which two-byte codes of EUC-JP are characters.
class EucCells {
 public:
  EucCells() {
    for (unsigned lead = 0xA1; lead <= 0xFE; ++lead) {
      for (unsigned trail = 0xA1; trail <= 0xFE; ++trail) {
        const int row = static_cast<int>(lead) - 0xA0;
        const int cell = static_cast<int>(trail) - 0xA0;
        codes_.set(lead * 256 + trail, CharacterOfRowCell(row, cell) != 0);
      }
    }
  }
  bool Hold(unsigned lead, unsigned trail) const { return codes_[lead * 256 + trail]; }

 private:
  std::bitset<0x10000> codes_;
};

}  // namespace

size_t PlainRun(std::string_view bytes, size_t position, char also_stops) {
  constexpr uint64_t kOnes = 0x0101010101010101;
  constexpr uint64_t kHighs = 0x8080808080808080;
  const auto has_zero = [](uint64_t word) { return (word - kOnes) & ~word; };
  const uint64_t stops = kOnes * static_cast<unsigned char>(also_stops);
  const auto is_plain = [also_stops](char byte) {
    return static_cast<unsigned char>(byte) < 0x80 && byte != 0 && byte != kEscape &&
           byte != also_stops;
  };
  size_t end = position;
  for (; end + sizeof(uint64_t) <= bytes.size(); end += sizeof(uint64_t)) {
    uint64_t word = 0;
    std::memcpy(&word, bytes.data() + end, sizeof word);
    const uint64_t others =
        word | has_zero(word) | has_zero(word ^ (kOnes * kEscape)) | has_zero(word ^ stops);
    if ((others & kHighs) != 0) break;
  }
  while (end < bytes.size() && is_plain(bytes[end])) ++end;
  return end - position;
}

Step AsciiCode::Put(unsigned byte, TextWeight& weight) {
  if (byte >= 0x80 || byte == 0) return Step::kInvalid;
  if (std::exchange(after_escape_, byte == kEscape) && byte == '$') return Step::kInvalid;
  PutAscii(byte, weight);
  return after_escape_ ? Step::kWithin : Step::kDone;
}

Step SjisCode::Put(unsigned byte, TextWeight& weight) {
  if (lead_ != 0) {
    const unsigned code = std::exchange(lead_, 0) * 256 + byte;
    if (CodePage932::Get().Decode(static_cast<uint16_t>(code)) == 0) return Step::kInvalid;
    weight.AddSjis(code);
    return Step::kDone;
  }
  if (byte < 0x80) return PutAscii(byte, weight);
  has_evidence = true;
  if (IsIn(byte, 0xA1, 0xDF)) {
    weight.AddHalfKatakana(byte);
    return Step::kDone;
  }
  lead_ = byte;
  return IsSjisLead(static_cast<unsigned char>(byte)) ? Step::kWithin : Step::kInvalid;
}

size_t SjisCode::ValidRun(std::string_view bytes) const {
  const CodePage932& code_page = CodePage932::Get();
  size_t i = 0;
  while (i < bytes.size()) {
    const unsigned byte = ByteAt(bytes, i);
    if (byte < 0x80 || IsIn(byte, 0xA1, 0xDF)) {
      ++i;
    } else if (i + 1 < bytes.size() && IsSjisLead(static_cast<unsigned char>(byte)) &&
               code_page.Decode(static_cast<uint16_t>(byte * 256 + ByteAt(bytes, i + 1))) != 0) {
      i += 2;
    } else {
      break;
    }
  }
  return i;
}

size_t EucCode::ValidRun(std::string_view bytes) const {
  static const EucCells cells;
  size_t i = 0;
  while (i < bytes.size()) {
    if (ByteAt(bytes, i) < 0x80) {
      ++i;
    } else if (i + 1 < bytes.size() && cells.Hold(ByteAt(bytes, i), ByteAt(bytes, i + 1))) {
      i += 2;
    } else {
      break;
    }
  }
  return i;
}

Step EucCode::Put(unsigned byte, TextWeight& weight) {
  if (size_ == 0) {
    if (byte < 0x80) return PutAscii(byte, weight);
    has_evidence = true;
    bytes_[size_++] = byte;
    const bool opens = byte == 0x8E || byte == 0x8F || IsIn(byte, 0xA1, 0xFE);
    return opens ? Step::kWithin : Step::kInvalid;
  }
  if (!IsIn(byte, 0xA1, bytes_[0] == 0x8E ? 0xDF : 0xFE)) return Step::kInvalid;
  if (bytes_[0] == 0x8F && size_ == 1) {
    bytes_[size_++] = byte;
    return Step::kWithin;
  }
  return End(byte, weight);
}

Step EucCode::End(unsigned byte, TextWeight& weight) {
  const unsigned row = bytes_[size_ - 1] - 0xA0;
  const unsigned cell = byte - 0xA0;
  const bool is_supplementary = std::exchange(size_, 0) == 2;
  if (is_supplementary) {
    if (CharacterOfSupplementaryRowCell(static_cast<int>(row), static_cast<int>(cell)) == 0) {
      return Step::kInvalid;
    }
    weight.AddRare();
  } else if (bytes_[0] == 0x8E) {
    weight.AddHalfKatakana(byte);
  } else {
    if (CharacterOfRowCell(static_cast<int>(row), static_cast<int>(cell)) == 0) {
      return Step::kInvalid;
    }
    weight.AddCell(row, cell);
  }
  return Step::kDone;
}

Step JisCode::Put(unsigned byte, TextWeight& weight) {
  if (byte >= 0x80) return Step::kInvalid;
  if (!escape_.empty() || byte == kEscape) return PutEscape(byte);
  if (byte == '\n' || byte == '\r') {
    set_ = Set::kSingle;
    return lead_ == 0 ? PutAscii(byte, weight) : Step::kInvalid;
  }
  if (set_ == Set::kSingle) return PutAscii(byte, weight);
  return PutGraphic(byte, weight);
}

Step JisCode::PutEscape(unsigned byte) {
  static constexpr std::pair<std::string_view, Set> kDesignations[] = {
      {"\x1B(B", Set::kSingle}, {"\x1B(J", Set::kSingle}, {"\x1B(I", Set::kKatakana},
      {"\x1B$B", Set::kMain},   {"\x1B$@", Set::kMain},   {"\x1B$(D", Set::kSupplementary}};
  if (lead_ != 0) return Step::kInvalid;
  escape_ += static_cast<char>(byte);
  bool goes_on = false;
  for (const auto& [designation, set] : kDesignations) {
    if (designation == escape_) {
      set_ = set;
      escape_.clear();
      has_evidence = has_evidence || set != Set::kSingle;
      return Step::kDone;
    }
    goes_on = goes_on || designation.substr(0, escape_.size()) == escape_;
  }
  return goes_on ? Step::kWithin : Step::kInvalid;
}

Step JisCode::PutGraphic(unsigned byte, TextWeight& weight) {
  if (!IsIn(byte, 0x21, 0x7E)) return lead_ == 0 ? PutAscii(byte, weight) : Step::kInvalid;
  if (set_ == Set::kKatakana) {
    if (byte > 0x5F) return Step::kInvalid;
    weight.AddHalfKatakana(byte + 0x80);
    return Step::kDone;
  }
  if (lead_ == 0) {
    lead_ = byte;
    return Step::kWithin;
  }
  const int row = static_cast<int>(std::exchange(lead_, 0)) - 0x20;
  const int cell = static_cast<int>(byte) - 0x20;
  const bool is_main = set_ == Set::kMain;
  const char16_t character =
      is_main ? CharacterOfRowCell(row, cell) : CharacterOfSupplementaryRowCell(row, cell);
  if (character == 0) return Step::kInvalid;
  if (is_main) {
    weight.AddCell(static_cast<unsigned>(row), static_cast<unsigned>(cell));
  } else {
    weight.AddRare();
  }
  return Step::kDone;
}

Step Utf8Code::Put(unsigned byte, TextWeight& weight) {
  if (left_ > 0) {
    if (!IsIn(byte, lowest_, highest_)) return Step::kInvalid;
    lowest_ = 0x80;
    highest_ = 0xBF;
    character_ = character_ << 6 | (byte & 0x3F);
    if (--left_ > 0) return Step::kWithin;
    if (character_ != kByteOrderMark) weight.AddCharacter(character_);
    return Step::kDone;
  }
  if (byte < 0x80) return PutAscii(byte, weight);
  if (!IsIn(byte, 0xC2, 0xF4)) return Step::kInvalid;
  has_evidence = true;
  left_ = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
  character_ = byte & (0x3Fu >> left_);
  // No overlong form, no surrogate, nothing beyond the last plane.
  lowest_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
  highest_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
  return Step::kWithin;
}

size_t Utf8Code::ValidRun(std::string_view bytes) const {
  size_t i = 0;
  while (i < bytes.size()) {
    const unsigned byte = ByteAt(bytes, i);
    if (byte < 0x80) {
      ++i;
    } else if (i + 2 < bytes.size() && IsIn(byte, 0xE1, 0xEC) &&
               IsIn(ByteAt(bytes, i + 1), 0x80, 0xBF) && IsIn(ByteAt(bytes, i + 2), 0x80, 0xBF)) {
      i += 3;
    } else {
      break;
    }
  }
  return i;
}

Step Utf16Code::Put(unsigned byte, TextWeight& weight) {
  if (!has_first_) {
    has_first_ = true;
    first_ = byte;
    return Step::kWithin;
  }
  has_first_ = false;
  return PutUnit(is_big_endian ? first_ * 256 + byte : byte * 256 + first_, weight);
}

Step Utf16Code::PutUnit(unsigned unit, TextWeight& weight) {
  if (units_++ == 0 && unit == kByteOrderMark) {
    is_marked_ = true;
    return Step::kDone;
  }
  const bool is_low = IsIn(unit, 0xDC00, 0xDFFF);
  if (high_ != 0 || is_low) {
    if (high_ == 0 || !is_low) return Step::kInvalid;
    high_ = 0;
    weight.AddRare();
    return Step::kDone;
  }
  if (IsIn(unit, 0xD800, 0xDBFF)) {
    high_ = unit;
    return Step::kWithin;
  }
  weight.AddCharacter(unit);
  if (is_marked_ || IsJapanese(unit)) return unit < 0xFFFE ? Step::kDone : Step::kInvalid;
  // A few others are text all the same, unless they look like a line end.
  constexpr uint64_t kFew = 2;
  constexpr uint64_t kJapanesePerForeign = 32;
  weight.AddRare();
  const bool is_possible = IsIn(unit, 0x180, 0xFFFD) && unit >> 8 != '\n' && unit >> 8 != '\r';
  const bool are_few = ++foreign_ <= kFew + units_ / kJapanesePerForeign;
  return is_possible && are_few ? Step::kDone : Step::kInvalid;
}

Step Utf7Code::Put(unsigned byte, TextWeight& weight) {
  if (byte >= 0x80) return Step::kInvalid;
  if (in_run_) return PutInRun(byte, weight);
  if (byte != '+') return PutAscii(byte, weight);
  in_run_ = true;
  bits_ = bit_count_ = high_ = 0;
  units_ = 0;
  return Step::kWithin;
}

Step Utf7Code::PutInRun(unsigned byte, TextWeight& weight) {
  static constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const size_t value = kAlphabet.find(static_cast<char>(byte));
  if (value == std::string_view::npos) {
    in_run_ = false;
    if (byte == '-' && units_ == 0 && bit_count_ == 0) return PutAscii('+', weight);
    if (!EndRun()) return Step::kInvalid;
    return byte == '-' ? Step::kDone : PutAscii(byte, weight);
  }
  bits_ = bits_ << 6 | static_cast<unsigned>(value);
  bit_count_ += 6;
  if (bit_count_ < 16) return Step::kWithin;
  bit_count_ -= 16;
  const unsigned unit = bits_ >> bit_count_;
  bits_ &= (1u << bit_count_) - 1;
  return PutUnit(unit, weight);
}

Step Utf7Code::PutUnit(unsigned unit, TextWeight& weight) {
  ++units_;
  const bool is_low = IsIn(unit, 0xDC00, 0xDFFF);
  if ((high_ != 0) != is_low) return Step::kInvalid;
  high_ = IsIn(unit, 0xD800, 0xDBFF) ? unit : 0;
  if (is_low || high_ != 0) {
    if (is_low) weight.AddRare();
    return Step::kWithin;
  }
  // One unit comes about by chance: three letters behind a plus sign are enough for it.
  constexpr uint64_t kFirstUnit = 8 * kCostsPerBit;
  constexpr uint64_t kLaterUnit = 16 * kCostsPerBit;
  credit_ += units_ == 1 ? kFirstUnit : kLaterUnit;
  // Letters, digits and blanks are never encoded.
  const bool is_needless =
      unit < 0x80 && (unit <= ' ' || IsIn(unit | 0x20, 'a', 'z') || IsIn(unit, '0', '9'));
  if (is_needless) return Step::kInvalid;
  weight.AddCharacter(unit);
  const unsigned code = CodePage932::Get().Encode(unit);
  if (IsIn(unit, 0xE000, 0xF8FF) || (unit >= 0x180 && code == 0)) {
    // By chance most are such, in a text few.
    constexpr uint64_t kKnownPerForeign = 8;
    weight.AddRare();
    if (++foreign_ > 2 + known_ / kKnownPerForeign) return Step::kInvalid;
  } else if (code > 0xFF) {
    ++known_;
  }
  has_evidence = known_ > 2 * foreign_;
  return Step::kWithin;
}

}  // namespace ledrix::modJudgeCode
