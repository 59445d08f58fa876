#include "ui/options_output_tabs.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "ui/rows.h"

namespace ledrix {

QWidget* MakeSideOutputsTab(OptionControls& controls) {
  auto* const tab = new QWidget;
  auto* const difference = new QGroupBox("差分ﾌｧｲﾙ （New側のみ抜粋した形式のﾌｧｲﾙ）");
  auto* const difference_form = new QFormLayout(difference);
  difference_form->addRow(
      "拡張子", Row({controls.Combo("inComboLstSbn", "ComboLstSbn", {"*_SBN.TXT", "*.SBN"})}));

  auto* const summary = new QGroupBox("CSVﾌｧｲﾙ （ｺﾝﾍﾟｱ結果行数だけをまとめた一覧形式）");
  auto* const summary_form = new QFormLayout(summary);
  summary_form->addRow(
      "ﾌｧｲﾙ名称",
      Row({controls.Combo("inComboCSVName", "ComboCSVName", {"Ledrix.csv", "Compare.csv"})}));
  summary_form->addRow(
      controls.Flag("OptCsvStatus", "CsvStatus", "ｺﾝﾍﾟｱｽﾃｰﾀｽ(ｴﾗｰ、SKIP情報など)を出力する"));

  auto* const merge = new QGroupBox("ﾏｰｼﾞｿｰｽ");
  auto* const merge_layout = new QVBoxLayout(merge);
  merge_layout->addWidget(controls.Flag("OptMrgOld", "MergeOld", "ﾏｰｼﾞｿｰｽ作成時、旧ｿｰｽを優先する"));

  auto* const layout = new QVBoxLayout(tab);
  layout->addWidget(difference);
  layout->addWidget(summary);
  layout->addWidget(merge);
  layout->addStretch();
  return tab;
}

QWidget* MakeDirectoryTab(OptionControls& controls) {
  auto* const tab = new QWidget;
  auto* const form = new QFormLayout;
  form->addRow("ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ拡張子",
               Row({controls.Combo("inComboDLstSts", "ComboDLst", {"*.ddf", "*.dat"})}));
  form->addRow("出力幅",
               Row({controls.NumberCombo("CmbDCompPrintLen", "PrintDCompLen",
                                         {"70", "100", "120 (A4縦:8ﾎﾟ)", "150", "180 (A4横:8ﾎﾟ)"}),
                    "桁"}));

  auto* const details = new QGroupBox("出力内容制限");
  auto* const details_layout = new QVBoxLayout(details);
  details_layout->addWidget(controls.Flag("OptDCompOut0", "DCompOut0", "追加明細を出力"));
  details_layout->addWidget(controls.Flag("OptDCompOut1", "DCompOut1", "削除明細を出力"));
  details_layout->addWidget(controls.Flag("OptDCompOut2", "DCompOut2", "変更明細を出力"));

  auto* const layout = new QVBoxLayout(tab);
  layout->addLayout(form);
  layout->addWidget(details);
  layout->addWidget(controls.Flag("OptDCompSelect", "DCompSelect",
                                  "対象拡張子の絞込みを行う(OLDﾃﾞｨﾚｸﾄﾘﾌｧｲﾙﾀｲﾌﾟに合わせる)"));
  layout->addWidget(
      controls.Flag("OptDComp1s", "DComp1s", "更新時刻 1秒のズレは同一とみなす ( NT x 9X 対応 )"));
  layout->addWidget(controls.Flag("OptDComp9h", "DComp9h",
                                  "更新時刻 9時間のズレは同一とみなす ( GMT +09:00 対応 )"));
  layout->addWidget(controls.Flag("OptDCompKana", "DCompKana", "名称比較 半角全角を区別する"));
  layout->addWidget(controls.Flag("OptDCompBinary", "DCompBinary", "名称比較 大小文字を区別する"));
  layout->addStretch();
  return tab;
}

QWidget* MakeOtherTab(OptionControls& controls) {
  auto* const tab = new QWidget;
  auto* const steps = new QGroupBox("ｽﾃｯﾌﾟｶｳﾝﾄ");
  auto* const form = new QFormLayout(steps);
  form->addRow("出力ﾌｧｲﾙ拡張子",
               Row({controls.Combo("inComboStep", "ComboStp", {"*_STP.TXT", "*.STP", "*.TXT"})}));
  auto* const layout = new QVBoxLayout(tab);
  layout->addWidget(steps);
  layout->addStretch();
  return tab;
}

}  // namespace ledrix
