#include "ui/option_pattern_box.h"

#include <QHBoxLayout>
#include <QInputDialog>
#include <QLineEdit>
#include <QVBoxLayout>

#include "ui/named.h"
#include "ui/qt_text.h"
#include "ui/rows.h"

namespace ledrix {
namespace {

// A pattern file gives back 255 bytes of a name, two a character at most.
constexpr int kLongestName = 127;

// The name under which the user wants to save; empty when he gives none.
std::string AskPatternName(QWidget* parent, size_t number) {
  QInputDialog dialog(parent);
  dialog.setWindowTitle("パターン名称の設定");
  dialog.setLabelText("保存するパターン名称を入力してください");
  dialog.setTextValue("ﾊﾟﾀｰﾝ" + QString::number(number));
  dialog.setOkButtonText("OK");
  dialog.setCancelButtonText("ｷｬﾝｾﾙ");
  if (auto* const edit = dialog.findChild<QLineEdit*>()) edit->setMaxLength(kLongestName);
  return dialog.exec() == QDialog::Accepted ? ToUtf8(dialog.textValue()) : std::string();
}

}  // namespace

PatternBox::PatternBox(OptionControls& controls, PatternSlots& patterns, PlatformServices& platform)
    : QGroupBox("条件ﾊﾟﾀｰﾝ"),
      controls_(controls),
      patterns_(patterns),
      platform_(platform),
      cmbMatchPatternNum(Named(new QComboBox, "cmbMatchPatternNum")),
      BtnMPtnSEL(Named(new QPushButton("読込"), "BtnMPtnSEL")),
      BtnMPtnUPD(Named(new QPushButton("保存"), "BtnMPtnUPD")),
      BtnMPtnDEL(Named(new QPushButton("削除"), "BtnMPtnDEL")) {
  connect(BtnMPtnSEL, &QPushButton::clicked, this, [this] { Load(); });
  connect(BtnMPtnUPD, &QPushButton::clicked, this, [this] { Save(); });
  connect(BtnMPtnDEL, &QPushButton::clicked, this, [this] { Delete(); });
  auto* const layout = new QHBoxLayout(this);
  layout->addLayout(MakeNames(), 1);
  layout->addSpacing(fontMetrics().averageCharWidth() * 2);
  layout->addLayout(MakeButtons());
  ShowNames();
}

QLayout* PatternBox::MakeNames() {
  auto* const names = new QGridLayout;
  for (int k = 0; k < static_cast<int>(kPatternSlots); ++k) {
    auto* const name = Named(new QLabel, "txtMatchPattern", k);
    name->setTextFormat(Qt::PlainText);
    name->setFrameShape(QFrame::StyledPanel);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // a long name is cut off
    name->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
    names->addWidget(new QLabel(QString::number(k + 1)), k, 0);
    names->addWidget(name, k, 1);
    txtMatchPattern[static_cast<size_t>(k)] = name;
    cmbMatchPatternNum->addItem(QString::number(k + 1));
  }
  names->setColumnStretch(1, 1);
  return names;
}

QLayout* PatternBox::MakeButtons() {
  auto* const buttons = new QVBoxLayout;
  buttons->addLayout(Row({"ﾊﾟﾀｰﾝ番号", cmbMatchPatternNum, BtnMPtnSEL, BtnMPtnUPD, BtnMPtnDEL}));
  buttons->addWidget(new QLabel("※ﾃｷｽﾄｺﾝﾍﾟｱ比較条件\nと ﾃｷｽﾄｺﾝﾍﾟｱ出力形式\nが対象"));
  buttons->addStretch();
  return buttons;
}

size_t PatternBox::Selected() const {
  return static_cast<size_t>(cmbMatchPatternNum->currentIndex());
}

void PatternBox::ShowNames() {
  for (size_t n = 0; n < kPatternSlots; ++n) {
    txtMatchPattern[n]->setText(ToQString(patterns_[n].name));
  }
}

void PatternBox::TellFailure(const char* what, size_t n, const Error& error) {
  platform_.ShowMessage(
      {what + ("\n" + PathToUtf8(patterns_.FileOf(n)) + "\n" + DescribeError(error))});
}

void PatternBox::Load() {
  Status unread;
  for (size_t n = 0; n < kPatternSlots; ++n) {
    const Status loaded = patterns_.LoadPattern(n);
    if (n == Selected()) unread = loaded;
  }
  const PatternSlot& slot = patterns_[Selected()];
  if (!unread.ok()) {
    TellFailure("ﾊﾟﾀｰﾝを読み込めません", Selected(), unread.error());
  } else if (slot.name.empty()) {
    platform_.ShowMessage(
        {"読み込むﾊﾟﾀｰﾝ番号" + std::to_string(Selected() + 1) + "の情報がありません"});
  } else {
    controls_.Show(slot.values, PatternKeys());
  }
  ShowNames();
}

void PatternBox::Save() {
  const size_t n = Selected();
  const std::string name = AskPatternName(this, n + 1);
  if (name.empty()) return;
  PatternSlot slot = patterns_[n];
  slot.name = name;
  for (const OptionKey key : PatternKeys()) {
    FieldOf(key).Set(slot.values, controls_.Value(key));
  }
  if (const Status failed = patterns_.SavePattern(n, std::move(slot)); !failed.ok()) {
    TellFailure("ﾊﾟﾀｰﾝを保存できません", n, failed.error());
  }
  ShowNames();
}

void PatternBox::Delete() {
  const size_t n = Selected();
  if (patterns_[n].name.empty()) return;
  const Message question{"ﾊﾟﾀｰﾝ番号" + std::to_string(n + 1) + "[ " + patterns_[n].name +
                             " ]を削除します。よろしいですか？",
                         kProgramTitle, MessageIcon::kQuestion, MessageButtons::kYesNo,
                         MessageAnswer::kYes};
  if (platform_.ShowMessage(question) != MessageAnswer::kYes) return;
  if (const Status failed = patterns_.DeletePattern(n); !failed.ok()) {
    TellFailure("ﾊﾟﾀｰﾝを削除できません", n, failed.error());
  }
  ShowNames();
}

}  // namespace ledrix
