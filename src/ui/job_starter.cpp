#include "ui/job_starter.h"

#include <QProgressDialog>
#include <algorithm>
#include <utility>

#include "jobs/evidence_job.h"
#include "jobs/run_log.h"
#include "jobs/verify_evidence.h"
#include "settings/settings_store.h"
#include "text/name_pattern.h"
#include "ui/qt_text.h"
#include "ui/result_list.h"
#include "ui/run_dialog.h"

namespace ledrix {

void JobStarter::StartTextCompare() {
  const FileSides sides = sides_.Snapshot();
  if (!CheckPairSelection(sides, program_.platform)) return;
  JobRequest request;
  request.OldPath =
      AddBackslash(sides[Side::kOld].folder) + SelectedFileName(sides[Side::kOld].files);
  request.NewPath =
      AddBackslash(sides[Side::kNew].folder) + SelectedFileName(sides[Side::kNew].files);
  request.FileCount = static_cast<int64_t>(SelectedCount(sides[Side::kOld].files));
  RunJobOf(request, sides);
}

void JobStarter::StartDirCompare(CompareRange range) {
  const FileSides sides = sides_.Snapshot();
  const char* const refusals[] = {"旧ファイルが複数選択されています",
                                  "新ファイルが複数選択されています"};
  for (const Side side : kBothSides) {
    if (SelectedCount(sides[side].files) <= 1) continue;
    program_.platform.ShowMessage({refusals[IndexOf(side)]});
    return;
  }
  const NativePath output = chooser_.Choose(&window_, {"ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ結果ﾌｧｲﾙの指定",
                                                       {ChooserFilter("結果ﾌｧｲﾙ(*.lst)", "*.lst"),
                                                        ChooserFilter("全てのﾌｧｲﾙ(*.*)", "*.*")},
                                                       "DIR_COMP.lst",
                                                       "",
                                                       true});
  if (output.empty()) return;
  const auto input = [&](const FileSide& side) {
    return DirCompareSide(AddBackslash(side.folder) + SelectedFileName(side.files),
                          program_.options);
  };
  JobRequest request;
  request.JobKind = JobKind::kDirComp;
  request.CompareRange = range;
  request.OldPath = input(sides[Side::kOld]);
  request.NewPath = input(sides[Side::kNew]);
  request.OutPath = output;
  RunJobOf(request, sides);
}

void JobStarter::StartDirEdit(Side side, const NativePath& folder) {
  const std::string& pattern = program_.options.ComboDLst;
  const QString shown = "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙ(" + ToQString(pattern) + ")";
  NativePath output;
  while (true) {
    output = chooser_.Choose(
        &window_,
        {"ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの指定", {ChooserFilter(shown, ToQString(pattern))}, "", "", true});
    if (output.empty()) return;
    if (MatchesPattern(FileNameOf(output), pattern, LetterCase::kIgnore)) break;
    program_.platform.ShowMessage(
        {"ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの拡張子が違います\r拡張子は " + pattern + " のみ有功です"});
  }
  JobRequest request;
  request.JobKind = JobKind::kDirEdit;
  request.ActiveSide = side;
  request.OldPath = AddBackslash(folder);
  request.OutPath = output;
  RunJobOf(request, sides_.Snapshot());
}

void JobStarter::StartStepCount(Side side) {
  const std::string name = sides_[side].SelectedName();
  if (name.empty()) return;
  JobRequest request;
  request.JobKind = JobKind::kStepCnt;
  request.OldPath = AddBackslash(sides_[side].folder()) + name;
  request.OutPath = DirOf(request.OldPath) +
                    FillPattern(program_.options.ComboStp, NameForPattern(request.OldPath));
  RunJobOf(request, sides_.Snapshot());
}

void JobStarter::StartStepCsv(Side side) {
  // The files of the highlighted folder, as the list shows them when it is the open one.
  FileSides sides = sides_.Snapshot();
  FileSide& counted = sides[side];
  const NativePath folder = sides_[side].HighlightedFolder();
  if (folder != counted.folder) {
    counted.files = sides_[side].FilesOf(folder);
    counted.folder = folder;
  }
  if (counted.files.entries.empty()) {
    program_.platform.ShowMessage({"ファイルボックスに対象ファイルが有りません"});
    return;
  }
  const NativePath output = chooser_.Choose(
      &window_,
      {"出力CSVﾌｧｲﾙの指定",
       {ChooserFilter("ｶﾝﾏ編集ﾌｧｲﾙ(*.CSV)", "*.CSV"), ChooserFilter("全てのﾌｧｲﾙ(*.*)", "*.*")},
       "STEP.CSV",
       "csv",
       true});
  if (output.empty()) return;
  JobRequest request;
  request.JobKind = JobKind::kStepCsv;
  request.OldPath = AddBackslash(folder);
  request.OutPath = output;
  request.ActiveSide = side;
  request.FileCount = static_cast<int64_t>(counted.files.entries.size());
  RunJobOf(request, sides);
}

void JobStarter::RunJobOf(const JobRequest& request, const FileSides& sides) {
  RunOnce(request, sides);
  // Of many pairs those that are open are told, to be compared one by one.
  const OpenJudgement open = program_.job.open_judgement;
  if (open.text.empty() || request.FileCount != 1 || program_.job.StopRequested) return;
  const MessageAnswer answer = program_.platform.ShowMessage(
      {open.text + "\r\nShift_JIS として比較しました。" + open.other_charset +
           " として比較し直しますか？",
       kProgramTitle, MessageIcon::kQuestion, MessageButtons::kYesNo, MessageAnswer::kNo});
  if (answer != MessageAnswer::kYes) return;
  OptionRecord& options = program_.options;
  const std::string charset = std::exchange(options.CharsetCode, open.other_charset);
  const int16_t asks = std::exchange(options.StartMsg, int16_t{0});
  RunOnce(request, sides);
  options.CharsetCode = charset;
  options.StartMsg = asks;
}

void JobStarter::AskForEvidence(JobRequest& request) const {
  const bool counts = request.JobKind == JobKind::kStepCnt || request.JobKind == JobKind::kStepCsv;
  if (counts || !WritesEvidence(program_.store)) return;
  const NativePath listing = request.JobKind == JobKind::kComp
                                 ? MakeOutputNames(program_.options, program_.job.outputs,
                                                   request.OldPath, request.NewPath)
                                       .OutPath
                                 : request.OutPath;
  request.evidence.path = FreeRecordPath(DirOf(listing), program_.platform.Now());
  request.evidence.command = "画面";
}

void JobStarter::StartVerification() {
  VerifyRequest request;
  request.records = ChooseRecords(&window_, sides_[Side::kOld].folder());
  if (request.records.empty()) return;
  QProgressDialog progress("証跡を検証しています", "中止", 0, 0, &window_);
  progress.setWindowTitle(kProgramTitle);
  progress.setWindowModality(Qt::ApplicationModal);
  progress.setMinimumDuration(300);
  std::vector<std::string> lines;
  const VerifyReport report{[&](std::string line) {
                              std::replace(line.begin(), line.end(), '\t', ' ');
                              lines.push_back(std::move(line));
                            },
                            [&](const std::string& line) {
                              program_.platform.ReportTrouble(line);
                              lines.push_back(line);
                            }};
  const auto stopped = [&] {
    program_.platform.YieldToUi();
    return progress.wasCanceled();
  };
  running_ = true;
  const JobEnd end = VerifyEvidence(request, program_.platform, stopped, report);
  running_ = false;
  progress.reset();
  const char* const verdicts[] = {"問題ありません", "変更があります", "確認できないものがあります"};
  lines.push_back("証跡の検証: " + std::string(verdicts[static_cast<int>(end)]));
  results_.Append(lines);
}

bool WritesEvidence(const SettingsStore& store) {
  return store.ReadSetting("Option", "Evidence", "0") == "1";
}

void SetWritesEvidence(SettingsStore& store, bool on) {
  store.WriteSetting("Option", "Evidence", on ? "1" : "0");
}

void JobStarter::RunOnce(JobRequest request, const FileSides& sides) {
  AskForEvidence(request);
  BeginJob(program_.job, std::move(request));
  hooks_.about_to_run();
  const ResultSink results{
      [this](const std::vector<std::string>& lines) { results_.Append(lines); },
      [this] { results_.Clear(); }, [this](const PairTally& tally) { hooks_.pairs_ended(tally); }};
  const JobSurroundings surroundings{sides, &log_};
  running_ = true;
  LedrixF1(program_.options, program_.job, program_.platform, surroundings, results, &window_)
      .exec();
  running_ = false;
  // A window manager may leave nothing active when a dialog goes while its question is open.
  window_.raise();
  window_.activateWindow();
  sides_.Refresh();
  results_.viewport()->repaint();
  hooks_.has_run();
}

}  // namespace ledrix
