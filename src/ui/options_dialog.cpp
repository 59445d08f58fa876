#include "ui/options_dialog.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>

#include "settings/option_draft.h"
#include "ui/options_compare_tabs.h"
#include "ui/options_output_tabs.h"

namespace ledrix {

LedrixFo::LedrixFo(OptionRecord& options, PatternSlots& patterns, PlatformServices& platform,
                   int& last_tab, QWidget* parent)
    : QDialog(parent),
      options_(options),
      platform_(platform),
      last_tab_(last_tab),
      TabStrip1_(new QTabWidget(this)),
      BtnOk_(new QPushButton("OK", this)),
      BtnEnd_(new QPushButton("閉じる", this)),
      output_folder_(new OutputFolderBox(controls_, platform)),
      patterns_(new PatternBox(controls_, patterns, platform)),
      font_(new FontBox) {
  setObjectName("LedrixFo");
  setWindowTitle("ｵﾌﾟｼｮﾝ設定");
  AddTabs();
  AddButtons();
  controls_.Show(options);
  font_->Show({options.FontName, options.FontSize});
  output_folder_->ApplyRule();
  ShowWholeTabStrip();
  TabStrip1_->setCurrentIndex(std::clamp(last_tab, 0, TabStrip1_->count() - 1));
}

void LedrixFo::AddTabs() {
  TabStrip1_->setObjectName("TabStrip1");
  const auto add = [this](QWidget* tab, const char* caption) {
    tab->setObjectName("FrmOpt" + QString::number(TabStrip1_->count() + 1));
    TabStrip1_->addTab(tab, caption);
  };
  add(MakeConditionsTab(controls_), "ﾃｷｽﾄｺﾝﾍﾟｱ比較条件");
  add(MakeListingTab(controls_), "ﾃｷｽﾄｺﾝﾍﾟｱ出力形式");
  add(MakeSupplementTab(controls_, output_folder_, patterns_), "ﾃｷｽﾄｺﾝﾍﾟｱ補足");
  add(MakeSideOutputsTab(controls_), "同時出力機能");
  add(MakeDirectoryTab(controls_), "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ");
  add(MakeOtherTab(controls_), "その他機能");
  add(MakeScreenTab(controls_), "画面制御(1)");
  add(MakeFileTypesTab(controls_, font_), "画面制御(2)");
}

void LedrixFo::AddButtons() {
  BtnOk_->setObjectName("BtnOk");
  BtnEnd_->setObjectName("BtnEnd");
  BtnOk_->setDefault(true);
  connect(BtnOk_, &QPushButton::clicked, this, [this] { AcceptIfValid(); });
  connect(BtnEnd_, &QPushButton::clicked, this, &QDialog::reject);

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(BtnOk_);
  buttons->addWidget(BtnEnd_);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(TabStrip1_);
  layout->addLayout(buttons);
}

void LedrixFo::ShowWholeTabStrip() {
  const QSize hint = sizeHint();
  const int frame = hint.width() - TabStrip1_->sizeHint().width();
  const QSize wanted(TabStrip1_->tabBar()->sizeHint().width() + frame, 0);
  resize(hint.expandedTo(wanted).boundedTo(screen()->availableSize()));
}

void LedrixFo::AcceptIfValid() {
  OptionDraft draft(options_);
  controls_.ReadInto(draft);
  std::string failed_key;
  if (const auto refused = draft.Check(&failed_key)) {
    GoTo(controls_.ControlOf(failed_key));
    platform_.ShowMessage({*refused});
    return;
  }
  if (!output_folder_->ApplyRule()) {  // shows what is assumed before it is accepted
    GoTo(controls_.ControlOf("ContOutDirPath"));
    return;
  }
  (void)draft.Set("ContOutDirPath", output_folder_->Folder());  // a text is never refused
  draft.Accept(options_);
  options_.FontName = font_->font().name;
  options_.FontSize = static_cast<int16_t>(font_->font().size);
  accept();
}

void LedrixFo::GoTo(QWidget* control) {
  for (int tab = 0; tab < TabStrip1_->count(); ++tab) {
    if (TabStrip1_->widget(tab)->isAncestorOf(control)) TabStrip1_->setCurrentIndex(tab);
  }
  control->setFocus();
}

void LedrixFo::done(int result) {
  last_tab_ = TabStrip1_->currentIndex();
  QDialog::done(result);
}

}  // namespace ledrix
