// The dialogs in which the user chooses folders and outputs, the desktop's own (Qt's on the
// platform "offscreen"), and fonts, one of ours.
#pragma once

#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "platform/native_path.h"

namespace ledrix {

// The folder chosen, absolute; nothing when the user cancelled. A start folder that does not exist
// is replaced by the current one.
std::optional<QString> ChooseFolder(QWidget* parent, const QString& title, const QString& start);

struct FontChoice {
  std::string name;
  int size = 0;  // points, at least 1
};

// The font chosen; nothing when the user cancelled. The name stays the one given as long as no
// other font is chosen, even when another font stands in for it on this system.
std::optional<FontChoice> ChooseFont(QWidget* parent, const FontChoice& current);

// Records of jobs that are to be verified; none when the user cancelled.
std::vector<NativePath> ChooseRecords(QWidget* parent, const NativePath& start);

// What one of the choosers for outputs offers.
struct OutputQuestion {
  QString title;
  QStringList filters;  // each made by ChooserFilter
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
