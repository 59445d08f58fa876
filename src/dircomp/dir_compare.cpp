#include "dircomp/dir_compare.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "dircomp/dir_info_file.h"
#include "dircomp/dir_listing.h"
#include "dircomp/qsort.h"
#include "dircomp/tree_walk.h"
#include "platform/folders.h"
#include "run/job_output.h"
#include "settings/dir_compare_options.h"

namespace ledrix::modDComp {
namespace {

constexpr double kProgressUnits = 5635;

// One compare on its way from its two sides to its result line.
class DirCompare {
 public:
  DirCompare(RunServices& services, std::string_view type_filter)
      : services_(services),
        job_(services.job()),
        options_(services.options()),
        range_(job_.request.CompareRange),
        type_filter_(options_.filter_names ? type_filter : "*.*"),
        old_(job_.files.OldPath, Shown(Side::kOld), services.options().ComboDLst),
        new_(job_.files.NewPath, Shown(Side::kNew), services.options().ComboDLst),
        output_(services, {old_.path(), new_.path()}) {}

  void Run() {
    services_.UpdateProgress(kProgressUnits, 0);
    if (!OpenSides() || !CreateListing()) {
      output_.Abandon(PairEnd::kFailed);
      return;
    }
    if (const std::optional<PairEnd> ended_early = ExpandSides()) {
      output_.Abandon(*ended_early);
      return;
    }
    Compare();
    const JobEnd differing = counts_.unmatched() > 0 ? JobEnd::kDifference : JobEnd::kNoDifference;
    services_.NoteEnd(job_.StopRequested ? JobEnd::kTrouble : differing);
    if (replaced_ > 0) services_.platform().ReportTrouble(ReplacedNamesText(replaced_));
    output_.Finish(DirCompResultLine(counts_));
  }

 private:
  const NativePath& Shown(Side side) const {
    if (job_.rerun) return job_.rerun->shown[side].path;
    return side == Side::kOld ? job_.files.OldPath : job_.files.NewPath;
  }
  bool OpenSides() {
    return Opened(old_, "Old File Open Error") && Opened(new_, "New File Open Error");
  }

  bool Opened(DirSide& side, const char* title) {
    const Status failed = side.Open();
    if (!failed.ok()) ShowError(failed.error(), side.path(), title);
    return failed.ok();
  }

  bool CreateListing() {
    const Status failed = output_.Create();
    if (!failed.ok()) ShowError(failed.error(), output_.path(), "List Open Error");
    return failed.ok();
  }

  void ShowError(const Error& error, const NativePath& path, const char* title) {
    services_.platform().ShowMessage({DescribeError(error), title});
    services_.ReportFileTrouble(path, error);
  }

  // Tells why the job cannot go on, if so.
  std::optional<PairEnd> ExpandSides() {
    services_.SetMessage("旧ﾃﾞｨﾚｸﾄﾘ情報 展開中...");
    if (const auto ended_early = Expand(old_, counts_.old_entries)) return ended_early;
    services_.SetMessage(services_.message_text() + "\r\n新ﾃﾞｨﾚｸﾄﾘ情報 展開中...");
    return Expand(new_, counts_.new_entries);
  }

  void Compare() {
    DirCompListing listing(output_.file(), options_);
    replaced_ += (old_.IsRootReplaced() ? 1 : 0) + (new_.IsRootReplaced() ? 1 : 0);
    const LocalTime now = services_.platform().Now();
    listing.WriteHeader(now, old_, new_);
    services_.SetMessage("SORT処理中 ...");
    old_.SortByKey(go_on_);
    new_.SortByKey(go_on_);
    if (JobWitness* const witness = services_.witness(); witness && !job_.StopRequested) {
      witness->ClockShown(now);
      witness->EntriesTaken(Side::kOld, old_.Note());
      witness->EntriesTaken(Side::kNew, new_.Note());
    }
    services_.SetMessage(services_.message_text() + "\r\nﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ 処理中...");
    Merge(listing);
    if (!job_.StopRequested) listing.WriteSummary(counts_, range_);
  }

  std::optional<PairEnd> Expand(DirSide& side, int64_t& count) {
    const bool both_live = !old_.is_info_file() && !new_.is_info_file();
    const Expansion expansion{
        {range_, options_.ignore_case, options_.full_width,
         both_live ? ReplacedNames::kStayApart : ReplacedNames::kPair},
        type_filter_,
        output_.Identity(),
        job_.rerun ? &job_.rerun->no_entries : nullptr,
        go_on_,
        [this](const NativePath& path) { services_.platform().ReportTrouble(FileGoneText(path)); }};
    if (const std::optional<std::string> failed = side.Expand(expansion)) {
      services_.platform().ReportTrouble(*failed);
      return PairEnd::kFailed;
    }
    count = static_cast<int64_t>(side.entries().size());
    if (job_.StopRequested) return PairEnd::kStopped;
    return std::nullopt;
  }

  void Merge(DirCompListing& listing) {
    unit_ = kProgressUnits / static_cast<double>(counts_.old_entries + counts_.new_entries + 2);
    while ((!old_done() || !new_done()) && !job_.StopRequested) {
      MergeStep(listing);
      services_.platform().YieldToUi();
    }
  }

  bool old_done() const { return old_at_ == old_.entries().size(); }
  bool new_done() const { return new_at_ == new_.entries().size(); }
  // How the current keys sort; a side without entries left sorts behind.
  int Order() const {
    if (old_done() || new_done()) return old_done() ? 1 : -1;
    return QSort::CompareKeys(old_.entries()[old_at_].key, new_.entries()[new_at_].key);
  }

  // Sorted keys lie all over the memory; asking for one in advance hides most of the wait.
  static void AskForKey(const DirSide& side, size_t at) {
    constexpr size_t kAhead = 16;
    const std::vector<DirEntry>& entries = side.entries();
    if (at + kAhead < entries.size()) __builtin_prefetch(entries[at + kAhead].key.data());
  }
  const DirEntry& TakeOld() {
    AskForKey(old_, old_at_);
    return old_.entries()[old_at_++];
  }
  const DirEntry& TakeNew() {
    AskForKey(new_, new_at_);
    return new_.entries()[new_at_++];
  }

  void MergeStep(DirCompListing& listing) {
    const bool one_side = old_done() || new_done();
    const int order = Order();
    if (order == 0) {
      Classify(listing);
      return;
    }
    // While both sides have entries left a step takes every entry that sorts before the other's.
    do {
      order < 0 ? Delete(listing) : Add(listing);
    } while (!one_side && !old_done() && !new_done() && Order() == order);
  }

  void Delete(DirCompListing& listing) {
    ++counts_.deleted;
    const DirEntry& entry = TakeOld();
    listing.WriteDeleted(entry);
    if (options_.with_deleted && old_.IsReplaced(entry)) ++replaced_;
    Progress(1);
  }

  void Add(DirCompListing& listing) {
    ++counts_.added;
    const DirEntry& entry = TakeNew();
    listing.WriteAdded(entry);
    if (options_.with_added && new_.IsReplaced(entry)) ++replaced_;
    Progress(1);
  }

  void Classify(DirCompListing& listing) {
    const DirEntry& old_entry = TakeOld();
    const DirEntry& new_entry = TakeNew();
    const int64_t apart = old_entry.modified - new_entry.modified;
    if (old_entry.size == new_entry.size && (apart == 0 || options_.Tolerates(apart))) {
      ++counts_.matching;
    } else {
      ++counts_.updated;
      listing.WriteUpdated(old_entry, new_entry);
      const bool replaced = old_.IsReplaced(old_entry) || new_.IsReplaced(new_entry);
      if (options_.with_updated && replaced) ++replaced_;
    }
    Progress(2);
  }

  void Progress(int64_t units) {
    progress_ += units;
    services_.UpdateProgress(unit_, static_cast<double>(progress_));
  }

  RunServices& services_;
  JobRecord& job_;
  const DirCompareOptions options_;
  const CompareRange range_;
  const std::string_view type_filter_;
  const GoOn go_on_ = [this] { return !services_.YieldAndAskStop(); };
  DirSide old_;
  DirSide new_;
  JobOutput output_;
  DirCompCounts counts_;
  size_t old_at_ = 0;
  size_t new_at_ = 0;
  double unit_ = 0;
  int64_t progress_ = 0;
  int64_t replaced_ = 0;  // names listed with "?" for what Shift_JIS lacks
};

std::vector<std::string> ListFolderFiles(const NativePath& folder) {
  std::vector<std::string> names;
  const Result<std::vector<FolderEntry>> entries = ReadFolder(folder);
  if (!entries.ok()) return names;
  for (const FolderEntry& entry : entries.value()) {
    if (entry.info.kind != FileKind::kFolder) names.push_back(entry.name);
  }
  return names;
}

std::string Section(const char* title, const std::vector<std::string>& names) {
  std::string text = "\r\n" + std::string(title) + "\r\n";
  for (const std::string& name : names) text += PathToUtf8(NativePath(name)) + "\r\n";
  return text;
}

}  // namespace

void DirCompJob(RunServices& services, std::string_view type_filter) {
  DirCompare(services, type_filter).Run();
}

std::string FolderListText(const NativePath& folder) {
  std::string text;
  for (const std::string& name : ListFolderFiles(folder)) {
    if (!text.empty()) text += "\r\n";
    text += PathToUtf8(NativePath(name));
  }
  return text;
}

std::string FolderCompareText(const NativePath& old_folder, const NativePath& new_folder) {
  const std::vector<std::string> old_names = ListFolderFiles(old_folder);
  const std::vector<std::string> new_names = ListFolderFiles(new_folder);
  std::vector<std::string> added;
  std::vector<std::string> deleted;
  std::vector<std::string> matching;
  std::set_difference(new_names.begin(), new_names.end(), old_names.begin(), old_names.end(),
                      std::back_inserter(added));
  std::set_difference(old_names.begin(), old_names.end(), new_names.begin(), new_names.end(),
                      std::back_inserter(deleted));
  std::set_intersection(old_names.begin(), old_names.end(), new_names.begin(), new_names.end(),
                        std::back_inserter(matching));
  return "OLD : " + PathToUtf8(old_folder) + "\r\nNEW : " + PathToUtf8(new_folder) + "\r\n" +
         Section("追加されたファイル", added) + Section("削除されたファイル", deleted) +
         Section("一致するファイル", matching);
}

}  // namespace ledrix::modDComp
