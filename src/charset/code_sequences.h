// The sequences that UTF-8, EUC-JP and Shift_JIS are made of, by their form alone: whether a
// character stands at a code is not asked here.
#pragma once

#include <cstddef>
#include <string_view>

namespace ledrix {

enum class SequenceForm {
  kValid,
  kInvalid,
  kCut,  // the bytes end where the sequence could have gone on; invalid when the text ends there
};

// One sequence, its size in bytes at least 1. One byte below 80 is a valid sequence.
struct CodeSequence {
  size_t size;
  SequenceForm form;
};

// How the sequence that begins at a position, from 0, is made. REQUIRES: position < bytes.size().
CodeSequence Utf8Sequence(std::string_view bytes, size_t position);  // no overlong, no surrogate
CodeSequence EucSequence(std::string_view bytes, size_t position);
CodeSequence SjisSequence(std::string_view bytes, size_t position);  // 80, A0, FD to FF: invalid

using SequenceAt = CodeSequence (*)(std::string_view bytes, size_t position);

// How many bytes from a position on are ASCII.
size_t AsciiRun(std::string_view bytes, size_t position);

struct SequenceCount {
  size_t sequences = 0;  // those that begin with a byte of 80 or above
  size_t invalid = 0;    // of these
};

// Whether more bytes follow, so that a sequence that their end cuts is not counted at all.
enum class BytesEnd { kOfText, kOfPart };

SequenceCount CountSequences(std::string_view bytes, SequenceAt sequence_at, BytesEnd end);

// True when no sequence is invalid or cut.
bool IsValidIn(std::string_view bytes, SequenceAt sequence_at);

}  // namespace ledrix
