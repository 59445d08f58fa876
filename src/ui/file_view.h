// A side's file list as it is seen: two columns that fill its width.
#pragma once

#include <QTreeView>

namespace ledrix {

class FileTable;

// The name column takes the width that the date column leaves, and the other way round where the
// user moves the border between them; neither becomes unreadable, rather the list scrolls. A list
// that the filter has emptied says how many files are hidden.
class FileView : public QTreeView {
 public:
  // `table` must outlive the view.
  explicit FileView(FileTable& table);

  void ShowHidden(int files) { hidden_ = files; }
  // Wide enough for a date in the font of the list, in device-independent pixels.
  int DateWidth() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  // The other column takes what one of this width leaves.
  void FillBeside(int column, int width);

  int hidden_ = 0;
  bool filling_ = false;
};

}  // namespace ledrix
