#include "ui/choosers.h"

#include <QFileDialog>
#include <QGuiApplication>

#include "ui/qt_text.h"

namespace ledrix {
namespace {

// Tests find their way about in Qt's own dialog only.
void UseOwnDialogOffscreen(QFileDialog& dialog) {
  if (QGuiApplication::platformName() == "offscreen") {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
  }
}

}  // namespace

NativePath ChooseExistingFolder(QWidget* parent, const QString& title, const NativePath& start) {
  QFileDialog dialog(parent, title, ToQString(start.bytes()));
  UseOwnDialogOffscreen(dialog);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return ToNativePath(dialog.selectedFiles().first());
}

NativePath OutputChooser::Choose(QWidget* parent, const OutputQuestion& question) {
  QFileDialog dialog(parent, question.title, ToQString(folder_.bytes()));
  UseOwnDialogOffscreen(dialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.asks_before_overwriting);
  dialog.setNameFilters(question.filters);
  dialog.setDefaultSuffix(question.suffix);
  if (!question.name.isEmpty()) dialog.selectFile(question.name);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  NativePath path = MakeAbsolute(ToNativePath(dialog.selectedFiles().first()));
  folder_ = DirOf(path);
  return path;
}

QString ChooserFilter(const QString& shown, const QString& patterns) {
  QString list = patterns;
  list.replace(';', ' ');
  return shown + " (" + (list == "*.*" ? QString("*") : list) + ")";
}

}  // namespace ledrix
