#include "ui/choosers.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <algorithm>

#include "platform/files.h"
#include "ui/font_chooser.h"
#include "ui/qt_text.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

bool HasDesktop() {
  return QGuiApplication::platformName() != "offscreen";
}

}  // namespace

std::optional<QString> ChooseFolder(QWidget* parent, const QString& title, const QString& start) {
  QFileDialog dialog(parent, title, start);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setOption(QFileDialog::DontUseNativeDialog, !HasDesktop());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return dialog.selectedFiles().front();
}

std::vector<NativePath> ChooseRecords(QWidget* parent, const NativePath& start) {
  QFileDialog dialog(parent, "証跡の検証", ToQString(start.bytes()));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  dialog.setOption(QFileDialog::DontUseNativeDialog, !HasDesktop());
  dialog.setNameFilters(
      {ChooserFilter("証跡", "*.EVD.TXT"), ChooserFilter("全てのﾌｧｲﾙ(*.*)", "*.*")});
  std::vector<NativePath> records;
  if (dialog.exec() != QDialog::Accepted) return records;
  for (const QString& path : dialog.selectedFiles()) {
    records.push_back(MakeAbsolute(ToNativePath(path)));
  }
  return records;
}

std::optional<FontChoice> ChooseFont(QWidget* parent, const FontChoice& current) {
  FontChooser dialog(ToQString(current.name), std::max(current.size, 1), parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return FontChoice{ToUtf8(dialog.family()), dialog.points()};
}

NativePath OutputChooser::Choose(QWidget* parent, const OutputQuestion& question) {
  QFileDialog dialog(parent, question.title, ToQString(folder_.bytes()));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontUseNativeDialog, !HasDesktop());
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.asks_before_overwriting);
  dialog.setNameFilters(question.filters);
  dialog.setDefaultSuffix(question.suffix);
  if (!question.name.isEmpty()) dialog.selectFile(question.name);
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    NativePath path = MakeAbsolute(ToNativePath(dialog.selectedFiles().front()));
    if (IsFolder(DirOf(path))) {
      folder_ = DirOf(path);
      return path;
    }
    ShowMessageBox({"フォルダが見つかりません\r" + PathToUtf8(DirOf(path))});
  }
  return {};
}

QString ChooserFilter(const QString& shown, const QString& patterns) {
  QString list = patterns;
  list.replace(';', ' ');
  return shown + " (" + (list == "*.*" ? QString("*") : list) + ")";
}

}  // namespace ledrix
