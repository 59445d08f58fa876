// Decoders that read a text whole, block by block, and go out at the first sequence that is invalid
// in their code. None keeps more of the text than a sequence that a block's end cuts.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "charset/text_weights.h"

namespace ledrix::modJudgeCode {

enum class SureCode { kAscii, kSjis, kEuc, kJis, kUtf8, kUtf16Le, kUtf16Be, kUtf7 };

class StrictDecoder {
 public:
  explicit StrictDecoder(SureCode code) : code_(code) {}
  StrictDecoder(const StrictDecoder&) = delete;
  StrictDecoder& operator=(const StrictDecoder&) = delete;
  virtual ~StrictDecoder() = default;

  SureCode code() const { return code_; }

  // Takes the next bytes; nothing more once it is out.
  virtual void Take(std::string_view block) = 0;
  // It is the only one left, so that its characters need not be weighed.
  void StopWeighing() { weight_.Stop(); }
  // The bytes of the block last taken, or of its first kMarkedBytes, that make up the character to
  // which one of them belongs, counted from 0; none where a block's end cuts it.
  static constexpr size_t kMarkedBytes = 512;
  std::string_view CharacterAt(std::string_view block, size_t place) const;
  // The text has ended; within a sequence that is invalid.
  virtual void Finish() = 0;
  // True while it takes ASCII, but for ESC, NUL and "+", without a look at it.
  virtual bool TakesPlain() const = 0;
  // Takes some of that. REQUIRES: TakesPlain().
  void TakePlain(std::string_view run) {
    taken_ += run.size();
    weight_.AddAscii(run);
  }

  // The text holds what the code would be chosen for; plain ASCII holds nothing of it.
  virtual bool has_evidence() const = 0;
  uint64_t cost() const { return weight_.cost(); }
  // What speaks for the code beside its characters, in the unit of a cost.
  virtual uint64_t credit() const = 0;

  bool is_out() const { return is_out_; }
  // Where it went out: the first byte of the invalid sequence, counted from 0, and the bytes of it
  // up to the one that broke it.
  uint64_t out_at() const { return sequence_at_; }
  std::string_view out_bytes() const { return {sequence_.data(), sequence_size_}; }

 protected:
  void GoOut() { is_out_ = true; }
  // A byte of the block, at a place of it.
  void NoteByte(char byte, size_t place) {
    if (sequence_size_ == 0) sequence_at_ = taken_;
    if (sequence_size_ == 0 && place < kMarkedBytes) starts_.set(place);
    if (sequence_size_ < sequence_.size()) sequence_[sequence_size_++] = byte;
    ++taken_;
  }
  void Skip(size_t bytes) { taken_ += bytes; }
  void EndSequence() { sequence_size_ = 0; }
  bool IsWithinSequence() const { return sequence_size_ > 0; }

  TextWeight weight_;
  std::bitset<kMarkedBytes> starts_;  // of characters in the block last taken

 private:
  const SureCode code_;
  bool is_out_ = false;
  uint64_t taken_ = 0;  // bytes
  uint64_t sequence_at_ = 0;
  std::array<char, 8> sequence_{};  // a longer one keeps its first bytes
  size_t sequence_size_ = 0;
};

// One of each code, in the order of SureCode. A byte-order mark at the beginning belongs to UTF-8
// and UTF-16. UTF-16 without one holds only what Japanese text has; with it any character.
std::vector<std::unique_ptr<StrictDecoder>> MakeStrictDecoders();

}  // namespace ledrix::modJudgeCode
