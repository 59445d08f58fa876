#include "ui/find_bar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {

FindBar::FindBar(Hooks hooks, QWidget* parent) : QWidget(parent), hooks_(std::move(hooks)) {
  text_ = Named(new QLineEdit, "FindText");
  text_->setPlaceholderText("検索する文字列");
  text_->setClearButtonEnabled(true);
  case_ = Named(new QCheckBox("大文字小文字を区別(&C)"), "FindCase");
  width_ = Named(new QCheckBox("全角半角を区別(&W)"), "FindWidth");
  count_ = Named(new QLabel, "FindCount");
  // As wide as what it may say, so that what stands beside it stays in its place.
  count_->setMinimumWidth(fontMetrics().horizontalAdvance("00000 / 00000 件（検索中）"));
  auto* const next = Named(new QPushButton("次(&N)"), "BtnFindNext");
  auto* const previous = Named(new QPushButton("前(&P)"), "BtnFindPrevious");
  auto* const close = Named(new QPushButton("閉じる"), "BtnFindClose");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(6, 3, 6, 3);
  for (QWidget* const part :
       {static_cast<QWidget*>(text_), static_cast<QWidget*>(next), static_cast<QWidget*>(previous),
        static_cast<QWidget*>(case_), static_cast<QWidget*>(width_), static_cast<QWidget*>(count_),
        static_cast<QWidget*>(close)}) {
    row->addWidget(part, part == text_ ? 1 : 0);
  }
  connect(text_, &QLineEdit::textChanged, this, [this] { hooks_.changed(); });
  for (QCheckBox* const box : {case_, width_})
    connect(box, &QCheckBox::toggled, this, [this] { hooks_.changed(); });
  connect(next, &QPushButton::clicked, this, [this] { hooks_.go(true); });
  connect(previous, &QPushButton::clicked, this, [this] { hooks_.go(false); });
  connect(close, &QPushButton::clicked, this, [this] { hooks_.closed(); });
}

void FindBar::Open() {
  show();
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
}

TextFinder FindBar::Finder() const {
  return {ToUtf8(text_->text()), {!case_->isChecked(), !width_->isChecked()}};
}

void FindBar::Tell(const ListingSearch& search) {
  if (text_->text().isEmpty()) {
    count_->clear();
    return;
  }
  const QString more = search.is_full() ? " 件以上" : search.is_done() ? " 件" : " 件（検索中）";
  if (search.is_done() && search.count() == 0) {
    count_->setText("見つかりません");
    return;
  }
  count_->setText(QString("%1 / %2%3").arg(search.number()).arg(search.count()).arg(more));
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      hooks_.closed();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      hooks_.go(!event->modifiers().testFlag(Qt::ShiftModifier));
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace ledrix
