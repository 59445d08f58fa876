#include "charset/strict_decoders.h"

#include <algorithm>

#include "charset/strict_codes.h"

namespace ledrix::modJudgeCode {
namespace {

// Drives what reads one code, byte by byte.
template <class Code>
class DecoderOf final : public StrictDecoder {
 public:
  template <class... Arguments>
  explicit DecoderOf(SureCode code, Arguments... arguments)
      : StrictDecoder(code), reader_{arguments...} {}

  void Take(std::string_view block) override {
    starts_.reset();
    for (size_t i = 0; i < block.size() && !is_out();) {
      if (TakesPlain()) {
        const size_t plain = PlainRun(block, i, '+');
        for (size_t k = i; k < std::min(i + plain, kMarkedBytes); ++k) starts_.set(k);
        TakePlain(block.substr(i, plain));
        i += plain;
        if (i == block.size()) return;
      }
      if constexpr (requires { reader_.ValidRun(block); }) {
        if (!weight_.is_weighing() && !IsWithinSequence() && i >= kMarkedBytes) {
          const size_t valid = reader_.ValidRun(block.substr(i));
          Skip(valid);
          i += valid;
          if (i == block.size()) return;
        }
      }
      NoteByte(block[i], i);
      const Step step = reader_.Put(static_cast<unsigned char>(block[i]), weight_);
      if (step == Step::kInvalid) GoOut();
      if (step == Step::kDone) EndSequence();
      ++i;
    }
  }
  void Finish() override {
    if (!is_out() && !reader_.EndsWell()) GoOut();
  }
  bool TakesPlain() const override { return !IsWithinSequence() && reader_.TakesPlain(); }
  bool has_evidence() const override { return reader_.has_evidence; }
  uint64_t credit() const override {
    if constexpr (requires { reader_.credit(); }) return reader_.credit();
    return 0;
  }

 private:
  Code reader_;
};

}  // namespace

std::string_view StrictDecoder::CharacterAt(std::string_view block, size_t place) const {
  const size_t size = std::min(block.size(), kMarkedBytes);
  if (place >= size) return {};
  size_t start = place;
  while (start > 0 && !starts_[start]) --start;
  size_t end = place + 1;
  while (end < size && !starts_[end]) ++end;
  const bool is_whole = starts_[start] && (end < size || !IsWithinSequence());
  return is_whole ? block.substr(start, end - start) : std::string_view();
}

std::vector<std::unique_ptr<StrictDecoder>> MakeStrictDecoders() {
  std::vector<std::unique_ptr<StrictDecoder>> decoders;
  decoders.push_back(std::make_unique<DecoderOf<AsciiCode>>(SureCode::kAscii));
  decoders.push_back(std::make_unique<DecoderOf<SjisCode>>(SureCode::kSjis));
  decoders.push_back(std::make_unique<DecoderOf<EucCode>>(SureCode::kEuc));
  decoders.push_back(std::make_unique<DecoderOf<JisCode>>(SureCode::kJis));
  decoders.push_back(std::make_unique<DecoderOf<Utf8Code>>(SureCode::kUtf8));
  decoders.push_back(std::make_unique<DecoderOf<Utf16Code>>(SureCode::kUtf16Le, false));
  decoders.push_back(std::make_unique<DecoderOf<Utf16Code>>(SureCode::kUtf16Be, true));
  decoders.push_back(std::make_unique<DecoderOf<Utf7Code>>(SureCode::kUtf7));
  return decoders;
}

}  // namespace ledrix::modJudgeCode
