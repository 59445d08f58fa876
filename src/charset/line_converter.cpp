#include "charset/line_converter.h"

#include <algorithm>
#include <array>
#include <optional>

#include "charset/japanese_codes.h"
#include "charset/judge_code.h"
#include "text/ascii.h"
#include "text/code_page_932.h"
#include "text/iconv_decoder.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

constexpr char32_t kByteOrderMark = 0xFEFF;
constexpr unsigned kUnknown = '?';

unsigned ByteAt(std::string_view bytes, size_t position) {
  return static_cast<unsigned char>(bytes[position]);
}

bool IsIn(unsigned b, unsigned lowest, unsigned highest) {
  return b >= lowest && b <= highest;
}

// How many bytes from a position on are ASCII.
size_t AsciiRun(std::string_view bytes, size_t position) {
  size_t end = position;
  while (end < bytes.size() && ByteAt(bytes, end) < 0x80) ++end;
  return end - position;
}

void AppendAscii(std::string_view bytes, size_t position, size_t size, SjisText& text) {
  text += SjisView::FromBytes(bytes.substr(position, size));
}

// Takes characters of a line and appends them as Shift_JIS.
class UnicodeWriter {
 public:
  UnicodeWriter(LinePosition position, SjisText& text)
      : text_(text), may_be_mark_(position == LinePosition::kFirst) {}

  void Put(char32_t character) {
    const bool is_mark = may_be_mark_ && character == kByteOrderMark;
    may_be_mark_ = false;
    if (is_mark) return;
    const unsigned code = character < 0x80 ? character : code_page_.Encode(character);
    text_.AppendCode(code == 0 && character != 0 ? kUnknown : code);
  }
  void PutUnknown() { Put(kReplacementCharacter); }
  // ASCII bytes as they stand.
  void PutAscii(std::string_view bytes, size_t position, size_t size) {
    if (size > 0) may_be_mark_ = false;
    AppendAscii(bytes, position, size, text_);
  }

 private:
  const CodePage932& code_page_ = CodePage932::Get();
  SjisText& text_;
  bool may_be_mark_;
};

// UTF-16 units into characters; half a surrogate pair is an invalid sequence.
class Utf16Joiner {
 public:
  explicit Utf16Joiner(UnicodeWriter& writer) : writer_(writer) {}

  void Put(char32_t unit) {
    const bool low = IsIn(unit, 0xDC00, 0xDFFF);
    if (high_ != 0) {
      const char32_t high = std::exchange(high_, 0);
      if (low) {
        writer_.Put(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
        return;
      }
      writer_.PutUnknown();
    }
    if (IsIn(unit, 0xD800, 0xDBFF)) {
      high_ = unit;
    } else if (low) {
      writer_.PutUnknown();
    } else {
      writer_.Put(unit);
    }
  }
  void Finish() {
    if (std::exchange(high_, 0) != 0) writer_.PutUnknown();
  }

 private:
  UnicodeWriter& writer_;
  char32_t high_ = 0;
};

class SjisConverter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition /*position*/, SjisText& text) override {
    const CodePage932& code_page = CodePage932::Get();
    const SjisView line = SjisView::FromBytes(bytes);
    for (size_t i = 0; i < line.size();) {
      const size_t size = SjisCharSize(line, i);
      const unsigned code = size == 2 ? line.At(i) * 256u + line.At(i + 1) : line.At(i);
      const char16_t character = code_page.Decode(static_cast<uint16_t>(code));
      const unsigned chosen = code_page.Encode(character);
      text.AppendCode(chosen == 0 && code != 0 ? kUnknown : chosen);
      i += size;
    }
  }
};

class EucConverter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition /*position*/, SjisText& text) override {
    for (size_t i = 0; i < bytes.size();) {
      const size_t ascii = AsciiRun(bytes, i);
      AppendAscii(bytes, i, ascii, text);
      i += ascii;
      if (i < bytes.size()) i += ConvertOne(bytes.substr(i), text);
    }
  }

 private:
  // Converts what begins with a byte of 80 or above and returns its size.
  static size_t ConvertOne(std::string_view bytes, SjisText& text) {
    const unsigned b = ByteAt(bytes, 0);
    const auto is_set = [&bytes](size_t i) {
      return i < bytes.size() && IsIn(ByteAt(bytes, i), 0xA1, 0xFE);
    };
    const auto cell = [&bytes](size_t i) { return static_cast<int>(ByteAt(bytes, i)) - 0xA0; };
    unsigned code = 0;
    size_t size = 1;
    if (b == 0x8E && is_set(1) && ByteAt(bytes, 1) <= 0xDF) {
      code = ByteAt(bytes, 1);
      size = 2;
    } else if (b == 0x8F && is_set(1) && is_set(2)) {
      code = SjisOfSupplementaryRowCell(cell(1), cell(2));
      size = 3;
    } else if (is_set(0) && is_set(1)) {
      code = SjisOfRowCell(cell(0), cell(1));
      size = 2;
    }
    text.AppendCode(code == 0 ? kUnknown : code);
    return size;
  }
};

class JisConverter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition /*position*/, SjisText& text) override {
    Set set = Set::kSingle;
    for (size_t i = 0; i < bytes.size();) {
      if (const std::optional<Designation> found = FindDesignation(bytes.substr(i))) {
        set = found->set;
        i += found->bytes.size();
      } else {
        i += ConvertOne(bytes.substr(i), set, text);
      }
    }
  }

  static bool HoldsDesignation(std::string_view bytes) {
    for (size_t i = bytes.find('\x1B'); i != std::string_view::npos;
         i = bytes.find('\x1B', i + 1)) {
      if (FindDesignation(bytes.substr(i))) return true;
    }
    return false;
  }

 private:
  enum class Set { kSingle, kKatakana, kMain, kSupplementary };
  struct Designation {
    std::string_view bytes;
    Set set;
  };

  static std::optional<Designation> FindDesignation(std::string_view bytes) {
    static constexpr std::array<Designation, 9> kDesignations = {
        {{"\x1B(B", Set::kSingle},
         {"\x1B(J", Set::kSingle},
         {"\x1B(I", Set::kKatakana},
         {"\x1B$@", Set::kMain},
         {"\x1B$B", Set::kMain},
         {"\x1B$(@", Set::kMain},
         {"\x1B$(B", Set::kMain},
         {"\x1B$D", Set::kSupplementary},
         {"\x1B$(D", Set::kSupplementary}}};
    const auto* const found = std::find_if(
        kDesignations.begin(), kDesignations.end(),
        [bytes](const Designation& d) { return bytes.substr(0, d.bytes.size()) == d.bytes; });
    return found == kDesignations.end() ? std::nullopt : std::optional(*found);
  }

  static size_t ConvertOne(std::string_view bytes, Set set, SjisText& text) {
    const unsigned b = ByteAt(bytes, 0);
    const bool graphic = IsIn(b, 0x21, 0x7E);
    if (!graphic || set == Set::kSingle) {
      // Half-width katakana of 8-bit JIS stand for themselves; controls and spaces in any set.
      text.AppendCode(b < 0x80 || IsIn(b, 0xA1, 0xDF) ? b : kUnknown);
      return 1;
    }
    if (set == Set::kKatakana) {
      text.AppendCode(b <= 0x5F ? b + 0x80 : kUnknown);
      return 1;
    }
    if (bytes.size() < 2 || !IsIn(ByteAt(bytes, 1), 0x21, 0x7E)) {
      text.AppendCode(kUnknown);
      return 1;
    }
    const int row = static_cast<int>(b) - 0x20;
    const int cell = static_cast<int>(ByteAt(bytes, 1)) - 0x20;
    const unsigned code =
        set == Set::kMain ? SjisOfRowCell(row, cell) : SjisOfSupplementaryRowCell(row, cell);
    text.AppendCode(code == 0 ? kUnknown : code);
    return 2;
  }
};

class Utf8Converter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition position, SjisText& text) override {
    UnicodeWriter writer(position, text);
    for (size_t i = 0; i < bytes.size();) {
      const size_t ascii = AsciiRun(bytes, i);
      writer.PutAscii(bytes, i, ascii);
      i += ascii;
      if (i == bytes.size()) break;
      const Utf8Char c = DecodeUtf8(bytes, i);
      if (c.valid) {
        writer.Put(c.character);
        i += c.size;
      } else {
        writer.PutUnknown();
        i += InvalidSize(bytes, i);
      }
    }
  }

 private:
  // A lead byte and the continuation bytes that could still have belonged to a character are one
  // invalid sequence.
  static size_t InvalidSize(std::string_view bytes, size_t start) {
    const unsigned lead = ByteAt(bytes, start);
    const size_t wanted = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (!IsIn(lead, 0xC2, 0xF4) || start + 1 >= bytes.size()) return 1;
    const unsigned second = ByteAt(bytes, start + 1);
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (!IsIn(second, lowest, highest)) return 1;
    size_t size = 2;
    while (size + 1 < wanted && start + size < bytes.size() &&
           IsIn(ByteAt(bytes, start + size), 0x80, 0xBF)) {
      ++size;
    }
    return size;
  }
};

class Utf16Converter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition position, SjisText& text) override {
    UnicodeWriter writer(position, text);
    Utf16Joiner joiner(writer);
    size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) joiner.Put(ByteAt(bytes, i) + ByteAt(bytes, i + 1) * 256);
    joiner.Finish();
    if (i < bytes.size()) writer.PutUnknown();
  }
};

class Utf7Converter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition position, SjisText& text) override {
    UnicodeWriter writer(position, text);
    for (size_t i = 0; i < bytes.size();) {
      const unsigned b = ByteAt(bytes, i);
      if (b == '+') {
        i = ConvertRun(bytes, i + 1, writer);
      } else {
        writer.Put(b < 0x80 ? b : kReplacementCharacter);
        ++i;
      }
    }
  }

 private:
  static int Value(unsigned b) {
    static constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const size_t place = kAlphabet.find(static_cast<char>(b));
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
  }

  // Converts the run behind a "+" and returns where the text goes on.
  static size_t ConvertRun(std::string_view bytes, size_t start, UnicodeWriter& writer) {
    Utf16Joiner joiner(writer);
    unsigned bits = 0;
    int bit_count = 0;
    size_t i = start;
    for (int value = 0; i < bytes.size() && (value = Value(ByteAt(bytes, i))) >= 0; ++i) {
      bits = (bits << 6 | static_cast<unsigned>(value)) & 0x3FFFFF;
      bit_count += 6;
      if (bit_count >= 16) {
        bit_count -= 16;
        joiner.Put(bits >> bit_count & 0xFFFF);
      }
    }
    joiner.Finish();
    const bool closed = i < bytes.size() && bytes[i] == '-';
    if (i == start) {
      // "+-" is a plus sign; a plus sign before anything else opens no run.
      writer.Put(closed ? U'+' : kReplacementCharacter);
    } else if (bit_count >= 6 || (bits & ((1u << bit_count) - 1)) != 0) {
      writer.PutUnknown();  // half a character is left
    }
    return closed ? i + 1 : i;
  }
};

class ForeignConverter : public LineConverter {
 public:
  explicit ForeignConverter(std::unique_ptr<IconvDecoder> decoder) : decoder_(std::move(decoder)) {}

  void Convert(std::string_view bytes, LinePosition position, SjisText& text) override {
    characters_.clear();
    decoder_->Decode(bytes, characters_);
    UnicodeWriter writer(position, text);
    for (const char32_t c : characters_) writer.Put(c);
  }

 private:
  std::unique_ptr<IconvDecoder> decoder_;
  std::u32string characters_;
};

// Decides each line by itself: a designation makes it JIS, only ASCII needs no conversion, anything
// else is the best-scoring of the codes in which it is valid, or of all three when it is in none.
class AutodetectConverter : public LineConverter {
 public:
  void Convert(std::string_view bytes, LinePosition position, SjisText& text) override {
    if (JisConverter::HoldsDesignation(bytes)) {
      jis_.Convert(bytes, position, text);
    } else if (AsciiRun(bytes, 0) == bytes.size()) {
      AppendAscii(bytes, 0, bytes.size(), text);
    } else {
      Choose(bytes).Convert(bytes, position, text);
    }
  }

 private:
  struct Candidate {
    LineConverter* converter;
    double score;
    bool valid;
  };

  static bool IsValidUtf8(std::string_view bytes) {
    for (size_t i = 0; i < bytes.size();) {
      const Utf8Char c = DecodeUtf8(bytes, i);
      if (!c.valid) return false;
      i += c.size;
    }
    return true;
  }
  static bool IsValidSjis(std::string_view bytes) {
    const SjisView line = SjisView::FromBytes(bytes);
    for (size_t i = 0; i < line.size();) {
      const size_t size = SjisCharSize(line, i);
      if (size == 1 && line.At(i) >= 0x80 && !IsIn(line.At(i), 0xA1, 0xDF)) return false;
      i += size;
    }
    return true;
  }
  static bool IsValidEuc(std::string_view bytes) {
    for (size_t i = 0; i < bytes.size();) {
      const unsigned b = ByteAt(bytes, i);
      const size_t size = b < 0x80 ? 1 : b == 0x8F ? 3 : 2;
      if (i + size > bytes.size() || (size == 2 && b != 0x8E && !IsIn(b, 0xA1, 0xFE))) return false;
      for (size_t k = 1; k < size; ++k) {
        if (!IsIn(ByteAt(bytes, i + k), 0xA1, b == 0x8E ? 0xDF : 0xFE)) return false;
      }
      i += size;
    }
    return true;
  }

  LineConverter& Choose(std::string_view bytes) {
    // In the order in which ties are decided. That a line is valid UTF-8 by accident is rare.
    std::array<Candidate, 3> candidates = {
        {{&utf8_, modJudgeCode::ScoreUTF8(bytes), IsValidUtf8(bytes)},
         {&sjis_, modJudgeCode::ScoreSJIS(bytes), IsValidSjis(bytes)},
         {&euc_, modJudgeCode::ScoreEUC(bytes), IsValidEuc(bytes)}}};
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

}  // namespace

std::unique_ptr<LineConverter> LineConverter::Make(std::string_view charset) {
  const std::string name = AsciiLowered(charset);
  if (name == "shift_jis") return std::make_unique<SjisConverter>();
  if (name == "euc-jp") return std::make_unique<EucConverter>();
  if (name == "iso-2022-jp") return std::make_unique<JisConverter>();
  if (name == "utf-8") return std::make_unique<Utf8Converter>();
  if (name == "utf-7") return std::make_unique<Utf7Converter>();
  if (name == "unicode") return std::make_unique<Utf16Converter>();
  if (name == "_autodetect") return std::make_unique<AutodetectConverter>();
  std::unique_ptr<IconvDecoder> decoder = IconvDecoder::Open(std::string(charset));
  if (decoder == nullptr) return nullptr;
  return std::make_unique<ForeignConverter>(std::move(decoder));
}

bool IsCharsetAvailable(std::string_view name) {
  if (Trimmed(name).empty()) return false;
  return name.find('/') == std::string_view::npos && LineConverter::Make(name) != nullptr;
}

}  // namespace ledrix
