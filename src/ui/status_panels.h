// What the status bar of the main window shows.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "run/side.h"

class QLabel;
class QStatusBar;

namespace ledrix {

class StatusPanels {
 public:
  // The bar owns the panels.
  explicit StatusPanels(QStatusBar& bar);

  // Of the files of a side.
  void ShowCount(Side side, size_t selected, int files);
  // Where the outputs of the next compare go.
  void ShowPreview(const QString& preview);
  // Beside the preview, until it is hidden: the first line and how many follow. A click on it
  // shows them all.
  void ShowTrouble(const std::string& line);
  void HideTrouble();
  // Stands in its place until the next folder opens.
  void ShowRefusal(const std::string& line);
  void HideRefusal();
  // How the pairs of a multiple compare ended, until it is hidden by an empty text.
  void ShowPairs(const QString& text);

 private:
  void RenewTrouble();

  QLabel* const PanelOld;
  QLabel* const PanelNew;
  QLabel* const PanelPreview;
  QLabel* const PanelPairs;
  QLabel* const PanelTrouble;
  QStringList troubles_;
  QString refusal_;
};

}  // namespace ledrix
