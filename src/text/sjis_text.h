// Text in Shift_JIS (code page 932), the bytes that every compare reads, measures, cuts and writes.
//
// A width or a column is always a count of these bytes: a half-width character is one wide, a
// full-width character two. Any byte sequence is a valid SjisText; what is no valid character
// counts as single bytes and is carried along unchanged.
//
// The types do not convert to or from UTF-8 or native paths; the bridges are the named functions
// of code_page_932.h and native_path.h.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace ledrix {

// A view of Shift_JIS bytes owned by somebody else.
class SjisView {
 public:
  constexpr SjisView() = default;
  static constexpr SjisView FromBytes(std::string_view bytes) { return SjisView(bytes); }

  constexpr std::string_view bytes() const { return bytes_; }
  constexpr const char* data() const { return bytes_.data(); }
  constexpr size_t size() const { return bytes_.size(); }
  constexpr bool empty() const { return bytes_.empty(); }
  // The byte at a position counted from 0. REQUIRES: position < size().
  constexpr unsigned char At(size_t position) const {
    return static_cast<unsigned char>(bytes_[position]);
  }
  // The first `count` bytes, or all when there are fewer.
  constexpr SjisView First(size_t count) const { return SjisView(bytes_.substr(0, count)); }
  // The bytes from a position counted from 0 on; empty when it lies at or beyond the end.
  constexpr SjisView From(size_t position) const {
    return position < bytes_.size() ? SjisView(bytes_.substr(position)) : SjisView();
  }

  friend constexpr bool operator==(SjisView a, SjisView b) { return a.bytes_ == b.bytes_; }

 private:
  constexpr explicit SjisView(std::string_view bytes) : bytes_(bytes) {}
  std::string_view bytes_;
};

// Shift_JIS bytes of its own.
class SjisText {
 public:
  SjisText() = default;
  explicit SjisText(SjisView view) : bytes_(view.bytes()) {}
  static SjisText FromBytes(std::string bytes) { return SjisText(std::move(bytes)); }
  // `count` times the half-width character `c`.
  static SjisText Repeat(size_t count, char c) { return SjisText(std::string(count, c)); }
  // `count` times the text `piece`.
  static SjisText Repeat(size_t count, SjisView piece);

  // Same kind of text, so the view needs no spelled-out conversion.
  operator SjisView() const { return SjisView::FromBytes(bytes_); }  // NOLINT
  const std::string& bytes() const { return bytes_; }
  size_t size() const { return bytes_.size(); }
  bool empty() const { return bytes_.empty(); }

  SjisText& operator+=(SjisView more) {
    bytes_ += more.bytes();
    return *this;
  }
  SjisText& Append(size_t count, char c) {
    bytes_.append(count, c);
    return *this;
  }
  // Appends a character by its code: one byte, or lead byte * 256 + trail byte.
  void AppendCode(unsigned code) {
    if (code > 0xFF) bytes_.push_back(static_cast<char>(code >> 8));
    bytes_.push_back(static_cast<char>(code & 0xFF));
  }
  // Appends what `fill` writes at the place that it is given: at most `most` bytes, as many as it
  // returns.
  template <class Fill>
  void AppendFilled(size_t most, const Fill& fill) {
    const size_t before = bytes_.size();
    bytes_.resize(before + most);
    bytes_.resize(before + fill(bytes_.data() + before));
  }
  // Keeps the memory, so that one text can be filled again and again.
  void Clear() { bytes_.clear(); }

  friend SjisText operator+(SjisText a, SjisView b) { return std::move(a += b); }
  friend bool operator==(const SjisText& a, const SjisText& b) { return a.bytes_ == b.bytes_; }

 private:
  explicit SjisText(std::string bytes) : bytes_(std::move(bytes)) {}
  std::string bytes_;
};

// 0x81-0x9F and 0xE0-0xFC open a double-byte character.
constexpr bool IsSjisLead(unsigned char b) {
  return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}

// 0x40-0x7E and 0x80-0xFC close a double-byte character; they include "\", "|" and all letters.
constexpr bool IsSjisTrail(unsigned char b) {
  return (b >= 0x40 && b <= 0x7E) || (b >= 0x80 && b <= 0xFC);
}

// Size in bytes (1 or 2) of the character that begins at a position counted from 0. A lead byte
// without a trail byte after it is a character of one byte. REQUIRES: position < text.size(), and
// a character begins there.
constexpr size_t SjisCharSize(SjisView text, size_t position) {
  return IsSjisLead(text.At(position)) && position + 1 < text.size() &&
                 IsSjisTrail(text.At(position + 1))
             ? 2
             : 1;
}

// True when the text is longer than `count` bytes and cutting it after them would split a
// double-byte character.
bool SplitsDoubleByte(SjisView text, size_t count);

// The text without its trailing half-width spaces (byte 0x20, never a trail byte).
inline SjisView TrimRight(SjisView text) {
  size_t size = text.size();
  while (size > 0 && text.At(size - 1) == ' ') --size;
  return text.First(size);
}

// The text without half-width spaces at either end.
SjisView Trim(SjisView text);

// Makes a Shift_JIS text from a UTF-8 source literal.
SjisText operator""_sjis(const char* utf8, size_t size);

}  // namespace ledrix
