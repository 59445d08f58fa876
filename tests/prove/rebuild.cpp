// Makes both files of random pairs again from what a compare wrote: from the two merge sources with
// marks, and from a listing of all lines. Nothing here knows the code that writes them.
//
// Usage: rebuild PAIRS SEED. Prints how many pairs were made again and how many lines they had, and
// a line on stderr for each pair that was not; ends with 1 when there was one.
#include <cstdio>
#include <cstdlib>
#include <random>

#include "compare/pair_driver.h"
#include "support/test_run.h"

namespace ledrix {
namespace {

using Lines = std::vector<std::string>;
using Random = std::mt19937;

size_t Pick(Random& random, size_t choices) {
  return random() % choices;
}

// What lines are made of: trail bytes that look like "\", "|" and "@", half-width katakana.
constexpr std::string_view kPieces[] = {"a",        "B1",       "MOVE",     "\x83\x5C", "\x83\x7C",
                                        "\x81\x40", "\x88\x9F", "\x93\xFA", "\xB1",     "\xDF",
                                        "|",        "\\",       "0",        "."};
// Bytes that are no Shift_JIS, a CR and a NUL. They pass through a merge source as they are.
constexpr std::string_view kWildPieces[] = {"\xFF", "\x80", "\x83", "\r", {"\0", 1}, "\t", "\xA0"};

std::string RandomText(Random& random, size_t size, bool wild) {
  std::string text;
  while (text.size() < size) {
    if (wild && Pick(random, 4) == 0) {
      text += kWildPieces[Pick(random, std::size(kWildPieces))];
    } else if (Pick(random, 6) == 0) {
      // A space stands before half-width characters only: at the end of a row it could not be told
      // from the one that keeps a full-width character whole.
      text += " x";
    } else {
      text += kPieces[Pick(random, std::size(kPieces))];
    }
  }
  return text;
}

// Few short texts that come again and again; now and then one that no other line equals, which may
// fill several rows. An unchanged line is shown in one row only.
std::string RandomLine(Random& random, bool wild, size_t row_bytes) {
  if (Pick(random, 12) == 0) {
    return "u" + std::to_string(random()) + RandomText(random, Pick(random, row_bytes * 9), wild);
  }
  Random repeated(static_cast<unsigned>(Pick(random, 9)) + (wild ? 100 : 0));
  return RandomText(repeated, Pick(repeated, 5) * 4, wild);
}

Lines RandomLines(Random& random, bool wild, size_t row_bytes) {
  Lines lines;
  for (size_t count = Pick(random, 40); lines.size() < count;) {
    lines.push_back(RandomLine(random, wild, row_bytes));
  }
  return lines;
}

Lines Edited(Random& random, const Lines& lines, bool wild, size_t row_bytes) {
  Lines edited;
  for (const std::string& line : lines) {
    const size_t what = Pick(random, 12);
    if (what == 0) continue;
    if (what == 1) edited.push_back(RandomLine(random, wild, row_bytes));
    // Of an unchanged line the listing shows the first row only.
    const bool changes = what == 2 || (!wild && line.size() > row_bytes);
    edited.push_back(changes ? RandomLine(random, wild, row_bytes) : line);
    if (what == 3 && !changes) edited.insert(edited.begin(), line);
  }
  return edited;
}

// The bytes of a file; the last line may have no end, an empty one needs it.
std::string FileOf(Random& random, const Lines& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += line + (Pick(random, 2) == 0 ? "\n" : "\r\n");
  if (!lines.empty() && !lines.back().empty() && Pick(random, 3) == 0) {
    bytes.erase(bytes.find_last_not_of("\r\n") + 1);
  }
  return bytes;
}

Lines LinesOf(std::string_view bytes) {
  Lines lines;
  while (!bytes.empty()) {
    const size_t end = bytes.find('\n');
    std::string_view line = bytes.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
  }
  return lines;
}

// Tells the first line that differs; empty for equal texts.
std::string Differs(const char* what, const Lines& made, const Lines& lines) {
  if (made == lines) return {};
  size_t at = 0;
  while (at < made.size() && at < lines.size() && made[at] == lines[at]) ++at;
  const auto text = [at](const Lines& all) {
    return at < all.size() ? "[" + all[at] + "]" : "none";
  };
  return std::string(what) + ", line " + std::to_string(at + 1) + ": " + text(made) + " for " +
         text(lines);
}

struct Pair {
  Lines old_lines;
  Lines new_lines;
  std::string fault;  // of the decoding
};

// The lines with these marks; the other marks of a merge source stand before lines of the other
// side alone.
Lines FromMerge(const Lines& merge, const std::string& marks, char own) {
  Lines lines;
  for (const std::string& line : merge) {
    const bool counts = line.size() >= 3 && marks.find(line[0]) != std::string::npos &&
                        line[1] == own && line[2] == ':';
    if (counts) lines.push_back(line.substr(3));
  }
  return lines;
}

// Lines without one of the marks.
Lines UnknownMarks(const Lines& merge) {
  Lines unknown;
  for (const std::string& line : merge) {
    const std::string mark = "|" + line.substr(0, 3) + "|";
    if (std::string("|=o:|=n:|/o:|/n:|>n:|<o:|").find(mark) == std::string::npos) {
      unknown.push_back(line);
    }
  }
  return unknown;
}

// How a listing is laid out.
struct Layout {
  bool vertical;
  bool simple;
  bool numbers;
  size_t width;  // bytes of a side

  size_t text_bytes() const { return width - (numbers ? 5 : 0); }
};

class ListingDecoder {
 public:
  explicit ListingDecoder(const Layout& layout) : layout_(layout) {}

  Pair Decode(const Lines& listing) {
    const size_t header = layout_.simple ? 2 : 5;
    const size_t summary = layout_.simple ? 1 : 3;
    if (listing.size() < header + summary + 2) return {{}, {}, "no body"};
    const std::string& ruler = listing[header];
    for (size_t i = header + 1; i < listing.size() - summary; ++i) {
      if (listing[i] != ruler) Row(listing[i]);
    }
    return std::move(pair_);
  }

 private:
  enum class Mark { kChanged, kAdded, kDeleted, kContinued, kUnchanged, kBlock, kUnknown };

  Mark MarkOf(const std::string& mark) const {
    const auto is = [&mark](const char* full, const char* side, const char* vertical) {
      return mark == full || mark == side || mark == vertical;
    };
    if (is("\x20\x95\xCF\x8D\x58\x20", " <--> ", " UPD> ")) return Mark::kChanged;
    if (is("\x20\x92\xC7\x89\xC1\x20", " ---> ", " ADD> ")) return Mark::kAdded;
    if (is("\x20\x8D\xED\x8F\x9C\x20", " <--- ", " DEL< ")) return Mark::kDeleted;
    if (mark == "  --  ") return Mark::kContinued;
    if (mark == "      ") return Mark::kUnchanged;
    return mark[0] == '(' ? Mark::kBlock : Mark::kUnknown;
  }

  void Row(const std::string& row) {
    const size_t mark_at = layout_.vertical ? 0 : layout_.width;
    if (row.size() < mark_at + 6) return Fail(row);
    const Mark mark = MarkOf(row.substr(mark_at, 6));
    if (mark == Mark::kBlock) return;
    if (mark == Mark::kUnknown) return Fail(row);
    const std::string left = layout_.vertical ? row.substr(6) : row.substr(0, layout_.width);
    const std::string right = row.substr(mark_at + 6);
    const Mark kind = mark == Mark::kContinued ? last_ : mark;
    const bool first = mark != Mark::kContinued;
    if (layout_.vertical) {
      // The second row of a change is its new line; all others are whole lines.
      if (kind != Mark::kAdded && first) Add(pair_.old_lines, left, kind != Mark::kUnchanged);
      if (kind != Mark::kDeleted && (kind != Mark::kChanged || !first)) {
        Add(pair_.new_lines, left, true);
      }
    } else {
      if (kind != Mark::kAdded) Put(pair_.old_lines, left, first);
      if (kind != Mark::kDeleted) Put(pair_.new_lines, right, first);
    }
    last_ = kind;
  }

  void Put(Lines& lines, const std::string& piece, bool first) {
    if (first) return Add(lines, piece, true);
    std::string& line = lines.back();
    CheckNumber(lines.size(), piece);
    const std::string text = TextOf(piece);
    // A row that ends in a space before a full-width character was one byte too short for it.
    const auto lead = static_cast<unsigned char>(text[0]);
    const bool is_lead = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    if (is_lead && line.ends_with(' ')) line.pop_back();
    line += text;
  }

  void Add(Lines& lines, const std::string& piece, bool has_own_number) {
    lines.push_back(TextOf(piece));
    if (has_own_number) CheckNumber(lines.size(), piece);
  }

  std::string TextOf(const std::string& piece) const {
    return layout_.numbers && piece.size() >= 5 ? piece.substr(5) : piece;
  }

  void CheckNumber(size_t number, const std::string& piece) {
    char text[8];
    std::snprintf(text, sizeof text, "%04d ", static_cast<int>(number % 10000));
    if (layout_.numbers && piece.compare(0, 5, text) != 0) Fail(piece);
  }

  void Fail(const std::string& row) {
    if (pair_.fault.empty()) pair_.fault = "not understood: " + row;
  }

  const Layout layout_;
  Pair pair_;
  Mark last_ = Mark::kUnknown;
};

Lines WithoutTrailingSpaces(Lines lines) {
  for (std::string& line : lines) line.erase(line.find_last_not_of(' ') + 1);
  return lines;
}

// One pair after the other in a folder.
class Proof {
 public:
  explicit Proof(unsigned seed) : seed_(seed) {}

  // What is wrong with the pair of this number; empty when both files were made again.
  std::string Try(unsigned number) {
    Random random(seed_ * 1000003 + number);
    const bool wild = Pick(random, 2) == 0;
    const Layout layout{Pick(random, 3) == 0, Pick(random, 2) == 0, Pick(random, 2) == 0,
                        70 + Pick(random, 60)};
    const Lines base = RandomLines(random, wild, layout.text_bytes());
    const std::string old_bytes = FileOf(random, base);
    const std::string new_bytes = FileOf(random, Edited(random, base, wild, layout.text_bytes()));
    const Lines old_lines = LinesOf(old_bytes);
    const Lines new_lines = LinesOf(new_bytes);
    lines += old_lines.size() + new_lines.size();
    const std::string settings = Settings(random, layout);
    const Lines merges[] = {Compare(old_bytes, new_bytes, settings + "|MergeOld=0"),
                            Compare(old_bytes, new_bytes, settings + "|MergeOld=1")};
    std::string fault =
        Differs("marks", UnknownMarks(merges[0]), {}) +
        Differs("marks", UnknownMarks(merges[1]), {}) +
        Differs("new file from MergeOld=0", FromMerge(merges[0], "=/>", 'n'), new_lines) +
        Differs("old file from MergeOld=1", FromMerge(merges[1], "=/<", 'o'), old_lines) +
        Differs("deleted lines", FromMerge(merges[0], "<", 'o'), FromMerge(merges[1], "<", 'o')) +
        Differs("added lines", FromMerge(merges[0], ">", 'n'), FromMerge(merges[1], ">", 'n'));
    if (wild) return fault;
    const Pair made = ListingDecoder(layout).Decode(LinesOf(ReadFile(folder_.At("out.lst"))));
    return fault + made.fault +
           Differs("old file from the listing", WithoutTrailingSpaces(made.old_lines),
                   WithoutTrailingSpaces(old_lines)) +
           Differs("new file from the listing", WithoutTrailingSpaces(made.new_lines),
                   WithoutTrailingSpaces(new_lines));
  }

  size_t lines = 0;

 private:
  static std::string Settings(Random& random, const Layout& layout) {
    const auto flag = [](bool on) { return std::to_string(on ? 1 : 0); };
    return "OptSpData=0|OptUpperCase=1|OptNoCngNoOut=0|OptTABtoSPACE=0|OptSTCol=1|OptEDCol=9999|"
           "OptOutLineCnt=1"
           "|NTypeNextLine=1|NoCompList=0|OptOutLineVar=" +
           flag(layout.vertical) + "|OptSimple=" + flag(layout.simple) +
           "|LineNoAdd=" + flag(layout.numbers) + "|PrintCompLen=" + std::to_string(layout.width) +
           "|OptMatch=" + std::to_string(1 + Pick(random, 6)) +
           "|OptBuff=" + std::to_string(1 + Pick(random, 60));
  }

  // The lines of the merge source; the listing stands beside it.
  Lines Compare(const std::string& old_bytes, const std::string& new_bytes,
                const std::string& settings) {
    test::TestRun run;
    run.SetAll(settings);
    run.job.outputs.OptMrgSrc = run.job.outputs.MergeMarks = true;
    run.job.files.OldPath = folder_.Write("old", old_bytes);
    run.job.files.NewPath = folder_.Write("new", new_bytes);
    run.job.files.OutPath = folder_.At("out.lst");
    run.job.files.MrgPath = folder_.At("out.mrg");
    modComp::ComparePair(run.services);
    return LinesOf(ReadFile(run.job.files.MrgPath));
  }

  static std::string ReadFile(const NativePath& path) { return test::ReadFile(path); }

  const unsigned seed_;
  const test::TempFolder folder_;
};

int Run(unsigned pairs, unsigned seed) {
  Proof proof(seed);
  unsigned faults = 0;
  for (unsigned number = 0; number < pairs; ++number) {
    const std::string fault = proof.Try(number);
    if (fault.empty()) continue;
    ++faults;
    std::fprintf(stderr, "seed %u pair %u: %s\n", seed, number, fault.c_str());
  }
  std::printf("%u %zu\n", pairs - faults, proof.lines);
  return faults > 0 ? 1 : 0;
}

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const auto number = [](const char* text) {
    return static_cast<unsigned>(std::strtoul(text, nullptr, 10));
  };
  return ledrix::Run(number(argv[1]), number(argv[2]));
}
