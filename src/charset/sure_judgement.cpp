#include "charset/sure_judgement.h"

#include <algorithm>
#include <utility>

#include "charset/strict_codes.h"
#include "text/byte_search.h"

namespace ledrix::modJudgeCode {
namespace {

// What a code must be likelier by to be taken.
constexpr int64_t kMargin = 7 * kCostsPerBit;

// How seldom texts are written so, before a look at one.
int64_t PriorCost(SureCode code) {
  switch (code) {
    case SureCode::kUtf16Le:
    case SureCode::kUtf16Be:
      return 12 * kCostsPerBit;
    case SureCode::kUtf7:
      return 2 * kCostsPerBit;
    default:
      return 0;
  }
}

struct Mark {
  SureCode code;
  std::string_view bytes;
};
constexpr Mark kMarks[] = {{SureCode::kUtf8, "\xEF\xBB\xBF"},
                           {SureCode::kUtf16Le, "\xFF\xFE"},
                           {SureCode::kUtf16Be, "\xFE\xFF"}};

constexpr size_t kLongestMark = 3;

// CR LF, CR and LF of bytes behind the byte `before`; the CR of one counts, which in UTF-16 a zero
// byte parts from its LF.
uint64_t CountLineEnds(char before, std::string_view bytes) {
  const auto count = [bytes](char wanted) {
    return static_cast<uint64_t>(std::count(bytes.begin(), bytes.end(), wanted));
  };
  const uint64_t feeds = count('\n');
  const uint64_t returns = count('\r');
  if (feeds == 0 || (returns == 0 && before != '\r')) return feeds + returns;
  uint64_t pairs = bytes[0] == '\n' && before == '\r' ? 1 : 0;
  pairs += CountPairs(bytes, '\r', '\n');
  for (size_t i = bytes.find('\0'); i < bytes.size(); i = bytes.find('\0', i + 1)) {
    const bool is_between = i > 0 && i + 1 < bytes.size();
    pairs += is_between && bytes[i - 1] == '\r' && bytes[i + 1] == '\n' ? 1 : 0;
  }
  return feeds + returns - pairs;
}

// A code and what the text costs in it.
struct Rating {
  SureCode code;
  int64_t cost;
};
using Ratings = std::vector<Rating>;

Ratings RatingsOf(const SureJudge& judge) {
  Ratings ratings;
  for (const StrictDecoder* const decoder : judge.Candidates()) {
    ratings.push_back({decoder->code(), static_cast<int64_t>(decoder->cost()) -
                                            static_cast<int64_t>(decoder->credit()) +
                                            PriorCost(decoder->code())});
  }
  return ratings;
}

// The verdict by weight, or that it is open. REQUIRES: at least two ratings.
SureVerdict Weigh(Ratings ratings) {
  std::stable_sort(ratings.begin(), ratings.end(),
                   [](const Rating& a, const Rating& b) { return a.cost < b.cost; });
  SureVerdict verdict;
  verdict.likeliest = ratings[0].code;
  verdict.rival = ratings[1].code;
  verdict.margin = ratings[1].cost - ratings[0].cost;
  if (verdict.margin >= kMargin) {
    verdict.code = verdict.likeliest;
    verdict.found_by = FoundBy::kWeight;
  }
  return verdict;
}

bool IsUtf16(const StrictDecoder& decoder) {
  return decoder.code() == SureCode::kUtf16Le || decoder.code() == SureCode::kUtf16Be;
}

bool Allows(const SureJudge& judge, SureCode code) {
  const std::vector<const StrictDecoder*> candidates = judge.Candidates();
  return std::any_of(candidates.begin(), candidates.end(),
                     [code](const StrictDecoder* decoder) { return decoder->code() == code; });
}

// What the other file of a pair says of a verdict that its own text does not make sure: of an open
// one which of its codes the other allows, of a narrow one that its rival is all that the other can
// be.
void AskPartner(SureVerdict& open, const SureVerdict& partner, const SureJudge& partner_text) {
  constexpr int64_t kSureMargin = 24 * kCostsPerBit;
  const bool is_partner_certain =
      partner.found_by == FoundBy::kOnly || partner.found_by == FoundBy::kMark;
  if (!open.rival || (open.code && (open.margin >= kSureMargin || !is_partner_certain))) return;
  const auto speaks_for = [&](SureCode code) {
    return partner.code ? partner.code == code : Allows(partner_text, code);
  };
  const bool likeliest = speaks_for(*open.likeliest);
  if (likeliest == speaks_for(*open.rival)) return;
  open.code = likeliest ? open.likeliest : open.rival;
  open.found_by = FoundBy::kPartner;
}

// Two open texts weigh together in the codes that both allow.
void WeighTogether(const SureJudge& old_side, const SureJudge& new_side, PairVerdicts& verdicts) {
  if (verdicts.old_side.code || verdicts.new_side.code) return;
  Ratings together;
  for (const Rating& a : RatingsOf(old_side)) {
    for (const Rating& b : RatingsOf(new_side)) {
      if (a.code == b.code) together.push_back({a.code, a.cost + b.cost});
    }
  }
  if (together.size() < 2) return;
  const SureVerdict verdict = Weigh(together);
  if (!verdict.code) return;
  for (SureVerdict* const side : {&verdicts.old_side, &verdicts.new_side}) {
    side->code = verdict.code;
    side->found_by = FoundBy::kWeight;
    side->likeliest = verdict.likeliest;
    side->rival = verdict.rival;
  }
}

}  // namespace

SureJudge::SureJudge() : decoders_(MakeStrictDecoders()), alive_(decoders_.size()) {}

bool SureJudge::TakesPlain() const {
  return std::all_of(decoders_.begin(), decoders_.end(), [](const auto& decoder) {
    return decoder->is_out() || decoder->TakesPlain();
  });
}

void SureJudge::Add(std::string_view block) {
  // While several codes are possible, the way back to plain text is looked for soon.
  constexpr size_t kShortChunk = 512;
  if (head_.size() < kLongestMark) head_ += block.substr(0, kLongestMark - head_.size());
  while (!block.empty() && alive_ > 0) {
    const char also_stops = decoders_.back()->is_out() ? '\0' : '+';
    const size_t plain = TakesPlain() ? PlainRun(block, 0, also_stops) : 0;
    const size_t most = alive_ == 1 ? block.size() : kShortChunk;
    const std::string_view chunk = block.substr(0, plain > 0 ? plain : most);
    plain > 0 ? TakePlain(chunk) : TakeByAll(chunk);
    NoteTaken(chunk);
    block.remove_prefix(chunk.size());
  }
  taken_ += block.size();
}

void SureJudge::TakePlain(std::string_view run) {
  for (const auto& decoder : decoders_) {
    if (!decoder->is_out()) decoder->TakePlain(run);
  }
}

void SureJudge::TakeByAll(std::string_view chunk) {
  for (const auto& decoder : decoders_) {
    if (!decoder->is_out()) decoder->Take(chunk);
  }
  NoteOuts(chunk);
}

void SureJudge::NoteOuts(std::string_view chunk) {
  const StrictDecoder* last = nullptr;
  size_t alive = 0;
  for (const auto& decoder : decoders_) {
    alive += decoder->is_out() ? 0 : 1;
    // The one of this chunk that went furthest.
    if (!decoder->is_out() || known_out_.count(decoder.get()) > 0) continue;
    known_out_.insert(decoder.get());
    // Almost anything is UTF-16 for a while; where that ends tells little.
    if (IsUtf16(*decoder) && !out_bytes_.empty()) continue;
    const bool tells_more = last != nullptr && IsUtf16(*last) && !IsUtf16(*decoder);
    const bool tells_less = last != nullptr && !IsUtf16(*last) && IsUtf16(*decoder);
    const bool is_later = last == nullptr || decoder->out_at() >= last->out_at();
    if (tells_more || (is_later && !tells_less)) last = decoder.get();
  }
  if (std::exchange(alive_, alive) > 1 && alive == 1) {
    for (const auto& decoder : decoders_) {
      if (!IsUtf16(*decoder)) decoder->StopWeighing();
    }
  }
  if (last == nullptr) return;
  const size_t at = last->out_at() > taken_ ? static_cast<size_t>(last->out_at() - taken_) : 0;
  // Where the text has ended the line end at its end opens no other line.
  const bool is_behind = chunk.empty() && (last_ == '\n' || last_ == '\r');
  out_line_ = 1 + line_ends_ + CountLineEnds(last_, chunk.substr(0, at)) - (is_behind ? 1 : 0);
  out_bytes_ = last->out_bytes();
  characters_there_.clear();
  for (const auto& decoder : decoders_) {
    if (!decoder->is_out()) characters_there_[decoder->code()] = decoder->CharacterAt(chunk, at);
  }
  if (out_bytes_.size() == 1) out_bytes_ += chunk.substr(std::min(at + 1, chunk.size()), 1);
}

void SureJudge::NoteTaken(std::string_view bytes) {
  taken_ += bytes.size();
  line_ends_ += CountLineEnds(last_, bytes);
  if (!bytes.empty()) last_ = bytes.back();
  // What has been text for so long stays it.
  constexpr uint64_t kLongEnough = uint64_t{1} << 16;
  if (alive_ != 1 || is_text_ || taken_ < kLongEnough) return;
  is_text_ = true;
  for (const auto& decoder : decoders_) {
    is_text_ = is_text_ && (decoder->is_out() || IsPlausible(*decoder));
  }
  for (const auto& decoder : decoders_) {
    if (is_text_) decoder->StopWeighing();
  }
}

void SureJudge::Finish() {
  for (const auto& decoder : decoders_) decoder->Finish();
  NoteOuts({});
}

// A few bytes of any kind are characters of UTF-16, but seldom of a text.
bool SureJudge::IsPlausible(const StrictDecoder& decoder) const {
  constexpr uint64_t kMostPerByte = 10 * kCostsPerBit;
  const bool has_mark = head_.starts_with("\xFF\xFE") || head_.starts_with("\xFE\xFF");
  return !IsUtf16(decoder) || has_mark || is_text_ || decoder.cost() <= kMostPerByte * taken_;
}

std::vector<const StrictDecoder*> SureJudge::Candidates() const {
  std::vector<const StrictDecoder*> candidates;
  for (const auto& decoder : decoders_) {
    if (!decoder->is_out() && decoder->has_evidence() && IsPlausible(*decoder)) {
      candidates.push_back(decoder.get());
    }
  }
  return candidates;
}

SureVerdict SureJudge::Verdict() const {
  const Ratings ratings = RatingsOf(*this);
  const auto allows = [&](SureCode code) {
    return std::any_of(ratings.begin(), ratings.end(),
                       [code](const Rating& rating) { return rating.code == code; });
  };
  SureVerdict verdict;
  for (const auto& [code, bytes] : kMarks) {
    if (!head_.starts_with(bytes) || !allows(code)) continue;
    return {code, FoundBy::kMark, code, std::nullopt, 0, 1, std::string(bytes)};
  }
  if (ratings.size() > 1) verdict = Weigh(ratings);
  if (ratings.size() == 1) {
    verdict.code = verdict.likeliest = ratings[0].code;
    verdict.found_by = FoundBy::kOnly;
  }
  verdict.line = out_line_;
  verdict.bytes = out_bytes_;
  if (verdict.code) {
    const auto there = characters_there_.find(*verdict.code);
    const bool is_character = there != characters_there_.end() && !there->second.empty();
    // What broke a sequence of another code is told with it.
    const bool is_plain = is_character && there->second.size() == 1 && there->second[0] >= 0;
    if (is_character && !is_plain) verdict.bytes = there->second;
  }
  return verdict;
}

PairVerdicts JudgePair(const SureJudge& old_side, const SureJudge& new_side) {
  PairVerdicts verdicts{old_side.Verdict(), new_side.Verdict()};
  const SureVerdict old_alone = verdicts.old_side;
  AskPartner(verdicts.old_side, verdicts.new_side, new_side);
  AskPartner(verdicts.new_side, old_alone, old_side);
  WeighTogether(old_side, new_side, verdicts);
  return verdicts;
}

}  // namespace ledrix::modJudgeCode
