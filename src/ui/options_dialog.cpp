#include "ui/options_dialog.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QShortcut>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>

#include "settings/option_draft.h"
#include "ui/explain.h"
#include "ui/named.h"
#include "ui/options_compare_tabs.h"
#include "ui/options_output_tabs.h"

namespace ledrix {

LedrixFo::LedrixFo(OptionRecord& options, PatternSlots& patterns, PlatformServices& platform,
                   int& last_tab, QWidget* parent)
    : QDialog(parent),
      options_(options),
      platform_(platform),
      last_tab_(last_tab),
      TabStrip1(Named(new QTabWidget(this), "TabStrip1")),
      BtnOk(Named(new QPushButton("OK", this), "BtnOk")),
      BtnEnd(Named(new QPushButton("閉じる", this), "BtnEnd")),
      output_folder_(new OutputFolderBox(controls_, platform)),
      patterns_(new PatternBox(controls_, patterns, platform)),
      font_(new FontBox) {
  Named(this, "LedrixFo");
  setWindowTitle("ｵﾌﾟｼｮﾝ設定");
  AddTabs();
  AddButtons();
  controls_.Show(options);
  font_->Show({options.FontName, options.FontSize});
  output_folder_->ApplyRule();
  Explain(*this);
  ShowWholeTabStrip();
  TabStrip1->setCurrentIndex(std::clamp(last_tab, 0, TabStrip1->count() - 1));
  PutButtonsLast();
  AddTabKeys();
  FocusFirstField();
}

void LedrixFo::AddTabs() {
  const auto add = [this](QWidget* tab, const char* caption) {
    TabStrip1->addTab(Named(tab, "FrmOpt", TabStrip1->count() + 1), caption);
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
  BtnOk->setDefault(true);
  connect(BtnOk, &QPushButton::clicked, this, [this] { AcceptIfValid(); });
  connect(BtnEnd, &QPushButton::clicked, this, &QDialog::reject);

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(BtnOk);
  buttons->addWidget(BtnEnd);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(TabStrip1);
  layout->addLayout(buttons);
}

void LedrixFo::ShowWholeTabStrip() {
  const QSize hint = sizeHint();
  const int frame = hint.width() - TabStrip1->sizeHint().width();
  const QSize wanted(TabStrip1->tabBar()->sizeHint().width() + frame, 0);
  const QSize size = hint.expandedTo(wanted).boundedTo(screen()->availableSize());
  setMinimumWidth(size.width());
  resize(size);
}

void LedrixFo::AcceptIfValid() {
  OptionDraft draft(options_);
  controls_.ReadInto(draft);
  std::optional<OptionKey> failed_key;
  if (const auto refused = draft.Check(&failed_key)) {
    GoTo(controls_.ControlOf(*failed_key));
    platform_.ShowMessage({*refused});
    return;
  }
  if (!output_folder_->ApplyRule()) {  // shows what is assumed before it is accepted
    GoTo(controls_.ControlOf("ContOutDirPath"));
    return;
  }
  draft.Put("ContOutDirPath", output_folder_->Folder());
  draft.Accept(options_);
  options_.FontName = font_->font().name;
  options_.FontSize = static_cast<int16_t>(font_->font().size);
  accept();
}

void LedrixFo::GoTo(QWidget* control) {
  for (int tab = 0; tab < TabStrip1->count(); ++tab) {
    if (TabStrip1->widget(tab)->isAncestorOf(control)) TabStrip1->setCurrentIndex(tab);
  }
  // A field that another option has switched off is where the value can be mended.
  control->setEnabled(true);
  control->setFocus();
}

void LedrixFo::PutButtonsLast() {
  QWidget* last = TabStrip1;
  for (QWidget* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain()) {
    if (TabStrip1->isAncestorOf(widget)) last = widget;
  }
  setTabOrder(last, BtnOk);
  setTabOrder(BtnOk, BtnEnd);
}

void LedrixFo::FocusFirstField() {
  const QWidget* const tab = TabStrip1->currentWidget();
  QWidget* field = nextInFocusChain();
  while (field != this && !(tab->isAncestorOf(field) && field->isEnabled() &&
                            (field->focusPolicy() & Qt::TabFocus) != 0)) {
    field = field->nextInFocusChain();
  }
  if (field != this) field->setFocus(Qt::TabFocusReason);
}

void LedrixFo::AddTabKeys() {
  for (const int step : {-1, 1}) {
    const auto* const key =
        new QShortcut(Qt::CTRL | (step < 0 ? Qt::Key_PageUp : Qt::Key_PageDown), this);
    connect(key, &QShortcut::activated, this, [this, step] {
      const int tabs = TabStrip1->count();
      TabStrip1->setCurrentIndex((TabStrip1->currentIndex() + step + tabs) % tabs);
      FocusFirstField();
    });
  }
}

void LedrixFo::done(int result) {
  last_tab_ = TabStrip1->currentIndex();
  QDialog::done(result);
}

}  // namespace ledrix
