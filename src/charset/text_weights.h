// How likely a text is as Japanese: the cost of its characters, one after the other.
//
// A cost is -log2 of a probability in eighths of a bit, from counts of Japanese documents and
// dictionaries (scripts/make_text_weights): of a kind of character behind another kind, and of a
// character among those of its kind. Of two readings of the same bytes the cheaper one is the
// likelier.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ledrix::modJudgeCode {

inline constexpr int64_t kCostsPerBit = 8;

class TextWeight {
 public:
  // A run of bytes below 80; a carriage return costs nothing beside its line feed.
  void AddAscii(std::string_view run);
  // A character of JIS X 0208 by row and cell, from 1 to 94.
  void AddCell(unsigned row, unsigned cell);
  // A half-width katakana by its byte in Shift_JIS, A1 to DF.
  void AddHalfKatakana(unsigned byte);
  // A character that Japanese text seldom holds.
  void AddRare();
  // A Shift_JIS code of two bytes.
  void AddSjis(unsigned code);
  // A character of Unicode.
  void AddCharacter(char32_t character);

  // From now on nothing is added: there is nothing to be compared with.
  void Stop() { is_stopped_ = true; }
  bool is_weighing() const { return !is_stopped_; }
  uint64_t cost() const { return cost_; }

 private:
  enum class Kind : uint8_t {
    kLineEnd,
    kAscii,
    kHiragana,
    kKatakana,
    kHalfKatakana,
    kKanji,
    kSign,
    kLetter,
    kOther,
    kRare,
  };
  static constexpr size_t kKinds = 10;

  static Kind KindOf(unsigned row, unsigned cell);
  void Add(Kind kind, uint64_t cost);

  bool is_stopped_ = false;
  uint64_t cost_ = 0;
  Kind before_ = Kind::kLineEnd;
  unsigned half_before_ = 0;  // place of the half-width katakana before, from 1; 0 for others
};

}  // namespace ledrix::modJudgeCode
