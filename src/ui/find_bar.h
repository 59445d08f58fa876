// The line below a listing in which a search is entered.
#pragma once

#include <QWidget>
#include <functional>

#include "listing/text_finder.h"
#include "ui/listing_search.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace ledrix {

class FindBar : public QWidget {
 public:
  struct Hooks {
    std::function<void()> changed;         // another text or other rules
    std::function<void(bool forward)> go;  // to the next place or the one before
    std::function<void()> closed;
  };
  explicit FindBar(Hooks hooks, QWidget* parent = nullptr);

  // Shows it, ready for another text.
  void Open();
  TextFinder Finder() const;
  void Tell(const ListingSearch& search);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const Hooks hooks_;
  QLineEdit* text_;
  QCheckBox* case_;
  QCheckBox* width_;
  QLabel* count_;
};

}  // namespace ledrix
