#include "charset/japanese_converters.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "charset/byte_ranges.h"
#include "charset/code_sequences.h"
#include "charset/japanese_codes.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

// The character of a byte from A1 to DF.
char32_t HalfWidthKatakana(unsigned b) {
  return 0xFF61 + (b - 0xA1);
}

void PutOrInvalid(char32_t character, std::string_view bytes, SjisWriter& writer) {
  if (character != 0) {
    writer.PutCharacter(character);
  } else {
    writer.PutInvalid(bytes);
  }
}

// The character of a valid sequence of EUC-JP; 0 where there is none.
char32_t EucCharacter(std::string_view sequence) {
  const auto cell = [&](size_t i) { return static_cast<int>(ByteAt(sequence, i)) - 0xA0; };
  if (sequence.size() == 3) return CharacterOfSupplementaryRowCell(cell(1), cell(2));
  if (sequence[0] == '\x8E') return HalfWidthKatakana(ByteAt(sequence, 1));
  return CharacterOfRowCell(cell(0), cell(1));
}

// The sets of ISO-2022-JP, and what designates them.
enum class Set { kSingle, kKatakana, kMain, kSupplementary };

struct Designation {
  std::string_view bytes;
  Set set;
};

constexpr std::array<Designation, 9> kDesignations = {{{"\x1B(B", Set::kSingle},
                                                       {"\x1B(J", Set::kSingle},
                                                       {"\x1B(I", Set::kKatakana},
                                                       {"\x1B$B", Set::kMain},
                                                       {"\x1B$@", Set::kMain},
                                                       {"\x1B$(@", Set::kMain},
                                                       {"\x1B$(B", Set::kMain},
                                                       {"\x1B$(D", Set::kSupplementary},
                                                       {"\x1B$D", Set::kSupplementary}}};

std::optional<Designation> FindDesignation(std::string_view bytes) {
  const auto* const found = std::find_if(
      kDesignations.begin(), kDesignations.end(),
      [bytes](const Designation& d) { return bytes.substr(0, d.bytes.size()) == d.bytes; });
  return found == kDesignations.end() ? std::nullopt : std::optional(*found);
}

// The bytes of an invalid sequence behind what designates its set, since the same bytes may be
// invalid in several.
std::string InSet(Set set, std::string_view bytes) {
  const auto* const found = std::find_if(kDesignations.begin(), kDesignations.end(),
                                         [set](const Designation& d) { return d.set == set; });
  return std::string(found->bytes).append(bytes);
}

// Converts one character of a set and returns its size in bytes.
size_t ConvertOne(std::string_view bytes, Set set, SjisWriter& writer) {
  const unsigned b = ByteAt(bytes, 0);
  const bool graphic = IsIn(b, 0x21, 0x7E);
  if (b < 0x80 && (!graphic || set == Set::kSingle)) {
    writer.PutAscii(bytes.substr(0, 1));
    return 1;
  }
  if (!graphic) {
    PutOrInvalid(IsIn(b, 0xA1, 0xDF) ? HalfWidthKatakana(b) : 0, bytes.substr(0, 1), writer);
    return 1;
  }
  const bool one_byte = set == Set::kKatakana;
  const bool whole = one_byte || (bytes.size() > 1 && IsIn(ByteAt(bytes, 1), 0x21, 0x7E));
  const size_t size = one_byte || !whole ? 1 : 2;
  char32_t character = 0;
  if (one_byte) {
    character = b <= 0x5F ? HalfWidthKatakana(b + 0x80) : 0;
  } else if (whole) {
    const int row = static_cast<int>(b) - 0x20;
    const int cell = static_cast<int>(ByteAt(bytes, 1)) - 0x20;
    character = set == Set::kMain ? CharacterOfRowCell(row, cell)
                                  : CharacterOfSupplementaryRowCell(row, cell);
  }
  PutOrInvalid(character, character != 0 ? std::string() : InSet(set, bytes.substr(0, size)),
               writer);
  return size;
}

}  // namespace

void SjisConverter::ConvertLine(std::string_view bytes, SjisWriter& writer) {
  const CodePage932& code_page = CodePage932::Get();
  for (size_t i = 0; i < bytes.size();) {
    const size_t ascii = AsciiRun(bytes, i);
    writer.PutAscii(bytes.substr(i, ascii));
    i += ascii;
    if (i == bytes.size()) break;
    const size_t size = SjisCharSize(SjisView::FromBytes(bytes), i);
    const unsigned code =
        size == 2 ? ByteAt(bytes, i) * 256 + ByteAt(bytes, i + 1) : ByteAt(bytes, i);
    PutOrInvalid(code_page.Decode(static_cast<uint16_t>(code)), bytes.substr(i, size), writer);
    i += size;
  }
}

void EucConverter::ConvertLine(std::string_view bytes, SjisWriter& writer) {
  for (size_t i = 0; i < bytes.size();) {
    i += writer.PutKnown(bytes.substr(i), ConvertKnownEuc);
    if (i == bytes.size()) break;
    const CodeSequence sequence = EucSequence(bytes, i);
    const std::string_view code = bytes.substr(i, sequence.size);
    PutOrInvalid(sequence.form == SequenceForm::kValid ? EucCharacter(code) : 0, code, writer);
    i += sequence.size;
  }
}

void JisConverter::ConvertLine(std::string_view bytes, SjisWriter& writer) {
  Set set = Set::kSingle;
  for (size_t i = 0; i < bytes.size();) {
    if (const std::optional<Designation> found = FindDesignation(bytes.substr(i))) {
      set = found->set;
      i += found->bytes.size();
    } else {
      i += ConvertOne(bytes.substr(i), set, writer);
    }
  }
}

bool JisConverter::HoldsDesignation(std::string_view bytes) {
  for (size_t i = bytes.find('\x1B'); i != std::string_view::npos; i = bytes.find('\x1B', i + 1)) {
    if (FindDesignation(bytes.substr(i))) return true;
  }
  return false;
}

}  // namespace ledrix
