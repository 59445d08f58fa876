// What the reader of listings finds in those that the compare writes.
#include <gtest/gtest.h>

#include <random>

#include "compare/pair_driver.h"
#include "listing/text_finder.h"
#include "listing/viewed_file.h"
#include "support/test_run.h"
#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

using test::Sjis;
using Texts = std::vector<std::string>;

ViewedFile ReadWhole(const NativePath& path) {
  Result<ViewedFile> opened = ViewedFile::Open(path);
  ViewedFile file = std::move(opened.value());
  while (file.ReadOn(1)) {
  }
  return file;
}

// A listing of two texts under options, read whole.
struct ReadListing : test::TestRun {
  ReadListing(const std::string& old_text, const std::string& new_text,
              const std::string& settings) {
    SetAll("OptNoCngNoOut=0|NoCompList=0|" + settings);
    job.files.OldPath = folder.Write("旧.txt", old_text);
    job.files.NewPath = folder.Write("新.txt", new_text);
    job.files.OutPath = folder.At("out.lst");
    request.OldPath = job.files.OldPath;
    request.NewPath = job.files.NewPath;
    modComp::ComparePair(services);
    file = std::make_unique<ViewedFile>(ReadWhole(job.files.OutPath));
  }
  // The rows of the change that begins at a line, [ ] around what differs in them.
  std::string Marked(int64_t first, Side side) {
    std::string text;
    RowKind kind = file->KindAt(first);
    for (int64_t row = first; row < file->EndOfChange(first); ++row) {
      const auto bytes = SjisText(SjisView::FromBytes(file->LineAt(row).bytes));
      const auto columns = TextColumns(*file->shape(), kind, bytes, side);
      kind = RowKind::kContinued;
      if (!columns) continue;
      std::string marked = bytes.bytes();
      const std::vector<Stretch> stretches = file->StretchesAt(row);
      size_t begin = columns->begin;
      size_t end = columns->end;
      for (auto at = stretches.rbegin(); at != stretches.rend(); ++at) {
        if (at->begin < begin || at->end > columns->end) continue;
        marked.insert(at->end, "]").insert(at->begin, "[");
        end += 2;
      }
      text += std::string(
          TrimRight(SjisView::FromBytes(std::string_view(marked).substr(begin, end - begin)))
              .bytes());
    }
    return DecodeSjis(SjisView::FromBytes(text));
  }

  test::TempFolder folder;
  std::unique_ptr<ViewedFile> file;
};

// Both layouts, both forms, with line numbers and without.
Texts AllForms() {
  Texts forms;
  for (const char* const layout : {"0", "1"}) {
    for (const char* const simple : {"0", "1"}) {
      for (const char* const numbers : {"0", "1"}) {
        forms.push_back(std::string("|OptOutLineVar=") + layout + "|OptSimple=" + simple +
                        "|LineNoAdd=" + numbers);
      }
    }
  }
  return forms;
}

TEST(FinishedListing, UnderlinesWhatDiffersInEveryForm) {
  for (const auto& row : test::ReadTable("stretches.tsv")) {
    for (const std::string& form : AllForms()) {
      ReadListing read(Sjis(row[2]) + "\n", Sjis(row[3]) + "\n", row[1] + form);
      ASSERT_EQ(read.file->blocks().size(), 1u) << row[0] << form;
      const int64_t first = read.file->blocks()[0].first + 1;
      EXPECT_EQ(read.Marked(first, Side::kOld), row[4]) << row[0] << form;
      EXPECT_EQ(read.Marked(first, Side::kNew), row[5]) << row[0] << form;
    }
  }
}

TEST(FinishedListing, UnderlinesSpacesAtTheEndOfAWholeLine) {
  const ReadListing read("trail\n", "trail  \n", "OptSpData=0|OptOutLineVar=1");
  const int64_t first = read.file->blocks()[0].first + 1;
  EXPECT_EQ(read.file->StretchesAt(first + 1), (std::vector<Stretch>{{1, 11, 13}}));
  EXPECT_FALSE(read.file->HidesDifference(first));
  // Beside another one a side ends in spaces of the listing.
  const ReadListing beside("trail\n", "trail  \n", "OptSpData=0");
  EXPECT_TRUE(beside.file->HidesDifference(beside.file->blocks()[0].first + 1));
}

// Rows of 70 bytes: what wraps is one text.
TEST(FinishedListing, UnderlinesWhatDiffersAcrossRows) {
  const std::string fill(68, '.');
  struct Case {
    std::string old_text, new_text, old_marked, new_marked;
  };
  const Case cases[] = {
      {fill + "あいう", fill + "あうう", fill + "あ[い]う", fill + "あ[う]う"},
      {fill + ".あいう", fill + ".あいえ", fill + ".あい[う]", fill + ".あい[え]"},
      // The space that fills the old row is none of its text.
      {fill + ".あいう", fill + "あいう", fill + "[.]あいう", fill + "あいう"},
      {std::string(1000, 'a') + "b", std::string(1000, 'a') + "c", std::string(700, 'a'),
       std::string(700, 'a')},
  };
  for (const Case& c : cases) {
    ReadListing read(Sjis(c.old_text), Sjis(c.new_text), "PrintCompLen=70");
    const int64_t first = read.file->blocks()[0].first + 1;
    const auto without_fill = [](std::string text) {
      const size_t fill_at = text.find(" あ");
      return fill_at == std::string::npos ? text : text.erase(fill_at, 1);
    };
    EXPECT_EQ(without_fill(read.Marked(first, Side::kOld)), c.old_marked);
    EXPECT_EQ(without_fill(read.Marked(first, Side::kNew)), c.new_marked);
  }
}

std::string RandomText(std::mt19937& random, bool any_bytes) {
  static const Texts kPieces = {"A", "b", " ", "　", "あ", "表", "ｱ", "\t", "0", "----+----1"};
  std::string text;
  for (size_t line = random() % 60; line > 0; --line) {
    for (size_t i = random() % 3 == 0 ? random() % 120 : random() % 4; i > 0; --i) {
      text += any_bytes && random() % 8 == 0
                  ? std::string(1, static_cast<char>(128 + random() % 128))
                  : Sjis(kPieces[random() % kPieces.size()]);
    }
    text += random() % 9 == 0 ? "\n" : "\r\n";
  }
  return text;
}

// Some lines of a text changed, left out or put in.
std::string Edited(const std::string& text, std::mt19937& random) {
  std::string edited;
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::string line(TakeLine(rest));
    const size_t choice = random() % 12;
    if (choice != 0) edited += line + (choice == 1 ? "x" : "") + "\r\n";
    if (choice == 2) edited += Sjis("追加") + "\r\n";
  }
  return edited;
}

// The text of a row's side without what differs.
std::string CommonText(ReadListing& read, int64_t first, Side side) {
  std::string text = read.Marked(first, side);
  for (size_t open = text.find('['); open != std::string::npos; open = text.find('[')) {
    // Half a character, at the end of a row, takes the bracket in.
    const size_t close = text.find(']', open);
    text.erase(open, close == std::string::npos ? close : close - open + 1);
  }
  return text;
}

TEST(FinishedListing, AgreesWithTheCompareOfRandomPairs) {
  std::mt19937 random(1701);
  const Texts forms = AllForms();
  for (int i = 0; i < 500; ++i) {
    const std::string old_text = RandomText(random, i % 3 == 0);
    const std::string new_text = Edited(old_text, random);
    const std::string settings = "PrintCompLen=" + std::to_string(70 + random() % 40) +
                                 "|NTypeNextLine=" + std::to_string(random() % 2) +
                                 "|OptLstout=" + std::to_string(1 + random() % 4) +
                                 "|OptOutLineCnt=" + std::to_string(random() % 2) +
                                 forms[random() % forms.size()];
    ReadListing read(old_text, new_text, settings);
    ASSERT_NE(read.file->shape(), nullptr) << i;
    const ViewedFile& file = *read.file;
    const std::optional<ListingSummary>& summary = file.summary();
    ASSERT_TRUE(summary && summary->Agrees(file.counts())) << i << " " << settings;
    char result[200];
    std::snprintf(result, sizeof result, "    UnMatch=%5d OLD=%5s NEW=%5s Rep=%5d Add=%5d Del=%5d",
                  static_cast<int>(file.counts().total()), summary->old_lines.c_str(),
                  summary->new_lines.c_str(), static_cast<int>(file.counts().changed),
                  static_cast<int>(file.counts().added), static_cast<int>(file.counts().deleted));
    if (file.counts().total() > 0) {
      ASSERT_EQ(read.front_end.results.back(), result) << settings;
    }
    EXPECT_EQ(file.shape()->files[Side::kOld].path.bytes(), Sjis(read.job.files.OldPath.bytes()));
    EXPECT_EQ(read.file->KindAt(file.lines() - 1), RowKind::kOther) << settings;
    ChangeCounts in_blocks;
    int64_t number = 0;
    int64_t line = -1;
    for (const ListingBlock& block : file.blocks()) {
      EXPECT_EQ(block.number, ++number);
      EXPECT_EQ(BlockBehind(file.blocks(), line), static_cast<size_t>(number - 1));
      EXPECT_EQ(BlockBefore(file.blocks(), block.end), static_cast<size_t>(number - 1));
      line = block.first;
      in_blocks.changed += block.changed;
      in_blocks.added += block.added;
      in_blocks.deleted += block.deleted;
      for (int64_t row = block.first + 1; row < block.end; row = read.file->EndOfChange(row)) {
        if (read.file->KindAt(row) != RowKind::kChanged ||
            old_text.find('[') != std::string::npos || i % 3 == 0) {
          continue;
        }
        ASSERT_EQ(CommonText(read, row, Side::kOld), CommonText(read, row, Side::kNew)) << settings;
      }
    }
    EXPECT_EQ(in_blocks.total(), file.counts().total());
  }
}

TEST(FinishedListing, IsToldFromOtherTexts) {
  ReadListing read(Sjis("旧\n"), Sjis("新\n"), "");
  const std::string whole = test::ReadFile(read.job.files.OutPath);
  // Any number of its bytes is shown as far as it goes.
  for (size_t size = 0; size + 2 < whole.size(); size += 7) {
    ViewedFile file = ReadWhole(read.folder.Write("cut", whole.substr(0, size)));
    EXPECT_FALSE(file.summary()) << size;
    size_t bytes = 0;
    for (int64_t line = 0; line < file.lines(); ++line) bytes += WidthOf(file.TextAt(line)) + 2;
    EXPECT_EQ(file.shape() != nullptr, size > 1128) << size;
    EXPECT_GE(bytes + 3, size);
  }
  EXPECT_FALSE(ViewedFile::Open(NativePath(read.folder.path())).ok());
  EXPECT_FALSE(ViewedFile::Open(NativePath("/dev/zero")).ok());
}

TEST(ViewedFile, ShowsTheLinesOfEveryCode) {
  const char* const kText = "日本語のﾃｷｽﾄです。①髙\n二行目\tA\n\n最後の行です";
  test::TempFolder folder;
  const NativePath source = folder.Write("utf8", test::Repeat(std::string(kText) + "\r\n", 40));
  for (const char* const code : {"CP932", "EUC-JP-MS", "UTF-8", "UTF-16", "UTF-16BE", "UTF-7"}) {
    const std::string command = "iconv -f UTF-8 -t " + std::string(code) + " " + source.bytes() +
                                " > " + folder.At("coded").bytes();
    ASSERT_EQ(std::system(command.c_str()), 0);
    ViewedFile file = ReadWhole(folder.At("coded"));
    ASSERT_EQ(file.lines(), 160) << code;
    EXPECT_EQ(ToUtf8(file.TextAt(0)), "日本語のﾃｷｽﾄです。①髙") << code;
    EXPECT_EQ(ToUtf8(file.TextAt(157)), "二行目\tA") << code;
    EXPECT_EQ(ToUtf8(file.TextAt(159)), "最後の行です") << code;
  }
}

TEST(ViewedFile, CutsLinesThatNobodyReads) {
  test::TempFolder folder;
  std::string bytes;
  for (int i = 0; i < 3000; ++i) bytes += std::string(i % 500, 'a') + std::to_string(i) + "\n";
  bytes += std::string(300000, 'b') + "\nlast";
  ViewedFile file = ReadWhole(folder.Write("long", bytes));
  ASSERT_EQ(file.lines(), 3002);
  for (const int64_t line : {2999, 0, 1234, 2047, 1}) {
    EXPECT_EQ(file.LineAt(line).bytes, std::string(line % 500, 'a') + std::to_string(line));
  }
  EXPECT_EQ(file.LineAt(3000).bytes, std::string(ViewedFile::kMostShown, 'b'));
  EXPECT_TRUE(file.LineAt(3000).is_cut);
  EXPECT_EQ(file.LineAt(3001).bytes, "last");
}

TEST(ViewedFile, HasEveryLineThatIsReadSoFar) {
  test::TempFolder folder;
  std::string bytes;
  for (int i = 0; i < 60000; ++i) bytes += std::to_string(i) + std::string(i % 40, 'a') + "\n";
  Result<ViewedFile> opened = ViewedFile::Open(folder.Write("growing", bytes));
  ASSERT_TRUE(opened.ok());
  ViewedFile& file = opened.value();
  const auto expect = [&](int64_t line) {
    EXPECT_EQ(file.LineAt(line).bytes, std::to_string(line) + std::string(line % 40, 'a'));
  };
  int64_t seen = 0;
  while (file.ReadOn(1)) {
    // A part that was the last one, and then went on.
    for (int64_t line = seen; line + 1 < file.lines(); ++line) expect(line);
    seen = std::max<int64_t>(file.lines() - 2, 0);
    expect(seen);
  }
  EXPECT_EQ(file.lines(), 60000);
}

TEST(TextFinder, FindsCharactersWhateverTheirForm) {
  struct Case {
    const char* line;
    const char* wanted;
    FindRules rules;
    std::vector<FoundText> found;
  };
  const Case cases[] = {
      {"MOVE move", "move", {true, true}, {{0, 4}, {5, 9}}},
      {"MOVE move", "move", {false, true}, {{5, 9}}},
      {"ＭＯＶＥ", "move", {true, true}, {{0, 8}}},
      {"ｶﾞ ガ が", "ガ", {true, true}, {{0, 2}, {3, 5}}},
      {"ｶﾞ ガ", "ガ", {true, false}, {{3, 5}}},
      {"アア", "チ", {true, true}, {}},
      {"aaa", "aa", {true, true}, {{0, 2}}},
      {"abc", "", {true, true}, {}},
  };
  for (const Case& c : cases) {
    LineText line;
    DecodeSjisLine(EncodeSjis(c.line), line);
    EXPECT_EQ(TextFinder(c.wanted, c.rules).FindIn(line), c.found) << c.line << " " << c.wanted;
  }
}

}  // namespace
}  // namespace ledrix
