// What a conversion to Shift_JIS lost: characters that Shift_JIS lacks and sequences that are
// invalid in the file's code, each of them "?" in the text.
//
// The digest tells two texts apart whose lost places differ although both read "?". It covers the
// line, the place among the line's "?" and the character or the invalid bytes of each loss, in
// their order, and nothing of the code that the text was written in: the same character lost at the
// same place gives the same digest whatever the code. A "?" of the text itself counts as a place
// and goes into neither count nor digest.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ledrix {

// The lines of a text that hold characters of which Shift_JIS has one code for several, such as the
// two that are the wave dash, in another than the usual one, or what became "?".
struct FoldedLine {
  int64_t line;     // from 0
  uint64_t digest;  // of those characters and their places in the converted line
};
using FoldedLines = std::vector<FoldedLine>;  // by line

class ConversionLoss {
 public:
  // Tells that the next line begins; the first one as well. Several lines in which nothing is lost.
  void NextLine() { ++line_; }
  void SkipLines(uint64_t count) { line_ += count; }

  // Records one loss in the current line. `ordinal` is the place among its "?", from 1.
  void AddCharacter(uint64_t ordinal, char32_t character);
  void AddInvalid(uint64_t ordinal, std::string_view bytes);

  // Mixes into the digest what belongs to the loss recorded last.
  void AddToLast(std::string_view bytes) {
    for (const char byte : bytes) Mix(static_cast<unsigned char>(byte));
  }

  // Records a character that is written by the code of another one, at a place in the line's text.
  // Only where that was asked for.
  void AddFolded(uint64_t place, char32_t character);
  void KeepFolded() { keeps_folded_ = true; }
  const FoldedLines& folded() const { return folded_; }

  // Losses so far.
  uint64_t count() const { return count_; }
  // The first line with a loss, from 1; 0 when there is none.
  uint64_t first_line() const { return first_line_; }

  // True when both lost the same at the same places. Without a loss two are always the same,
  // however many lines they had.
  friend bool operator==(const ConversionLoss& a, const ConversionLoss& b) {
    return a.digest_ == b.digest_;
  }

 private:
  enum class Kind : uint64_t { kCharacter, kInvalid };
  void Begin(uint64_t ordinal, Kind kind, uint64_t value);
  void Mix(uint64_t value);

  uint64_t line_ = 0;
  uint64_t count_ = 0;
  uint64_t first_line_ = 0;
  std::array<uint64_t, 2> digest_ = {};
  bool keeps_folded_ = false;
  FoldedLines folded_;
};

}  // namespace ledrix
