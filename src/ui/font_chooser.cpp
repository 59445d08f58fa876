#include "ui/font_chooser.h"

#include <QFontComboBox>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "ui/named.h"

namespace ledrix {

FontChooser::FontChooser(const QString& family, int points, QWidget* parent)
    : QDialog(parent),
      family_(family),
      families_(Named(new QFontComboBox, "FontFamilies")),
      points_(Named(new QSpinBox, "FontPoints")),
      sample_(new QLabel("Ledrix  0123456789\n旧ﾌｧｲﾙ 新ﾌｧｲﾙ 変更 追加 削除")) {
  setWindowTitle("ﾌｫﾝﾄの選択");
  // A font for vertical text is one of its family whose name begins with "@".
  for (int i = families_->count() - 1; i >= 0; --i) {
    if (families_->itemText(i).startsWith('@')) families_->removeItem(i);
  }
  families_->setEditable(false);
  families_->setAccessibleDescription("一覧を表示するフォントです。");
  families_->setToolTip(families_->accessibleDescription());
  families_->setCurrentFont(QFont(QFontInfo(QFont(family, points)).family()));
  stand_in_ = families_->currentText();
  points_->setRange(1, 200);
  points_->setValue(points);
  points_->setAccessibleName("大きさ（ポイント）");
  points_->setToolTip("文字の大きさ（ポイント）です。");
  sample_->setMinimumHeight(sample_->fontMetrics().height() * 5);
  sample_->setFrameShape(QFrame::StyledPanel);
  connect(families_, &QFontComboBox::currentFontChanged, this, [this] { ShowSample(); });
  connect(points_, &QSpinBox::valueChanged, this, [this] { ShowSample(); });
  ShowSample();

  auto* const choice = new QHBoxLayout;
  choice->addWidget(families_, 1);
  choice->addWidget(points_);
  choice->addWidget(new QLabel("ﾎﾟｲﾝﾄ"));
  auto* const accept_button = Named(new QPushButton("OK"), "BtnFontOk");
  auto* const cancel_button = Named(new QPushButton("ｷｬﾝｾﾙ"), "BtnFontCancel");
  accept_button->setDefault(true);
  connect(accept_button, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel_button, &QPushButton::clicked, this, &QDialog::reject);
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(accept_button);
  buttons->addWidget(cancel_button);
  auto* const rows = new QVBoxLayout(this);
  rows->addLayout(choice);
  rows->addWidget(sample_, 1);
  rows->addLayout(buttons);
}

void FontChooser::ShowSample() {
  QFont font(families_->currentText());
  font.setPointSize(points_->value());
  sample_->setFont(font);
}

QString FontChooser::family() const {
  return families_->currentText() == stand_in_ ? family_ : families_->currentText();
}

int FontChooser::points() const {
  return points_->value();
}

}  // namespace ledrix
