// Writes one line of Shift_JIS text and records what that text cannot hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "charset/conversion_loss.h"
#include "charset/known_runs.h"
#include "text/code_page_932.h"
#include "text/sjis_text.h"

namespace ledrix {

// Where a line stands in its file: a byte-order mark at the start of the first line is no text.
enum class LinePosition { kFirst, kLater };

class SjisWriter {
 public:
  // Appends to `text`; both must outlive the writer.
  SjisWriter(LinePosition position, SjisText& text, ConversionLoss& loss)
      : text_(text),
        loss_(loss),
        begin_(text.size()),
        scanned_(text.size()),
        may_be_mark_(position == LinePosition::kFirst) {}

  // ASCII bytes, as they stand.
  void PutAscii(std::string_view bytes) {
    if (!bytes.empty()) may_be_mark_ = false;
    text_ += SjisView::FromBytes(bytes);
  }

  // What `convert` takes of a text, from its first byte on; the number of its bytes. The next one,
  // if there is one, begins something that `convert` does not take.
  size_t PutKnown(std::string_view bytes, KnownRunConverter convert) {
    // Room is cleared before it is filled, so there is little more than a line takes.
    constexpr size_t kMostAtOnce = 512;
    size_t taken = 0;
    KnownRun run{};
    do {
      const std::string_view piece = bytes.substr(taken, kMostAtOnce);
      text_.AppendFilled(piece.size() + kKnownRunSlack, [&](char* out) {
        run = convert(piece, out);
        return run.written;
      });
      taken += run.read;
    } while (run.read > 0 && taken < bytes.size());
    if (taken > 0) may_be_mark_ = false;
    return taken;
  }

  // A character by the code that Windows chooses, or "?" when Shift_JIS lacks it.
  void PutCharacter(char32_t character) {
    const bool is_mark = may_be_mark_ && character == kByteOrderMark;
    may_be_mark_ = false;
    if (is_mark) return;
    const unsigned code = character < 0x80 ? character : code_page_.Encode(character);
    if (code != 0 || character == 0) {
      if (code_page_.Decode(static_cast<uint16_t>(code)) != character) {
        loss_.AddFolded(text_.size() - begin_, character);
      }
      text_.AppendCode(code);
    } else {
      loss_.AddCharacter(NextOrdinal(), character);
      text_.AppendCode('?');
    }
  }

  // "?" for an invalid sequence of these bytes.
  void PutInvalid(std::string_view bytes) {
    may_be_mark_ = false;
    loss_.AddInvalid(NextOrdinal(), bytes);
    text_.AppendCode('?');
  }

 private:
  static constexpr char32_t kByteOrderMark = 0xFEFF;

  // The place, from 1, among the line's "?" of one that is written next. The text is searched for
  // those before it only now, so that a line without a loss is never searched.
  uint64_t NextOrdinal();

  const CodePage932& code_page_ = CodePage932::Get();
  SjisText& text_;
  ConversionLoss& loss_;
  size_t begin_;                 // where the line begins
  size_t scanned_;               // bytes of the text whose "?" are counted
  uint64_t question_marks_ = 0;  // of this line, before scanned_
  bool may_be_mark_;
};

}  // namespace ledrix
