// The dialogs in which the user names folders and outputs.
#pragma once

#include <QStringList>
#include <string>

#include "platform/native_path.h"

class QWidget;

namespace ledrix {

// The chosen folder; empty when the user cancelled.
NativePath ChooseExistingFolder(QWidget* parent, const QString& title, const NativePath& start);

// What one of the choosers for outputs offers.
struct OutputQuestion {
  QString title;
  QStringList filters;  // as Qt takes them, their details hidden
  QString name;         // suggested
  QString suffix;       // put behind a name without one
  bool asks_before_overwriting = true;
};

// Names outputs; each time in the folder of the last one that was named.
class OutputChooser {
 public:
  // The first chooser starts in `folder`.
  explicit OutputChooser(NativePath folder) : folder_(std::move(folder)) {}

  // The chosen path; empty when the user cancelled.
  NativePath Choose(QWidget* parent, const OutputQuestion& question);

 private:
  NativePath folder_;
};

// One entry of a chooser's filter list, from what it shows and the patterns behind it, joined by
// ";". "*.*" shows every file.
QString ChooserFilter(const QString& shown, const QString& patterns);

}  // namespace ledrix
