// How the main window describes jobs and has them run.
#include <QLabel>
#include <QPushButton>

#include "text/name_pattern.h"
#include "ui/file_frame.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"
#include "ui/result_list.h"
#include "ui/run_dialog.h"

namespace ledrix {

FileSides LedrixF0::Sides() const {
  return {side(0).Snapshot(), side(1).Snapshot()};
}

void LedrixF0::StartTextCompare() {
  const FileSides sides = Sides();
  if (!CheckPairSelection(sides, program_.platform)) return;
  JobRecord& job = program_.job;
  job.JobKind = JobKind::kComp;
  job.OldPath = AddBackslash(sides[0].folder) + SelectedFileName(sides[0].files);
  job.NewPath = AddBackslash(sides[1].folder) + SelectedFileName(sides[1].files);
  job.FileCount = static_cast<int64_t>(SelectedCount(sides[0].files));
  RunCurrentJob(sides);
}

void LedrixF0::StartDirCompare(int range) {
  JobRecord& job = program_.job;
  job.CompareRange = range;
  const FileSides sides = Sides();
  const char* const refusals[] = {"旧ファイルが複数選択されています",
                                  "新ファイルが複数選択されています"};
  for (size_t i = 0; i < 2; ++i) {
    if (SelectedCount(sides[i].files) <= 1) continue;
    program_.platform.ShowMessage({refusals[i]});
    return;
  }
  const NativePath output = chooser_.Choose(
      this, {"ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ結果ﾌｧｲﾙの指定",
             {ChooserFilter("結果ﾌｧｲﾙ(*.lst)", "*.lst"), ChooserFilter("全てのﾌｧｲﾙ(*.*)", "*.*")},
             "DIR_COMP.lst",
             "",
             true});
  if (output.empty()) return;
  job.JobKind = JobKind::kDirComp;
  job.OldPath = AddBackslash(sides[0].folder) + SelectedFileName(sides[0].files);
  job.NewPath = AddBackslash(sides[1].folder) + SelectedFileName(sides[1].files);
  job.OutPath = output;
  RunCurrentJob(sides);
}

void LedrixF0::StartDirEdit(int index, const NativePath& folder) {
  const std::string& pattern = program_.options.ComboDLst;
  const QString shown = "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙ(" + ToQString(pattern) + ")";
  NativePath output;
  while (true) {
    output = chooser_.Choose(
        this, {"ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの指定", {ChooserFilter(shown, ToQString(pattern))}, "", "", true});
    if (output.empty()) return;
    if (MatchesPattern(FileNameOf(output), pattern, LetterCase::kIgnore)) break;
    program_.platform.ShowMessage(
        {"ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの拡張子が違います\r拡張子は " + pattern + " のみ有功です"});
  }
  JobRecord& job = program_.job;
  job.JobKind = JobKind::kDirEdit;
  job.ActiveSide = index;
  job.OldPath = AddBackslash(folder);
  job.NewPath = {};
  job.OutPath = output;
  RunCurrentJob(Sides());
}

void LedrixF0::StartStepCount() {
  const std::string name = side(popup_side_).CurrentName();
  if (name.empty()) return;
  JobRecord& job = program_.job;
  job.JobKind = JobKind::kStepCnt;
  job.OldPath = AddBackslash(side(popup_side_).folder()) + name;
  job.NewPath = {};
  job.OutPath =
      DirOf(job.OldPath) + FillPattern(program_.options.ComboStp, NameForPattern(job.OldPath));
  RunCurrentJob(Sides());
}

void LedrixF0::StartStepCsv() {
  // The files of the highlighted folder, as the list shows them when it is the open one.
  FileSides sides = Sides();
  FileSide& counted = sides[static_cast<size_t>(popup_side_)];
  const NativePath folder = side(popup_side_).HighlightedFolder();
  if (folder != counted.folder) {
    counted.files = side(popup_side_).FilesOf(folder);
    counted.folder = folder;
  }
  if (counted.files.entries.empty()) {
    program_.platform.ShowMessage({"ファイルボックスに対象ファイルが有りません"});
    return;
  }
  const NativePath output = chooser_.Choose(this, {"出力CSVﾌｧｲﾙの指定",
                                                   {ChooserFilter("ｶﾝﾏ編集ﾌｧｲﾙ(*.CSV)", "*.CSV"),
                                                    ChooserFilter("全てのﾌｧｲﾙ(*.*)", "*.*")},
                                                   "STEP.CSV",
                                                   "csv",
                                                   false});
  if (output.empty()) return;
  JobRecord& job = program_.job;
  job.JobKind = JobKind::kStepCsv;
  job.OldPath = AddBackslash(folder);
  job.NewPath = {};
  job.OutPath = output;
  job.ActiveSide = popup_side_;
  job.FileCount = static_cast<int64_t>(counted.files.entries.size());
  RunCurrentJob(sides);
}

void LedrixF0::RunCurrentJob(const FileSides& sides) {
  JobRecord& job = program_.job;
  job.IsMultiple = false;
  job.ListingPath = {};
  job.ProtectedFiles = {};
  trouble_->hide();
  const ResultSink results{
      [this](const std::vector<std::string>& lines) { OutList->Append(lines); },
      [this] { OutList->Clear(); }};
  const JobSurroundings surroundings{sides, &log_};
  busy_ = true;
  LedrixF1(program_.options, job, program_.platform, surroundings, results, this).exec();
  busy_ = false;
  OutList->viewport()->repaint();
  UpdatePreview();
}

}  // namespace ledrix
