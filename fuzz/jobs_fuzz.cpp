// Records of jobs, the run log, the batch command line, name patterns, and directory information
// files.
#include "dircomp/dir_compare.h"
#include "dircomp/dir_info_file.h"
#include "evidence/record.h"
#include "jobs/command_line.h"
#include "jobs/run_log.h"
#include "support.h"
#include "targets.h"
#include "text/code_page_932.h"
#include "text/name_pattern.h"

namespace ledrix::fuzz {
namespace {

using modDComp::DirInfoReader;
using modDComp::FileRecord;

SjisText RecordLine(const FileRecord& record) {
  return EncodeSjis(record.folder + "," + record.name + "," + modDComp::DateText(record.modified) +
                    "," + modDComp::SizeText(record.size));
}

bool AreSame(const std::vector<HistoryEntry>& a, const std::vector<HistoryEntry>& b) {
  return std::ranges::equal(a, b, [](const HistoryEntry& x, const HistoryEntry& y) {
    return x.folder == y.folder && x.date_text == y.date_text;
  });
}

}  // namespace

// The input is all of a record but its digest.
void RecordTarget(std::string_view bytes) {
  Require(FromRecordValue(ToRecordValue(bytes)) == bytes, "a value is read as it was written");
  std::string text = std::string(bytes) + "SHA-256: ";
  Sha256 hash;
  hash.Add(text);
  text += hash.Digest() + "\n";
  const auto read = ReadRecord(text);
  Require(!std::holds_alternative<RecordFault>(read) ||
              std::get<RecordFault>(read) != RecordFault::kAltered,
          "what has its digest is not altered");
  text[bytes.size() / 2] ^= 1;
  Require(std::holds_alternative<RecordFault>(ReadRecord(text)), "and what is changed has not");
}

void DirInfoTarget(std::string_view bytes) {
  static const MemoryFile file;
  static const MemoryFile one;
  DirInfoReader reader(file.Open(bytes));
  if (!reader.ReadRootName()) return;
  FileRecord record;
  while (reader.Next(record) == DirInfoReader::Outcome::kRecord) {
    Require(record.folder.ends_with('\\') && !record.name.empty(), "a record names a file");
    const SjisText line = RecordLine(record);
    DirInfoReader again(one.Open("\\x\r\n" + line.bytes() + "\r\n"));
    FileRecord read;
    Require(again.ReadRootName() == "\\x" && again.Next(read) == DirInfoReader::Outcome::kRecord,
            "a record that was read can be written and read");
    Require(RecordLine(read) == line, "and stays what it was");
  }
  Require(reader.failure().ok(), "the file can be read");
}

void DirCompareTarget(std::string_view bytes) {
  static const PerSide<NativePath> files(WorkFolder() + "old.ddf", WorkFolder() + "new.ddf");
  Input input(bytes);
  QuietRun run;
  for (int16_t* flag : {&run.options.DCompKana, &run.options.DCompBinary, &run.options.DComp1s,
                        &run.options.DComp9h, &run.options.DCompSelect}) {
    *flag = input.Flag() ? 1 : 0;
  }
  JobRequest request{JobKind::kDirComp, files[Side::kOld], files[Side::kNew],
                     WorkFolder() + "compared"};
  request.CompareRange = static_cast<CompareRange>(input.Number(0, 2, 1));
  for (const NativePath& file : files) WriteFile(file, "\\x\r\n" + std::string(input.Piece()));
  BeginJob(run.job, request);
  modDComp::DirCompJob(run.services, "*.c;a*");
  const bool failed = run.services.end() == JobEnd::kTrouble;
  Require(PathExists(request.OutPath) != failed, "only a compare that failed leaves no listing");
  RemoveFile(request.OutPath).Ignore();
}

void RunLogTarget(std::string_view bytes) {
  const NativePath path = WorkFolder() + "Ledrixr.Log";
  QuietRun run;
  RunLog log(WorkFolder(), run.platform);
  WriteFile(path, bytes);
  const std::vector<HistoryEntry> all = log.LoadHistory();
  log.SaveHistory(all);
  Require(AreSame(log.LoadHistory(), all), "a history that is saved stays what it was");
  log.CompactHistory();
  const std::vector<HistoryEntry> newest = log.LoadHistory();
  Require(newest.size() <= 50 && newest.empty() == all.empty(), "the newest folders stay");
  const std::string compact = ReadFile(path);
  log.CompactHistory();
  Require(ReadFile(path) == compact, "what is compact stays as it is");
}

void CommandLineTarget(std::string_view bytes) {
  const CommandLineArgs args = ParseCommandLine(bytes);
  Require(args.others.size() <= bytes.size(), "every token has a byte");
  std::vector<std::string> tokens;
  std::string joined;
  Input input(bytes);
  while (!input.Rest().empty()) {
    tokens.emplace_back(input.Piece());
    std::erase(tokens.back(), '"');
    joined += "\"" + tokens.back() + "\" ";
  }
  const CommandLineArgs one = ParseCommandLine(tokens);
  const CommandLineArgs other = ParseCommandLine(joined);
  const auto all = [](const CommandLineArgs& a) {
    return std::tie(a.old_path, a.new_path, a.output_path, a.list_value, a.others, a.merge_marks,
                    a.debug_log);
  };
  Require(all(one) == all(other), "tokens are the same with quotation marks around them");
}

void NamePatternTarget(std::string_view bytes) {
  Input input(bytes);
  const std::string name(input.Piece());
  const std::string patterns(input.Rest());
  const bool exact = PatternList(patterns, LetterCase::kRespect).Matches(name);
  const bool folded = PatternList(patterns, LetterCase::kIgnore).Matches(name);
  Require(PatternList(patterns + ";" + patterns, LetterCase::kIgnore).Matches(name) == folded,
          "a pattern named twice counts once");
  Require(PatternList(patterns + ";*", LetterCase::kRespect).Matches(name), "* is every name");
  if (patterns.find("[!") == std::string::npos) {
    Require(folded || !exact, "what matches by exact letters matches by any");
  }
  if (patterns.find_first_of("*?#[;") == std::string::npos) {
    Require(exact == (name == patterns), "without signs only the name itself matches");
  }
  const bool single = MatchesPattern(name, patterns, LetterCase::kRespect);
  if (single) {
    Require(MatchesPattern(name, "*" + patterns + "*", LetterCase::kRespect), "* may be nothing");
    Require(MatchesPattern(name + "x", patterns + "?", LetterCase::kRespect), "? is one character");
  }
}

}  // namespace ledrix::fuzz
