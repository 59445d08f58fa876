#include "charset/refute_judgement.h"

#include <algorithm>
#include <array>

#include "charset/code_sequences.h"
#include "charset/utf7_run.h"

namespace ledrix::modJudgeCode {
namespace {

// The bytes that were rated, and whether the file goes on behind them.
struct Rated {
  std::string_view bytes;
  BytesEnd end;
};

bool HoldsHighByte(std::string_view bytes) {
  return AsciiRun(bytes, 0) < bytes.size();
}

bool IsRefutedByTenth(const Rated& rated, SequenceAt sequence_at) {
  const SequenceCount count = CountSequences(rated.bytes, sequence_at, rated.end);
  return 10 * count.invalid > count.sequences;
}

bool HasNoInvalid(const Rated& rated, SequenceAt sequence_at) {
  return CountSequences(rated.bytes, sequence_at, rated.end).invalid == 0;
}

bool HasZerosOfBigEndian(std::string_view bytes) {
  size_t first = 0;  // units whose byte at the even position is zero
  size_t second = 0;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const std::string_view unit = bytes.substr(i, 2);
    if (unit == std::string_view("\0\x30", 2) || unit == std::string_view("\x30\0", 2)) continue;
    if (unit[0] == '\0') ++first;
    if (unit[1] == '\0') ++second;
  }
  return first > 0 && first >= second;
}

bool IsUnicodeRefuted(const Rated& rated) {
  if (rated.bytes.substr(0, 2) == "\xFF\xFE") return false;
  const bool is_utf8 =
      rated.bytes.find('\0') == std::string_view::npos && HasNoInvalid(rated, Utf8Sequence);
  return is_utf8 || HasZerosOfBigEndian(rated.bytes);
}

// What the units of a run tell.
struct RunContent {
  bool holds_high = false;  // a character of 80 or above
  bool holds_half = false;  // half a surrogate pair in the middle
  bool ends_in_half = false;
};

RunContent LookAt(std::u16string_view units) {
  RunContent content;
  for (const char16_t unit : units) {
    const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
    if (content.ends_in_half != low) content.holds_half = true;
    content.ends_in_half = unit >= 0xD800 && unit <= 0xDBFF;
    if (unit >= 0x80) content.holds_high = true;
  }
  return content;
}

bool IsUtf7Refuted(const Rated& rated) {
  const std::string_view bytes = rated.bytes;
  if (HoldsHighByte(bytes)) return true;
  bool holds_high = false;
  std::u16string units;
  for (size_t plus = bytes.find('+'); plus != std::string_view::npos;) {
    const Utf7Run run = ReadUtf7Run(bytes, plus + 1, units);
    const size_t end = plus + 1 + run.size;
    const bool is_cut = end == bytes.size() && rated.end == BytesEnd::kOfPart;
    const RunContent content = LookAt(units);
    holds_high = holds_high || content.holds_high;
    if (content.holds_half) return true;
    if (!is_cut && (run.bits_left || content.ends_in_half)) return true;
    if (!is_cut && run.size == 0 && !run.closed) return true;
    plus = bytes.find('+', end);
  }
  return !holds_high;
}

bool IsRefuted(CodeName code, const Rated& rated) {
  switch (code) {
    case CodeName::kSjis:
      return false;
    case CodeName::kUnicode:
      return IsUnicodeRefuted(rated);
    case CodeName::kJis:
      return HoldsHighByte(rated.bytes);
    case CodeName::kUtf7:
      return IsUtf7Refuted(rated);
    case CodeName::kUtf8:
      return IsRefutedByTenth(rated, Utf8Sequence);
    case CodeName::kEuc:
      return IsRefutedByTenth(rated, EucSequence);
  }
  return false;
}

}  // namespace

CodeName FollowedVerdict(std::string_view head) {
  const CodeName judged = JudgeCode(head);
  const Rated rated = {head.substr(0, kExaminedBytes),
                       head.size() > kExaminedBytes ? BytesEnd::kOfPart : BytesEnd::kOfText};
  if (!IsRefuted(judged, rated)) return judged;
  struct Candidate {
    CodeName code;
    SequenceAt sequence_at;
    double (*scorer)(std::string_view);
  };
  constexpr std::array<Candidate, 3> kInOrderOfTies = {{{CodeName::kSjis, SjisSequence, ScoreSJIS},
                                                        {CodeName::kUtf8, Utf8Sequence, ScoreUTF8},
                                                        {CodeName::kEuc, EucSequence, ScoreEUC}}};
  CodeName best = judged == CodeName::kUnicode ? CodeName::kSjis : judged;
  double best_score = -1;
  for (const Candidate& candidate : kInOrderOfTies) {
    if (!HasNoInvalid(rated, candidate.sequence_at)) continue;
    const double score = candidate.scorer(head);
    if (score > best_score) {
      best = candidate.code;
      best_score = score;
    }
  }
  return best;
}

}  // namespace ledrix::modJudgeCode
