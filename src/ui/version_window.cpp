#include "ui/version_window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/version.h"
#include "ui/desktop_actions.h"
#include "ui/explain.h"
#include "ui/named.h"

namespace ledrix {

LedrixFv::LedrixFv(Use use, DesktopActions& actions, QWidget* parent) : QDialog(parent) {
  Named(this, "LedrixFv");
  setWindowTitle("ﾊﾞｰｼﾞｮﾝ情報");
  auto* const name = new QLabel("Ledrix");
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 2.5);
  large.setBold(true);
  name->setFont(large);
  auto* const about = new QLabel("ﾃｷｽﾄ･ﾃﾞｨﾚｸﾄﾘ ｺﾝﾍﾟｱﾂｰﾙ");
  auto* const version = Named(new QLabel(QString("Version.") + ProgramVersion()), "LblVersion");
  auto* const address = Named(new QLineEdit(kWebAddress), "TextURL");
  address->setReadOnly(true);
  address->setMinimumWidth(address->fontMetrics().averageCharWidth() * 40);

  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(28, 24, 28, 24);
  rows->setSpacing(10);
  for (QWidget* const row : {static_cast<QWidget*>(name), static_cast<QWidget*>(about),
                             static_cast<QWidget*>(version), static_cast<QWidget*>(address)}) {
    rows->addWidget(row);
  }
  if (use == Use::kSplash) {
    setWindowFlags(Qt::SplashScreen);
    Explain(*this);
    return;
  }
  auto* const open = Named(new QPushButton("ホームページを開く(&W)"), "BtnURL");
  auto* const end = Named(new QPushButton("閉じる"), "BtnEnd");
  end->setDefault(true);
  connect(open, &QPushButton::clicked, this,
          [&actions] { actions.OpenAddress(QString(kWebAddress)); });
  connect(end, &QPushButton::clicked, this, &QDialog::accept);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(open);
  buttons->addStretch();
  buttons->addWidget(end);
  rows->addSpacing(6);
  rows->addLayout(buttons);
  Explain(*this);
}

}  // namespace ledrix
