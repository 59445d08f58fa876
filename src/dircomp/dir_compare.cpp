#include "dircomp/dir_compare.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "dircomp/dir_listing.h"
#include "dircomp/qsort.h"
#include "platform/folders.h"
#include "platform/output_guard.h"

namespace ledrix::modDComp {
namespace {

constexpr double kProgressUnits = 5635;

// One compare on its way from its two sides to its result line.
class DirCompare {
 public:
  DirCompare(RunServices& services, std::string_view type_filter)
      : services_(services),
        job_(services.job()),
        range_(static_cast<CompareRange>(std::clamp(job_.CompareRange, 0, 2))),
        type_filter_(type_filter),
        old_(job_.OldPath, services.options().ComboDLst),
        new_(job_.NewPath, services.options().ComboDLst) {}

  void Run() {
    services_.UpdateProgress(kProgressUnits, 0);
    if (OpenSides() && CreateListing()) {
      Compare();
      CloseListing();
    }
    const JobEnd differing = counts_.unmatched() > 0 ? JobEnd::kDifference : JobEnd::kNoDifference;
    services_.NoteEnd(job_.StopRequested ? JobEnd::kTrouble : differing);
    services_.AddResultLines(job_.OutPath, failed_write_ ? "エラー" : DirCompResultLine(counts_));
  }

 private:
  bool OpenSides() {
    return Opened(old_, "Old File Open Error") && Opened(new_, "New File Open Error");
  }

  bool Opened(DirSide& side, const char* title) {
    const Status failed = side.Open();
    if (!failed.ok()) ShowError(failed.error(), side.path(), title);
    return failed.ok();
  }

  bool CreateListing() {
    if (const Status refused = RefuseOutput(job_.OutPath, {job_.OldPath, job_.NewPath}, {});
        !refused.ok()) {
      ShowError(refused.error(), job_.OutPath, "List Open Error");
      return false;
    }
    Result<OutputFile> file = OutputFile::Create(job_.OutPath);
    if (!file.ok()) {
      ShowError(file.error(), job_.OutPath, "List Open Error");
      return false;
    }
    file_ = std::move(file.value());
    return true;
  }

  void ShowError(const Error& error, const NativePath& path, const char* title) {
    services_.platform().ShowMessage({DescribeError(error), title});
    services_.ReportFileTrouble(path, error);
  }

  void Compare() {
    DirCompListing listing(*file_, services_.options());
    services_.SetMessage("旧ﾃﾞｨﾚｸﾄﾘ情報 展開中...");
    if (!Expand(old_, counts_.old_entries)) return;
    services_.SetMessage(services_.message_text() + "\r\n新ﾃﾞｨﾚｸﾄﾘ情報 展開中...");
    if (!Expand(new_, counts_.new_entries)) return;
    listing.WriteHeader(services_.platform().Now(), old_, new_);
    services_.SetMessage("SORT処理中 ...");
    old_.SortByKey(go_on_);
    new_.SortByKey(go_on_);
    services_.SetMessage(services_.message_text() + "\r\nﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ 処理中...");
    Merge(listing);
    if (!job_.StopRequested) listing.WriteSummary(counts_, range_);
  }

  bool Expand(DirSide& side, int64_t& count) {
    const OptionRecord& options = services_.options();
    const KeyRules rules{range_, options.DCompBinary == 0, options.DCompKana == 0};
    const std::optional<std::string> failed = side.Expand(rules, type_filter_, go_on_);
    count = static_cast<int64_t>(side.entries().size());
    if (!failed) return !job_.StopRequested;
    services_.platform().ReportTrouble(*failed);
    services_.NoteEnd(JobEnd::kTrouble);
    return false;
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
    listing.WriteDeleted(TakeOld());
    Progress(1);
  }

  void Add(DirCompListing& listing) {
    ++counts_.added;
    listing.WriteAdded(TakeNew());
    Progress(1);
  }

  void Classify(DirCompListing& listing) {
    const DirEntry& old_entry = TakeOld();
    const DirEntry& new_entry = TakeNew();
    const int64_t apart = old_entry.modified - new_entry.modified;
    if (old_entry.size == new_entry.size &&
        (apart == 0 || IsTolerated(apart, services_.options()))) {
      ++counts_.matching;
    } else {
      ++counts_.updated;
      listing.WriteUpdated(old_entry, new_entry);
    }
    Progress(2);
  }

  void Progress(int64_t units) {
    progress_ += units;
    services_.UpdateProgress(unit_, static_cast<double>(progress_));
  }

  void CloseListing() {
    if (const Status failure = file_->Close(); !failure.ok()) {
      file_->Discard();
      failed_write_ = true;
      services_.ReportFileTrouble(job_.OutPath, failure.error());
    }
  }

  RunServices& services_;
  JobRecord& job_;
  const CompareRange range_;
  const std::string_view type_filter_;
  const GoOn go_on_ = [this] { return !services_.YieldAndAskStop(); };
  DirSide old_;
  DirSide new_;
  std::optional<OutputFile> file_;
  DirCompCounts counts_;
  size_t old_at_ = 0;
  size_t new_at_ = 0;
  double unit_ = 0;
  int64_t progress_ = 0;
  bool failed_write_ = false;
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

bool IsTolerated(int64_t seconds_apart, const OptionRecord& options) {
  constexpr int64_t kNineHours = int64_t{9} * 3600;
  const int64_t apart = std::abs(seconds_apart);
  const bool second = options.DComp1s == 1;
  const bool hours = options.DComp9h == 1;
  return (second && apart == 1) || (hours && apart == kNineHours) ||
         (second && hours && apart == kNineHours + 1);
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
