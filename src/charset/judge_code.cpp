#include "charset/judge_code.h"

#include <algorithm>
#include <array>

#include "charset/byte_ranges.h"

namespace ledrix::modJudgeCode {
namespace {

// The bytes a scorer walks over, and the points that it gives.
class Walk {
 public:
  explicit Walk(std::string_view bytes)
      : bytes_(bytes), examined_(std::min(bytes.size(), kExaminedBytes)) {}

  size_t examined() const { return examined_; }
  bool Has(size_t position) const { return position < bytes_.size(); }
  unsigned At(size_t position) const { return static_cast<unsigned char>(bytes_[position]); }
  bool Is(size_t position, unsigned value) const { return Has(position) && At(position) == value; }
  // True when `count` bytes from a position on exist and lie in a range.
  bool AllIn(size_t position, size_t count, unsigned lowest, unsigned highest) const {
    if (position + count > bytes_.size()) return false;
    return std::all_of(bytes_.begin() + static_cast<std::ptrdiff_t>(position),
                       bytes_.begin() + static_cast<std::ptrdiff_t>(position + count), [=](char c) {
                         const auto b = static_cast<unsigned char>(c);
                         return b >= lowest && b <= highest;
                       });
  }

  void Add(int points) { points_ += points; }
  double Score() const { return 100.0 * points_ / (2.0 * static_cast<double>(examined_)); }

 private:
  std::string_view bytes_;
  size_t examined_;
  int points_ = 0;
};

constexpr bool IsAscii(unsigned b) {
  return b <= 0x7F;
}

// The value of a byte of the UTF-7 alphabet, or -1.
int Utf7Value(unsigned b) {
  if (IsIn(b, 'A', 'Z')) return static_cast<int>(b - 'A');
  if (IsIn(b, 'a', 'z')) return static_cast<int>(b - 'a') + 26;
  if (IsIn(b, '0', '9')) return static_cast<int>(b - '0') + 52;
  if (b == '+') return 62;
  return b == '/' ? 63 : -1;
}

// Bytes of the UTF-8 sequence that a lead byte announces, forms of five and six bytes included;
// 0 for a byte that is no lead byte.
size_t Utf8SequenceSize(unsigned b) {
  if ((b & 0xFC) == 0xFC) return 6;
  if ((b & 0xF8) == 0xF8) return 5;
  if ((b & 0xF0) == 0xF0) return 4;
  if ((b & 0xE0) == 0xE0) return 3;
  return (b & 0xC0) == 0xC0 ? 2 : 0;
}

bool IsJisDesignation(const Walk& walk, size_t position) {
  constexpr std::array<std::pair<unsigned, unsigned>, 6> kDesignations = {
      {{0x28, 0x42}, {0x28, 0x4A}, {0x28, 0x49}, {0x24, 0x40}, {0x24, 0x42}, {0x24, 0x44}}};
  return std::any_of(kDesignations.begin(), kDesignations.end(), [&](const auto& bytes) {
    return walk.Is(position, bytes.first) && walk.Is(position + 1, bytes.second);
  });
}

}  // namespace

std::string_view ToText(CodeName code) {
  switch (code) {
    case CodeName::kSjis:
      return "SJIS";
    case CodeName::kUnicode:
      return "UNICODE";
    case CodeName::kJis:
      return "JIS";
    case CodeName::kUtf7:
      return "UTF7";
    case CodeName::kUtf8:
      return "UTF8";
    case CodeName::kEuc:
      return "EUC";
  }
  return {};
}

CodeName JudgeCode(std::string_view bytes) {
  if (bytes.empty()) return CodeName::kSjis;
  const double jis = ScoreJIS(bytes);
  if (jis >= kCertain) return CodeName::kJis;
  const double unicode = ScoreUnicode(bytes);
  if (unicode >= kCertain) return CodeName::kUnicode;
  const double utf8 = ScoreUTF8(bytes);
  if (utf8 >= kCertain) return CodeName::kUtf8;

  // In the order in which ties are decided.
  const std::array<std::pair<CodeName, double>, 6> scores = {{{CodeName::kSjis, ScoreSJIS(bytes)},
                                                              {CodeName::kUnicode, unicode},
                                                              {CodeName::kJis, jis},
                                                              {CodeName::kUtf7, ScoreUTF7(bytes)},
                                                              {CodeName::kUtf8, utf8},
                                                              {CodeName::kEuc, ScoreEUC(bytes)}}};
  const auto* const best =
      std::max_element(scores.begin(), scores.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  return best->first;
}

double ScoreSJIS(std::string_view bytes) {
  Walk walk(bytes);
  for (size_t i = 0; i < walk.examined(); ++i) {
    const unsigned b = walk.At(i);
    if (IsIn(b, 0x81, 0x9F) || IsIn(b, 0xE0, 0xEF)) {
      if (walk.AllIn(i + 1, 1, 0x40, 0x7E) || walk.AllIn(i + 1, 1, 0x80, 0xFC)) {
        walk.Add(4);
        ++i;
      }
    } else if (IsIn(b, 0xA1, 0xDF) || IsAscii(b)) {
      walk.Add(1);
    }
  }
  return walk.Score();
}

double ScoreEUC(std::string_view bytes) {
  Walk walk(bytes);
  for (size_t i = 0; i < walk.examined(); ++i) {
    const unsigned b = walk.At(i);
    if (b == 0x8F) {
      if (walk.AllIn(i + 1, 2, 0xA1, 0xFE)) {
        walk.Add(6);
        i += 2;
      }
    } else if (b == 0x8E || IsIn(b, 0xA1, 0xFE)) {
      if (walk.AllIn(i + 1, 1, 0xA1, b == 0x8E ? 0xDF : 0xFE)) {
        walk.Add(4);
        ++i;
      }
    } else if (IsAscii(b)) {
      walk.Add(1);
    }
  }
  return walk.Score();
}

double ScoreJIS(std::string_view bytes) {
  Walk walk(bytes);
  for (size_t i = 0; i < walk.examined(); ++i) {
    if (walk.At(i) == 0x1B) {
      if (IsJisDesignation(walk, i + 1)) return kCertain;
    } else if (IsAscii(walk.At(i))) {
      walk.Add(1);
    }
  }
  return walk.Score();
}

double ScoreUnicode(std::string_view bytes) {
  Walk walk(bytes);
  for (size_t i = 0; i < walk.examined() && walk.Has(i + 1); i += 2) {
    if (walk.Is(i, 0xFF) && walk.Is(i + 1, 0xFE)) return kCertain;
    const unsigned high = walk.At(i + 1);
    if (IsIn(high, 0x34, 0x4D) || IsIn(high, 0xA0, 0xD7) || IsIn(high, 0xE0, 0xF7)) return 0;
    walk.Add(4);
  }
  return walk.Score();
}

double ScoreUTF8(std::string_view bytes) {
  Walk walk(bytes);
  for (size_t i = 0; i < walk.examined(); ++i) {
    if (walk.Is(i, 0xEF) && walk.Is(i + 1, 0xBB) && walk.Is(i + 2, 0xBF)) return kCertain;
    const size_t size = Utf8SequenceSize(walk.At(i));
    if (size > 0) {
      // A sequence that fails is not tried again as a shorter one.
      if (!walk.AllIn(i + 1, size - 1, 0x80, 0xBF)) continue;
      walk.Add(static_cast<int>(2 * size));
      i += size - 1;
    } else if (IsAscii(walk.At(i))) {
      walk.Add(1);
    }
  }
  return walk.Score();
}

double ScoreUTF7(std::string_view bytes) {
  Walk walk(bytes);
  bool in_run = false;
  int count = 0;  // bytes of the run so far, its "+" included
  int bits = 0;   // low bits of the run's last byte that must be clear
  int mask = 0;
  for (size_t i = 0; i < walk.examined(); ++i) {
    const unsigned b = walk.At(i);
    if (b == '+' && !in_run) {
      in_run = true;
      count = 1;
    } else if (b == '-') {
      if (count == 0) {
        walk.Add(1);
      } else if (count == 1) {
        walk.Add(4);
      } else if (bits < 6 && count >= 4 && (Utf7Value(walk.At(i - 1)) & mask) == 0) {
        walk.Add(2 * (count + 1));
      }
      in_run = false;
      count = 0;
    } else if (in_run) {
      if (Utf7Value(b) >= 0) {
        bits = 6 * count % 8;
        mask = (1 << bits) - 1;
        ++count;
      } else {
        in_run = false;
        count = 0;
      }
    } else if (IsAscii(b)) {
      walk.Add(1);
    }
  }
  return walk.Score();
}

}  // namespace ledrix::modJudgeCode
