// Judges a text's character code by all of its bytes, and says so when they leave it open.
//
// Strict decoders of eight codes read the text side by side. One that meets an invalid sequence is
// out; those that remain are weighed by how likely Japanese text is that reads so. What is left
// open is not guessed, but the two files of a pair vote together.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "charset/strict_decoders.h"

namespace ledrix::modJudgeCode {

enum class FoundBy {
  kMark,     // a byte-order mark
  kOnly,     // every other code is refuted by some bytes
  kWeight,   // it is much the likelier of those that are not
  kPartner,  // the other file of the pair leaves only this one
  kOpen,
};

struct SureVerdict {
  std::optional<SureCode> code;  // nothing: open
  FoundBy found_by = FoundBy::kOpen;
  // The codes in question, the likelier one first, when it is open or another one was close; none
  // when no code has all of the bytes.
  std::optional<SureCode> likeliest;
  std::optional<SureCode> rival;
  int64_t margin = 0;  // by which the likeliest leads, in costs
  // Where the last other code went out: line from 1, bytes.
  uint64_t line = 0;
  std::string bytes;
};

// "SJIS", "EUC", "JIS", "UTF8", "UTF16LE", "UTF16BE", "UTF7", "ASCII"; "不明" for nothing.
const char* ToText(std::optional<SureCode> code);
// "印", "唯一", "重み", "相手", "不明".
const char* ToText(FoundBy found_by);
// As users know it: "Shift_JIS", "EUC-JP" and so on.
const char* CharsetNameOf(SureCode code);
// What decided a verdict, in one line.
std::string WhyText(const SureVerdict& verdict);
// "どちらとも判定できません（Shift_JIS か EUC-JP）" of an open verdict.
std::string OpenText(const SureVerdict& verdict);

// One text.
class SureJudge {
 public:
  SureJudge();

  // Takes the next bytes of it; Finish after the last.
  void Add(std::string_view block);
  void Finish();

  // REQUIRES: Finish() was called, here and below.
  SureVerdict Verdict() const;
  // The decoders that all of the text is valid in and that it gives a reason to choose.
  std::vector<const StrictDecoder*> Candidates() const;

 private:
  bool TakesPlain() const;
  bool IsPlausible(const StrictDecoder& decoder) const;
  void TakePlain(std::string_view run);
  void TakeByAll(std::string_view chunk);
  // Remembers where decoders went out in the bytes just taken.
  void NoteOuts(std::string_view chunk);
  void NoteTaken(std::string_view bytes);

  std::vector<std::unique_ptr<StrictDecoder>> decoders_;
  size_t alive_;            // decoders that are not out
  std::string head_;        // the first bytes, as many as a mark has
  uint64_t taken_ = 0;      // bytes so far
  uint64_t line_ends_ = 0;  // CR LF, CR and LF
  char last_ = '\0';        // byte
  bool is_text_ = false;    // the only decoder left has taken plausible text for long
  std::set<const StrictDecoder*> known_out_;
  // Where the last decoder went out.
  uint64_t out_line_ = 0;
  std::string out_bytes_;
  std::map<SureCode, std::string> characters_there_;  // as those read them that are left
};

struct PairVerdicts {
  SureVerdict old_side;
  SureVerdict new_side;
};

// Both files of a pair: what one leaves open the other may decide.
PairVerdicts JudgePair(const SureJudge& old_side, const SureJudge& new_side);

}  // namespace ledrix::modJudgeCode
