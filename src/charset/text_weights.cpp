#include "charset/text_weights.h"

#include "charset/byte_ranges.h"
#include "charset/japanese_codes.h"
#include "text/code_page_932.h"

namespace ledrix::modJudgeCode {
namespace {

#include "charset/text_weights_table.inc"

constexpr uint64_t kAsciiCost = 5 * kCostsPerBit;
constexpr uint64_t kRareCost = 14 * kCostsPerBit;
constexpr unsigned kHalfKatakanaPlaces = 64;

}  // namespace

TextWeight::Kind TextWeight::KindOf(unsigned row, unsigned cell) {
  constexpr unsigned kLongVowelCell = 0x3C - 0x20;
  constexpr unsigned kFirstKanjiRow = 16;
  switch (row) {
    case 1:
      return cell == kLongVowelCell ? Kind::kKatakana : Kind::kSign;
    case 3:
      return Kind::kLetter;
    case 4:
      return Kind::kHiragana;
    case 5:
      return Kind::kKatakana;
    default:
      return row >= kFirstKanjiRow ? Kind::kKanji : Kind::kOther;
  }
}

void TextWeight::Add(Kind kind, uint64_t cost) {
  cost_ += kKindCosts[static_cast<size_t>(before_) * kKinds + static_cast<size_t>(kind)] + cost;
  before_ = kind;
}

void TextWeight::AddAscii(std::string_view run) {
  if (run.empty() || is_stopped_) return;
  Add(run[0] == '\n' || run[0] == '\r' ? Kind::kLineEnd : Kind::kAscii, kAsciiCost);
  cost_ += (run.size() - 1) * kAsciiCost;
  before_ = run.back() == '\n' ? Kind::kLineEnd : Kind::kAscii;
  half_before_ = 0;
}

void TextWeight::AddCell(unsigned row, unsigned cell) {
  if (is_stopped_) return;
  Add(KindOf(row, cell), kCellCosts[(row - 1) * kCells + cell - 1]);
  half_before_ = 0;
}

void TextWeight::AddHalfKatakana(unsigned byte) {
  if (is_stopped_) return;
  const unsigned place = byte - 0xA1 + 1;
  Add(Kind::kHalfKatakana, kHalfKanaCosts[half_before_ * kHalfKatakanaPlaces + place]);
  half_before_ = place;
}

void TextWeight::AddRare() {
  if (is_stopped_) return;
  Add(Kind::kRare, kRareCost);
  half_before_ = 0;
}

void TextWeight::AddSjis(unsigned code) {
  if (is_stopped_) return;
  const unsigned lead = code >> 8;
  const unsigned trail = code & 0xFF;
  if (lead > 0xEF) {
    AddRare();
    return;
  }
  const unsigned pair = lead < 0xA0 ? lead - 0x81 : lead - 0xC1;  // of rows
  const unsigned place = trail - 0x40 - (trail > 0x7F ? 1 : 0);
  AddCell(2 * pair + 1 + place / kCells, place % kCells + 1);
}

void TextWeight::AddCharacter(char32_t character) {
  if (is_stopped_) return;
  if (character < 0x80) {
    const char byte = static_cast<char>(character);
    AddAscii({&byte, 1});
    return;
  }
  const unsigned code = CodePage932::Get().Encode(character);
  if (code > 0xFF) {
    AddSjis(code);
  } else if (IsIn(code, 0xA1, 0xDF)) {
    AddHalfKatakana(code);
  } else {
    AddRare();
  }
}

}  // namespace ledrix::modJudgeCode
