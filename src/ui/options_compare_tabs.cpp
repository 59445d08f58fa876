#include "ui/options_compare_tabs.h"

#include <QFormLayout>
#include <QVBoxLayout>
#include <cmath>

#include "text/leading_number.h"
#include "ui/named.h"
#include "ui/qt_text.h"
#include "ui/rows.h"

namespace ledrix {
namespace {

// Shows how many columns two fields span, whenever one of them changes.
QLabel* MakeColumnCount(QLineEdit* first, QLineEdit* last) {
  auto* const label = Named(new QLabel, "LblCompCol");
  const auto count = [label, first, last] {
    const double columns =
        LeadingNumber(ToUtf8(last->text())) - LeadingNumber(ToUtf8(first->text())) + 1;
    constexpr double kMost = 1e9;
    label->setText(std::abs(columns) < kMost ? QString::number(columns, 'g', 10) : QString("----"));
  };
  QObject::connect(first, &QLineEdit::textChanged, label, count);
  QObject::connect(last, &QLineEdit::textChanged, label, count);
  count();
  return label;
}

}  // namespace

QWidget* MakeConditionsTab(OptionControls& controls) {
  auto* const tab = new QWidget;
  auto* const form = new QFormLayout;
  QLineEdit* const first = controls.Number("CmbSTCol", "OptSTCol", 5);
  QLineEdit* const last = controls.Number("CmbEDCol", "OptEDCol", 5);
  form->addRow("比較範囲",
               Row({first, "桁から", last, "桁まで", "（", MakeColumnCount(first, last), "桁）"}));
  form->addRow("一致条件",
               Row({controls.Number("inMatch", "OptMatch", 5), "行同じ場合に同一行とみなす"}));
  form->addRow("先読み行数", Row({controls.Number("inBuff", "OptBuff", 5), "行先まで検索する"}));

  QCheckBox* const expand = controls.Flag("OptTABtoSPACE", "OptTABtoSPACE", "TABｺｰﾄﾞを SPACE");
  QLineEdit* const width = controls.NarrowText("OptTABtoKETA", "OptTABtoKETA", 3);
  width->setEnabled(false);
  QObject::connect(expand, &QCheckBox::toggled, width, &QWidget::setEnabled);

  auto* const layout = new QVBoxLayout(tab);
  layout->addLayout(form);
  layout->addWidget(controls.Choice("OptSpData", "OptSpData", "比較範囲内のｽﾍﾟｰｽ判定",
                                    {"比較対象とする", "右ｽﾍﾟｰｽを無効", "全ｽﾍﾟｰｽを無効"}));
  layout->addLayout(Row({expand, width, "桁に置換え判定する"}));
  layout->addWidget(controls.Flag("OptUpperCase", "OptUpperCase", "大文字と小文字を区別する"));
  layout->addStretch();
  return tab;
}

QWidget* MakeListingTab(OptionControls& controls) {
  auto* const tab = new QWidget;
  auto* const form = new QFormLayout;
  form->addRow(
      "結果ﾌｧｲﾙ拡張子",
      Row({controls.Combo("inComboLstLst", "ComboLstLst", {"*_COMP.TXT", "*.LST", "*.TXT"})}));
  QLineEdit* const context = controls.Number("inLstout", "OptLstout", 3);
  QCheckBox* const all = controls.Flag("OptOutLineCnt", "OptOutLineCnt", "全行出力");
  QObject::connect(all, &QCheckBox::toggled, context, &QWidget::setDisabled);
  form->addRow("出力幅（縦）", Row({"変更行の前後", context, "行を出力", all}));
  form->addRow("", new QLabel("99行指定時は全て出力します"));
  form->addRow("出力幅（横）", Row({controls.NumberCombo("CmbCompPrintLen", "PrintCompLen",
                                                         {"70", "72", "80 (A4横:8ﾎﾟ)",
                                                          "90 (A4縦:6ﾎﾟ)", "100", "120", "150"}),
                                    "桁で揃えて出力"}));

  auto* const layout = new QVBoxLayout(tab);
  layout->addLayout(form);
  layout->addWidget(controls.Flag("OptLineNoAdd", "LineNoAdd",
                                  "先頭に行番号を付加する（出力幅を片側5ﾊﾞｲﾄ消費します）"));
  layout->addWidget(controls.Flag("OptOutLineVar", "OptOutLineVar",
                                  "変更内容を１行毎縦交互に出力する（出力幅未調整）"));
  layout->addWidget(
      controls.Flag("OptNoCompList", "NoCompList", "変更内容なしの場合、結果ﾌｧｲﾙを出力しない"));
  layout->addWidget(controls.Flag("OptNTypeNextLine", "NTypeNextLine",
                                  "折り返し位置丁度の全角文字を次行に出力する"));
  layout->addWidget(
      controls.Flag("OptSimple", "OptSimple", "出力形式をシンプルにする（全角文字未使用モード）"));
  layout->addStretch();
  return tab;
}

}  // namespace ledrix
