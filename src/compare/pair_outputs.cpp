#include "compare/pair_outputs.h"

#include <array>
#include <utility>

#include "platform/output_guard.h"

namespace ledrix::modComp {
namespace {

constexpr const char* kListingTitle = "List Open Error";
constexpr const char* kDifferenceTitle = "Sbn List Open Error";
constexpr const char* kMergeTitle = "Merge Source Open Error";

}  // namespace

PairOutputs::PairOutputs(RunServices& services, const CompareOptions& options)
    : services_(services),
      job_(services.job()),
      names_(job_.files),
      inputs_{job_.files.OldPath, job_.files.NewPath},
      drops_unchanged_(options.drop_unchanged_listing),
      sides_(options, job_.outputs.MergeMarks ? MergeMarks::kWritten : MergeMarks::kNone) {}

std::vector<NativePath> PairOutputs::OtherOutputs() const {
  if (!services_.csv().is_open()) return {};
  return {services_.csv().path()};
}

std::optional<OutputFailure> PairOutputs::Claim() {
  const std::array<std::pair<const NativePath&, const char*>, 3> outputs = {
      {{names_.OutPath, kListingTitle},
       {names_.SbnPath, kDifferenceTitle},
       {names_.MrgPath, kMergeTitle}}};
  std::vector<NativePath> others = OtherOutputs();
  for (const auto& [path, title] : outputs) {
    if (path.empty()) continue;
    const Status refused = RefuseOutput(path, inputs_, others, job_.ProtectedFiles);
    if (!refused.ok()) return OutputFailure{title, refused.error(), path};
    others.push_back(path);
  }
  const std::vector<NativePath> claimed = {names_.OutPath, names_.SbnPath, names_.MrgPath};
  const auto met = job_.claims.Refuse(claimed);
  // From here on they are this pair's, also when memory ends before all are taken.
  is_claimed_ = !met;
  if (!met) {
    job_.claims.Take(claimed);
    return std::nullopt;
  }
  const auto& [path, title] = outputs[met->index];
  return OutputFailure{title, met->error, path};
}

std::optional<OutputFailure> PairOutputs::Create() {
  // Most pairs of a multiple compare are equal; their listings need not be made to be removed.
  const auto create = drops_unchanged_ ? OutputFile::CreateWhenNeeded : OutputFile::Create;
  auto failed = CreateOne(names_.OutPath, kListingTitle, listing_, hashes_[0], create);
  if (!failed && job_.outputs.OptSbnList) {
    failed = CreateOne(names_.SbnPath, kDifferenceTitle, sides_.difference_file, hashes_[1],
                       OutputFile::Create);
  }
  if (!failed && job_.outputs.OptMrgSrc) {
    failed =
        CreateOne(names_.MrgPath, kMergeTitle, sides_.merge_source, hashes_[2], OutputFile::Create);
  }
  // Those that could be created stand empty beside the one that could not.
  if (failed) Close();
  return failed;
}

std::optional<OutputFailure> PairOutputs::CreateOne(
    const NativePath& path, const char* title, std::optional<OutputFile>& file, Sha256& hash,
    Result<OutputFile> (*create)(const NativePath&)) {
  Result<OutputFile> created = create(path);
  if (!created.ok()) return OutputFailure{title, created.error(), path};
  file = std::move(created.value());
  services_.platform().YieldBetweenBlocks(*file);
  if (services_.witness() != nullptr) file->HashInto(hash);
  return std::nullopt;
}

bool PairOutputs::Failed() const {
  const auto failed = [](const std::optional<OutputFile>& file) {
    return file && !file->failure().ok();
  };
  return failed(listing_) || failed(sides_.difference_file) || failed(sides_.merge_source);
}

std::vector<OutputFile*> PairOutputs::Files() {
  std::vector<OutputFile*> files;
  for (auto* file : {&listing_, &sides_.difference_file, &sides_.merge_source}) {
    if (*file) files.push_back(&**file);
  }
  return files;
}

std::vector<OutputNote> PairOutputs::Written() {
  const std::pair<const char*, const std::optional<OutputFile>*> outputs[] = {
      {"結果ﾘｽﾄ", &listing_},
      {"差分ﾌｧｲﾙ", &sides_.difference_file},
      {"ﾏｰｼﾞｿｰｽ", &sides_.merge_source}};
  std::vector<OutputNote> written;
  for (size_t i = 0; i < std::size(outputs); ++i) {
    const auto& [kind, file] = outputs[i];
    if (*file) written.push_back({kind, (*file)->path(), hashes_[i].size(), hashes_[i].Digest()});
  }
  return written;
}

bool PairOutputs::Close() {
  bool closed = true;
  for (OutputFile* file : Files()) {
    const Status failure = file->Close();
    if (failure.ok()) continue;
    services_.ReportFileTrouble(file->path(), failure.error());
    closed = false;
  }
  if (!closed) Discard();
  return closed;
}

void PairOutputs::Discard() {
  for (OutputFile* file : Files()) file->Discard();
}

void PairOutputs::Drop() {
  if (!drops_unchanged_) return;
  if (sides_.difference_file) sides_.difference_file->Discard();
  sides_.difference_file.reset();
  listing_->Discard();
  listing_.reset();
}

void PairOutputs::RemoveListing() {
  Remove(names_.OutPath);
}

void PairOutputs::RemoveEarlier() {
  if (!listing_ && IsNobodyElses(names_.OutPath)) Remove(names_.OutPath);
  if (names_.SbnPath.empty() || sides_.difference_file) return;
  if (IsNobodyElses(names_.SbnPath)) Remove(names_.SbnPath);
}

bool PairOutputs::IsNobodyElses(const NativePath& output) const {
  return (is_claimed_ || !job_.claims.Holds(output)) &&
         RefuseOutput(output, inputs_, OtherOutputs(), job_.ProtectedFiles).ok();
}

// A file that may not be written is not removed in its stead.
void PairOutputs::Remove(const NativePath& path) {
  if (!MayWrite(path)) return;
  if (const Status failed = RemoveFile(path); !failed.ok()) {
    services_.ReportFileTrouble(path, failed.error());
  }
}

}  // namespace ledrix::modComp
