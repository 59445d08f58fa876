#include "charset/code_sequences.h"

#include <algorithm>

#include "charset/byte_ranges.h"
#include "text/sjis_text.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

constexpr CodeSequence kInvalidByte = {1, SequenceForm::kInvalid};

// A lead byte and the continuation bytes that could still have belonged to a character.
CodeSequence UnfinishedUtf8(std::string_view bytes, size_t start) {
  const unsigned lead = ByteAt(bytes, start);
  const size_t wanted = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (!IsIn(lead, 0xC2, 0xF4)) return kInvalidByte;
  unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  size_t size = 1;
  while (size + 1 < wanted && start + size < bytes.size() &&
         IsIn(ByteAt(bytes, start + size), lowest, highest)) {
    lowest = 0x80;
    highest = 0xBF;
    ++size;
  }
  return {size, start + size == bytes.size() ? SequenceForm::kCut : SequenceForm::kInvalid};
}

}  // namespace

CodeSequence Utf8Sequence(std::string_view bytes, size_t position) {
  const Utf8Char c = DecodeUtf8(bytes, position);
  return c.valid ? CodeSequence{c.size, SequenceForm::kValid} : UnfinishedUtf8(bytes, position);
}

CodeSequence EucSequence(std::string_view bytes, size_t position) {
  const unsigned lead = ByteAt(bytes, position);
  if (lead < 0x80) return {1, SequenceForm::kValid};
  if (lead != 0x8E && lead != 0x8F && !IsIn(lead, 0xA1, 0xFE)) return kInvalidByte;
  const size_t size = lead == 0x8F ? 3 : 2;
  const unsigned highest = lead == 0x8E ? 0xDF : 0xFE;
  for (size_t i = 1; i < size; ++i) {
    if (position + i == bytes.size()) return {1, SequenceForm::kCut};
    if (!IsIn(ByteAt(bytes, position + i), 0xA1, highest)) return kInvalidByte;
  }
  return {size, SequenceForm::kValid};
}

CodeSequence SjisSequence(std::string_view bytes, size_t position) {
  const auto lead = static_cast<unsigned char>(bytes[position]);
  if (IsSjisLead(lead)) {
    if (position + 1 == bytes.size()) return {1, SequenceForm::kCut};
    const bool whole = IsSjisTrail(static_cast<unsigned char>(bytes[position + 1]));
    return whole ? CodeSequence{2, SequenceForm::kValid} : kInvalidByte;
  }
  if (lead < 0x80 || IsIn(lead, 0xA1, 0xDF)) return {1, SequenceForm::kValid};
  return kInvalidByte;
}

size_t AsciiRun(std::string_view bytes, size_t position) {
  size_t end = position;
  while (end < bytes.size() && ByteAt(bytes, end) < 0x80) ++end;
  return end - position;
}

SequenceCount CountSequences(std::string_view bytes, SequenceAt sequence_at, BytesEnd end) {
  SequenceCount count;
  for (size_t i = AsciiRun(bytes, 0); i < bytes.size(); i += AsciiRun(bytes, i)) {
    const CodeSequence sequence = sequence_at(bytes, i);
    i += sequence.size;
    if (sequence.form == SequenceForm::kCut && end == BytesEnd::kOfPart) break;
    ++count.sequences;
    if (sequence.form != SequenceForm::kValid) ++count.invalid;
  }
  return count;
}

bool IsValidIn(std::string_view bytes, SequenceAt sequence_at) {
  return CountSequences(bytes, sequence_at, BytesEnd::kOfText).invalid == 0;
}

}  // namespace ledrix
