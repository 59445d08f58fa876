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
  JobRequest request;
  request.OldPath = AddBackslash(sides[0].folder) + SelectedFileName(sides[0].files);
  request.NewPath = AddBackslash(sides[1].folder) + SelectedFileName(sides[1].files);
  request.FileCount = static_cast<int64_t>(SelectedCount(sides[0].files));
  RunJobOf(std::move(request), sides);
}

void LedrixF0::StartDirCompare(CompareRange range) {
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
  const auto input = [&](const FileSide& side) {
    return DirCompareSide(AddBackslash(side.folder) + SelectedFileName(side.files),
                          program_.options);
  };
  JobRequest request;
  request.JobKind = JobKind::kDirComp;
  request.CompareRange = range;
  request.OldPath = input(sides[0]);
  request.NewPath = input(sides[1]);
  request.OutPath = output;
  RunJobOf(std::move(request), sides);
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
  JobRequest request;
  request.JobKind = JobKind::kDirEdit;
  request.ActiveSide = static_cast<Side>(index);
  request.OldPath = AddBackslash(folder);
  request.OutPath = output;
  RunJobOf(std::move(request), Sides());
}

void LedrixF0::StartStepCount() {
  const std::string name = side(popup_side_).CurrentName();
  if (name.empty()) return;
  JobRequest request;
  request.JobKind = JobKind::kStepCnt;
  request.OldPath = AddBackslash(side(popup_side_).folder()) + name;
  request.OutPath = DirOf(request.OldPath) +
                    FillPattern(program_.options.ComboStp, NameForPattern(request.OldPath));
  RunJobOf(std::move(request), Sides());
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
  JobRequest request;
  request.JobKind = JobKind::kStepCsv;
  request.OldPath = AddBackslash(folder);
  request.OutPath = output;
  request.ActiveSide = static_cast<Side>(popup_side_);
  request.FileCount = static_cast<int64_t>(counted.files.entries.size());
  RunJobOf(std::move(request), sides);
}

void LedrixF0::RunJobOf(JobRequest request, const FileSides& sides) {
  BeginJob(program_.job, std::move(request));
  trouble_->hide();
  const ResultSink results{
      [this](const std::vector<std::string>& lines) { OutList->Append(lines); },
      [this] { OutList->Clear(); }};
  const JobSurroundings surroundings{sides, &log_};
  busy_ = true;
  LedrixF1(program_.options, program_.job, program_.platform, surroundings, results, this).exec();
  busy_ = false;
  OutList->viewport()->repaint();
  UpdatePreview();
}

}  // namespace ledrix
