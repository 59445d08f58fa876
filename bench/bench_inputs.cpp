#include "bench_inputs.h"

#include <cstdio>
#include <random>

#include "text/code_page_932.h"

namespace ledrix::bench {
namespace {

constexpr uint64_t kSeed = 932;
constexpr int kShortestLine = 20;
constexpr int kLongestLine = 120;

class LineMaker {
 public:
  explicit LineMaker(uint64_t seed) : random_(seed) {}

  int Number(int lowest, int highest) {
    return lowest + static_cast<int>(random_() % static_cast<uint64_t>(highest - lowest + 1));
  }

  std::string Line() {
    const auto size = static_cast<size_t>(Number(kShortestLine, kLongestLine));
    std::string line;
    while (line.size() + 1 < size) {
      if (Number(0, 2) == 0) {
        AddJapanese(line, size);
      } else {
        AddWord(line, size);
      }
    }
    if (line.size() < size) line += '.';
    return line;
  }

 private:
  void AddWord(std::string& line, size_t size) {
    for (int i = Number(2, 9); i > 0 && line.size() < size; --i) {
      line += static_cast<char>(Number(0, 3) == 0 ? Number('A', 'Z') : Number('a', 'z'));
    }
    if (line.size() < size) line += ' ';
  }
  // Hiragana and first-level kanji.
  void AddJapanese(std::string& line, size_t size) {
    for (int i = Number(1, 6); i > 0 && line.size() + 1 < size; --i) {
      const bool kana = Number(0, 1) == 0;
      line += static_cast<char>(kana ? 0x82 : Number(0x89, 0x96));
      line += static_cast<char>(kana ? Number(0x9F, 0xF1) : Number(0x40, 0x7E));
    }
  }

  std::mt19937_64 random_;
};

// Both files of one case.
class PairFile {
 public:
  PairFile(const std::string& folder, const std::string& name)
      : old_(std::fopen((folder + "/" + name + ".old").c_str(), "wb")),
        new_(std::fopen((folder + "/" + name + ".new").c_str(), "wb")) {}
  PairFile(const PairFile&) = delete;
  PairFile& operator=(const PairFile&) = delete;
  ~PairFile() { Close(); }

  void Old(const std::string& line) { Put(old_, line); }
  void New(const std::string& line) { Put(new_, line); }
  void Both(const std::string& line) {
    Old(line);
    New(line);
  }
  bool Close() {
    for (std::FILE** file : {&old_, &new_}) {
      if (*file == nullptr || std::fclose(*file) != 0) good_ = false;
      *file = nullptr;
    }
    return good_;
  }

 private:
  void Put(std::FILE* file, const std::string& line) {
    if (file == nullptr || std::fprintf(file, "%s\r\n", line.c_str()) < 0) good_ = false;
  }

  std::FILE* old_;
  std::FILE* new_;
  bool good_ = true;
};

bool MakeSame(const std::string& folder, int64_t lines) {
  PairFile pair(folder, "same");
  LineMaker maker(kSeed);
  for (int64_t i = 0; i < lines; ++i) pair.Both(maker.Line());
  return pair.Close();
}

enum class Indent { kNone, kTabs };

bool MakeChanged(const std::string& folder, const std::string& name, int64_t lines,
                 Indent indent = Indent::kNone) {
  PairFile pair(folder, name);
  LineMaker maker(kSeed + 1);
  int64_t made = 0;
  const auto line = [&] {
    const bool indented = indent == Indent::kTabs && made++ % 3 == 0;
    return std::string(indented ? static_cast<size_t>(1 + made % 5 / 2) : 0, '\t') + maker.Line();
  };
  for (int64_t i = 0; i < lines;) {
    for (int common = maker.Number(1, 495); common > 0 && i < lines; --common, ++i) {
      pair.Both(line());
    }
    const int kind = maker.Number(0, 3);  // two of four groups are replaced lines
    for (int group = maker.Number(1, 4); group > 0 && i < lines; --group, ++i) {
      if (kind != 0) pair.Old(line());
      if (kind != 1) pair.New(line());
    }
  }
  return pair.Close();
}

bool MakeDifferent(const std::string& folder, int64_t lines) {
  PairFile pair(folder, "different");
  LineMaker maker(kSeed + 2);
  for (int64_t i = 0; i < lines; ++i) {
    pair.Old("o" + maker.Line());
    pair.New("n" + maker.Line());
  }
  return pair.Close();
}

bool MakeKinds(const std::string& folder, int64_t lines) {
  PairFile pair(folder, "kinds");
  LineMaker maker(kSeed + 3);
  std::string kinds[6];
  for (std::string& kind : kinds) kind = maker.Line();
  for (int64_t i = 0; i < lines; ++i) {
    pair.Old(kinds[maker.Number(0, 5)]);
    pair.New(kinds[maker.Number(0, 5)]);
  }
  return pair.Close();
}

bool MakeBlocks(const std::string& folder, int64_t lines) {
  constexpr int64_t kBetween = 5000;
  constexpr int kBlock = 900;
  PairFile pair(folder, "blocks");
  LineMaker maker(kSeed + 4);
  for (int64_t i = 0; i < lines; ++i) {
    pair.Both(maker.Line());
    if (i % kBetween != kBetween - 1) continue;
    for (int block = 0; block < kBlock; ++block) pair.New(maker.Line());
  }
  return pair.Close();
}

}  // namespace

bool MakeInputs(const std::string& folder, int64_t lines) {
  return MakeSame(folder, lines) && MakeChanged(folder, "changed", lines) &&
         MakeChanged(folder, "tabs", lines, Indent::kTabs) && MakeDifferent(folder, lines) &&
         MakeKinds(folder, lines / 5) && MakeBlocks(folder, lines);
}

bool MakeLarge(const std::string& folder, int64_t lines) {
  return MakeChanged(folder, "large", lines);
}

}  // namespace ledrix::bench
