#include "charset/line_converter.h"

#include <algorithm>
#include <array>

#include "charset/code_sequences.h"
#include "charset/japanese_converters.h"
#include "charset/judge_code.h"
#include "charset/unicode_converters.h"
#include "text/ascii.h"
#include "text/byte_search.h"
#include "text/iconv_decoder.h"

namespace ledrix {
namespace {

class ForeignConverter : public LineConverter {
 public:
  explicit ForeignConverter(std::unique_ptr<IconvDecoder> decoder) : decoder_(std::move(decoder)) {}

  void ConvertLine(std::string_view bytes, SjisWriter& writer) override {
    decoder_->Begin();
    while (!bytes.empty()) {
      characters_.clear();
      const IconvDecoder::Step step = decoder_->Decode(bytes, characters_);
      for (const char32_t c : characters_) writer.PutCharacter(c);
      bytes.remove_prefix(step.decoded);
      if (step.invalid > 0) writer.PutInvalid(bytes.substr(0, step.invalid));
      bytes.remove_prefix(step.invalid);
    }
  }

 private:
  std::unique_ptr<IconvDecoder> decoder_;
  std::u32string characters_;
};

// Decides each line by itself: a designation makes it JIS, only ASCII needs no conversion, anything
// else is the best-scoring of the codes in which it is valid, or of all three when it is in none.
class AutodetectConverter : public LineConverter {
 public:
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override {
    if (JisConverter::HoldsDesignation(bytes)) {
      jis_.ConvertLine(bytes, writer);
    } else if (AsciiRun(bytes, 0) == bytes.size()) {
      writer.PutAscii(bytes);
    } else {
      Choose(bytes).ConvertLine(bytes, writer);
    }
  }

 private:
  struct Candidate {
    LineConverter* converter;
    double score;
    bool valid;
  };

  LineConverter& Choose(std::string_view bytes) {
    // In the order in which ties are decided. That a line is valid UTF-8 by accident is rare.
    std::array<Candidate, 3> candidates = {
        {{&utf8_, modJudgeCode::ScoreUTF8(bytes), IsValidIn(bytes, Utf8Sequence)},
         {&sjis_, modJudgeCode::ScoreSJIS(bytes), IsValidIn(bytes, SjisSequence)},
         {&euc_, modJudgeCode::ScoreEUC(bytes), IsValidIn(bytes, EucSequence)}}};
    const auto worse = [](const Candidate& a, const Candidate& b) {
      return a.valid != b.valid ? b.valid : a.score < b.score;
    };
    return *std::max_element(candidates.begin(), candidates.end(), worse)->converter;
  }

  SjisConverter sjis_;
  Utf8Converter utf8_;
  EucConverter euc_;
  JisConverter jis_;
};

std::unique_ptr<LineConverter> MakeForeign(std::string_view charset) {
  std::unique_ptr<IconvDecoder> decoder = IconvDecoder::Open(std::string(charset));
  if (decoder == nullptr) return nullptr;
  return std::make_unique<ForeignConverter>(std::move(decoder));
}

// The first `most` lines of a text, or fewer, as long as CR LF ends them. REQUIRES: the text ends
// in a line feed or is empty.
ConvertedLines FirstCrLfLines(std::string_view text, int64_t most) {
  // Most files end all of their lines so.
  const size_t all = CountCrLfLines(text);
  if (all <= static_cast<size_t>(most)) return {0, text.size(), static_cast<int64_t>(all)};
  ConvertedLines first;
  while (first.lines < most && first.written < text.size()) {
    const size_t end = FindEither(text, '\r', '\n', first.written);
    if (text[end] != '\r' || text[end + 1] != '\n') break;
    first.written = end + 2;
    ++first.lines;
  }
  return first;
}

// Size of the bytes up to a line feed, it included: the last one, or that many before it.
// REQUIRES: there are so many.
size_t SizeToLineFeed(std::string_view bytes, std::string_view feed, std::ptrdiff_t before_last) {
  size_t size = bytes.size();
  while (true) {
    if (feed.size() == 1) {
      size = FindLastByte(bytes.substr(0, size), feed[0]) + 1;
    } else {
      while (bytes.substr(size - feed.size(), feed.size()) != feed) size -= feed.size();
    }
    if (before_last-- == 0) return size;
    size -= feed.size();
  }
}

}  // namespace

ConvertedLines LineConverter::ConvertLines(std::string_view bytes, int64_t most, char* out) {
  const KnownRun run = known_run_(bytes, out);
  const std::string_view text(out, run.written);
  ConvertedLines converted = FirstCrLfLines(text.substr(0, FindLastByte(text, '\n') + 1), most);
  if (converted.lines == 0) return converted;
  const auto feeds_behind = std::count(out + converted.written, out + run.written, '\n');
  converted.read = SizeToLineFeed(bytes.substr(0, run.read), line_feed_, feeds_behind);
  converted.is_good = converted.read > run.read / 2;
  loss_.SkipLines(static_cast<uint64_t>(converted.lines));
  return converted;
}

std::unique_ptr<LineConverter> LineConverter::Make(std::string_view charset, ByteOrder order) {
  switch (FamilyOf(charset)) {
    case CharsetFamily::kShiftJis:
      return std::make_unique<SjisConverter>();
    case CharsetFamily::kEucJp:
      return std::make_unique<EucConverter>();
    case CharsetFamily::kIso2022Jp:
      return std::make_unique<JisConverter>();
    case CharsetFamily::kUtf8:
      return std::make_unique<Utf8Converter>();
    case CharsetFamily::kUtf7:
      return std::make_unique<Utf7Converter>();
    case CharsetFamily::kUtf16:
      return std::make_unique<Utf16Converter>(order);
    case CharsetFamily::kUtf16Le:
      return std::make_unique<Utf16Converter>(ByteOrder::kLittleEndian);
    case CharsetFamily::kUtf16Be:
      return std::make_unique<Utf16Converter>(ByteOrder::kBigEndian);
    case CharsetFamily::kAutodetect:
      return std::make_unique<AutodetectConverter>();
    case CharsetFamily::kForeign:
      return MakeForeign(charset);
  }
  return nullptr;
}

bool IsCharsetAvailable(std::string_view name) {
  if (Trimmed(name).empty()) return false;
  return name.find('/') == std::string_view::npos && LineConverter::Make(name) != nullptr;
}

}  // namespace ledrix
