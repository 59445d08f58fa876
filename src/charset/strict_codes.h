// The codes that strict decoders read: each takes a text byte by byte, tells where a sequence ends
// and which one is invalid, and weighs the characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "charset/text_weights.h"

namespace ledrix::modJudgeCode {

enum class Step {
  kInvalid,
  kWithin,  // the sequence goes on
  kDone,
};

// How many bytes from a position on are ASCII but for ESC, NUL and one more.
size_t PlainRun(std::string_view bytes, size_t position, char also_stops);

// What is ASCII and nothing else; a designation of ISO-2022-JP is not.
struct AsciiCode {
  bool has_evidence = true;
  bool TakesPlain() const { return !after_escape_; }
  bool EndsWell() const { return true; }
  Step Put(unsigned byte, TextWeight& weight);

 private:
  bool after_escape_ = false;
};

struct SjisCode {
  bool has_evidence = false;
  bool TakesPlain() const { return true; }
  bool EndsWell() const { return lead_ == 0; }
  Step Put(unsigned byte, TextWeight& weight);
  // How many of the first bytes are whole valid characters, here and below; nothing is weighed.
  size_t ValidRun(std::string_view bytes) const;

 private:
  unsigned lead_ = 0;
};

struct EucCode {
  bool has_evidence = false;
  bool TakesPlain() const { return true; }
  bool EndsWell() const { return size_ == 0; }
  Step Put(unsigned byte, TextWeight& weight);
  size_t ValidRun(std::string_view bytes) const;

 private:
  Step End(unsigned byte, TextWeight& weight);

  unsigned bytes_[2] = {};
  size_t size_ = 0;  // bytes of the sequence so far
};

// A line end goes back to ASCII, as ISO-2022-JP has it to be said before.
struct JisCode {
  bool has_evidence = false;
  bool TakesPlain() const { return set_ == Set::kSingle; }
  bool EndsWell() const { return escape_.empty() && lead_ == 0; }
  Step Put(unsigned byte, TextWeight& weight);

 private:
  enum class Set { kSingle, kKatakana, kMain, kSupplementary };
  Step PutEscape(unsigned byte);
  Step PutGraphic(unsigned byte, TextWeight& weight);

  Set set_ = Set::kSingle;
  std::string escape_;
  unsigned lead_ = 0;
};

struct Utf8Code {
  bool has_evidence = false;
  bool TakesPlain() const { return true; }
  bool EndsWell() const { return left_ == 0; }
  Step Put(unsigned byte, TextWeight& weight);
  size_t ValidRun(std::string_view bytes) const;

 private:
  size_t left_ = 0;  // continuation bytes to come
  unsigned lowest_ = 0x80;
  unsigned highest_ = 0xBF;
  char32_t character_ = 0;
};

struct Utf16Code {
  explicit Utf16Code(bool big_endian) : is_big_endian(big_endian) {}

  bool is_big_endian;
  bool has_evidence = true;
  bool TakesPlain() const { return false; }
  bool EndsWell() const { return !has_first_ && high_ == 0 && units_ > 0; }
  Step Put(unsigned byte, TextWeight& weight);

 private:
  Step PutUnit(unsigned unit, TextWeight& weight);

  bool has_first_ = false;
  uint64_t units_ = 0;
  uint64_t foreign_ = 0;  // of them, that Japanese text does not hold
  bool is_marked_ = false;
  unsigned first_ = 0;
  unsigned high_ = 0;  // half a surrogate pair
};

struct Utf7Code {
  bool has_evidence = false;  // a run of Japanese
  bool TakesPlain() const { return !in_run_; }
  bool EndsWell() const { return !in_run_ || EndRun(); }
  // Its runs look like no other text: letters of both cases and digits without order, whose bits
  // come out even.
  uint64_t credit() const { return credit_; }
  Step Put(unsigned byte, TextWeight& weight);

 private:
  Step PutInRun(unsigned byte, TextWeight& weight);
  Step PutUnit(unsigned unit, TextWeight& weight);
  // True when what is left of the bits and of a pair is nothing.
  bool EndRun() const { return high_ == 0 && units_ > 0 && bit_count_ < 6 && bits_ == 0; }

  bool in_run_ = false;
  unsigned bits_ = 0;
  unsigned bit_count_ = 0;
  size_t units_ = 0;  // of the run
  // In all: of two bytes in Shift_JIS, and in none.
  uint64_t known_ = 0;
  uint64_t foreign_ = 0;
  unsigned high_ = 0;
  uint64_t credit_ = 0;
};

}  // namespace ledrix::modJudgeCode
