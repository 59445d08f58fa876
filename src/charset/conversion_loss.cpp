#include "charset/conversion_loss.h"

#include <bit>

namespace ledrix {
namespace {

// Beyond every place in a line: the "?" of a line are counted by themselves.
constexpr uint64_t kLostPlace = uint64_t{1} << 40;

// Spreads each bit of a value over all of them.
uint64_t Spread(uint64_t value) {
  value = (value ^ (value >> 33)) * 0xFF51AFD7ED558CCD;
  value = (value ^ (value >> 33)) * 0xC4CEB9FE1A85EC53;
  return value ^ (value >> 33);
}

}  // namespace

void ConversionLoss::AddCharacter(uint64_t ordinal, char32_t character) {
  Begin(ordinal, Kind::kCharacter, character);
  AddFolded(kLostPlace + ordinal, character);
}

void ConversionLoss::AddInvalid(uint64_t ordinal, std::string_view bytes) {
  Begin(ordinal, Kind::kInvalid, bytes.size());
  AddToLast(bytes);
  // Beyond every character of Unicode.
  for (const char byte : bytes)
    AddFolded(kLostPlace + ordinal, 0x110000 + static_cast<unsigned char>(byte));
}

void ConversionLoss::AddFolded(uint64_t place, char32_t character) {
  if (!keeps_folded_) return;
  const auto line = static_cast<int64_t>(line_) - 1;
  if (folded_.empty() || folded_.back().line != line) folded_.push_back({line, 0});
  uint64_t& digest = folded_.back().digest;
  digest = Spread(digest * 0x9E3779B97F4A7C15 + place * 0x200000 + character + 1);
}

void ConversionLoss::Begin(uint64_t ordinal, Kind kind, uint64_t value) {
  if (count_++ == 0) first_line_ = line_;
  Mix(line_);
  Mix(ordinal);
  Mix(static_cast<uint64_t>(kind));
  Mix(value);
}

// Two chains that share no constant; each value goes into both and each chain into the other.
void ConversionLoss::Mix(uint64_t value) {
  digest_[0] = Spread(digest_[0] * 0x9E3779B97F4A7C15 + value + 1);
  digest_[1] = Spread(std::rotl(digest_[1], 23) * 0xD6E8FEB86659FD93 + digest_[0] + value);
}

}  // namespace ledrix
