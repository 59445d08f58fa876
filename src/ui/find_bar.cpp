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
  FindText = Named(new QLineEdit, "FindText");
  FindText->setPlaceholderText("検索する文字列");
  FindText->setClearButtonEnabled(true);
  FindCase = Named(new QCheckBox("大文字小文字を区別(&C)"), "FindCase");
  FindWidth = Named(new QCheckBox("全角半角を区別(&W)"), "FindWidth");
  FindCount = Named(new QLabel, "FindCount");
  auto* const next = Named(new QPushButton("次(&N)"), "BtnFindNext");
  auto* const previous = Named(new QPushButton("前(&P)"), "BtnFindPrevious");
  auto* const close = Named(new QPushButton("閉じる"), "BtnFindClose");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(6, 3, 6, 3);
  for (QWidget* const part : {static_cast<QWidget*>(FindText), static_cast<QWidget*>(next),
                              static_cast<QWidget*>(previous), static_cast<QWidget*>(FindCase),
                              static_cast<QWidget*>(FindWidth), static_cast<QWidget*>(FindCount),
                              static_cast<QWidget*>(close)}) {
    row->addWidget(part, part == FindText ? 1 : 0);
  }
  connect(FindText, &QLineEdit::textChanged, this, [this] { hooks_.changed(); });
  for (QCheckBox* const box : {FindCase, FindWidth})
    connect(box, &QCheckBox::toggled, this, [this] { hooks_.changed(); });
  connect(next, &QPushButton::clicked, this, [this] { hooks_.go(true); });
  connect(previous, &QPushButton::clicked, this, [this] { hooks_.go(false); });
  connect(close, &QPushButton::clicked, this, [this] { hooks_.closed(); });
}

void FindBar::Open() {
  show();
  FindText->setFocus(Qt::ShortcutFocusReason);
  FindText->selectAll();
}

TextFinder FindBar::Finder() const {
  return {ToUtf8(FindText->text()), {!FindCase->isChecked(), !FindWidth->isChecked()}};
}

void FindBar::Tell(const ListingSearch& search) {
  if (FindText->text().isEmpty()) {
    FindCount->clear();
    return;
  }
  const QString more = search.is_full() ? " 件以上" : search.is_done() ? " 件" : " 件（検索中）";
  if (search.is_done() && search.count() == 0) {
    FindCount->setText("見つかりません");
    return;
  }
  FindCount->setText(QString("%1 / %2%3").arg(search.number()).arg(search.count()).arg(more));
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
