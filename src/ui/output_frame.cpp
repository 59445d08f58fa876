#include "ui/output_frame.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>

#include "platform/program_folder.h"
#include "settings/option_draft.h"
#include "ui/choosers.h"
#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {

OutputFrame::OutputFrame(OptionRecord& options, OutputChoices& choices, PlatformServices& platform,
                         std::function<void()> changed, QWidget* parent)
    : QGroupBox(" 出力結果ﾌｧｲﾙ ", parent),
      options_(options),
      choices_(choices),
      platform_(platform),
      changed_(std::move(changed)),
      OptListDir{Named(new QRadioButton("Old Dir"), "OptListDir", 0),
                 Named(new QRadioButton("New Dir"), "OptListDir", 1),
                 Named(new QRadioButton("Else"), "OptListDir", 2)},
      BtnListElse(Named(new QPushButton("..."), "BtnListElse")) {
  Build();
}

void OutputFrame::Build() {
  auto* const row = new QHBoxLayout(this);
  for (size_t i = 0; i < OptListDir.size(); ++i) {
    const int index = static_cast<int>(i);
    connect(OptListDir[i], &QRadioButton::clicked, this, [this, index] { Choose(index); });
    row->addWidget(OptListDir[i]);
  }
  BtnListElse->setToolTip("結果ﾘｽﾄﾌｧｲﾙ出力先の選択");
  BtnListElse->setMaximumWidth(BtnListElse->fontMetrics().horizontalAdvance("......"));
  connect(BtnListElse, &QPushButton::clicked, this, [this] { ChooseElseFolder(); });
  row->addWidget(BtnListElse);
  row->addSpacing(16);

  const auto box = [&](const char* name, const char* caption, const char* hint, bool& flag) {
    auto* const made = Named(new QCheckBox(caption), name);
    made->setToolTip(hint);
    connect(made, &QCheckBox::toggled, this, [this, &flag](bool on) {
      flag = on;
      changed_();
    });
    row->addWidget(made);
  };
  box("OptSbnList", "Sbn List", "差分のみのﾌｧｲﾙを同時に出力します", choices_.OptSbnList);
  box("OptCsvList", "Csv List", "一覧形式のﾌｧｲﾙを同時に出力します", choices_.OptCsvList);
  box("OptMrgSrc", "Mrg Src", "結合したｿｰｽを同時に出力します", choices_.OptMrgSrc);
  row->addStretch();
}

void OutputFrame::ShowChoice(int index) {
  for (QRadioButton* const button : OptListDir) button->setAutoExclusive(false);
  for (size_t i = 0; i < OptListDir.size(); ++i) {
    OptListDir[i]->setChecked(static_cast<int>(i) == index);
  }
  for (QRadioButton* const button : OptListDir) button->setAutoExclusive(true);
  BtnListElse->setEnabled(index == 2);
}

void OutputFrame::ChooseAtStart() {
  const bool wanted = IsOn(options_.ContOutDir);
  if (wanted && !IsFixedFolder(options_.ContOutDirPath)) {
    platform_.ShowMessage({"出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません"});
    options_.ContOutDir = 0;
  }
  const bool fixed = IsOn(options_.ContOutDir);
  choices_.OutputDirMode = fixed ? OutputDirMode::kConstant : OutputDirMode::kOldDir;
  ShowChoice(fixed ? -1 : 0);
}

void OutputFrame::FollowOptions() {
  const bool chosen =
      OptListDir[0]->isChecked() || OptListDir[1]->isChecked() || OptListDir[2]->isChecked();
  if (IsOn(options_.ContOutDir)) {
    choices_.OutputDirMode = OutputDirMode::kConstant;
    ShowChoice(-1);
  } else if (!chosen) {
    choices_.OutputDirMode = OutputDirMode::kOldDir;
    ShowChoice(0);
  }
  changed_();
}

void OutputFrame::Choose(int index) {
  if (IsOn(options_.ContOutDir)) {
    const MessageAnswer answer = platform_.ShowMessage(
        {"出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘは常に固定されています。\r\n"
         "出力先固定オプションを解除しますか？",
         kProgramTitle, MessageIcon::kInformation, MessageButtons::kYesNo, MessageAnswer::kYes});
    if (answer != MessageAnswer::kYes) {
      choices_.OutputDirMode = OutputDirMode::kConstant;
      ShowChoice(-1);
      return;
    }
    options_.ContOutDir = 0;
  }
  choices_.OutputDirMode = static_cast<OutputDirMode>(index);
  ShowChoice(index);
  if (choices_.OutputDirMode == OutputDirMode::kElse) {
    if (choices_.ElseOutputDir.empty()) choices_.ElseOutputDir = ProgramFolder();
    ChooseElseFolder();
  }
  changed_();
}

void OutputFrame::ChooseElseFolder() {
  const auto folder =
      ChooseFolder(this, "結果ﾘｽﾄﾌｧｲﾙ出力先の選択", ToQString(choices_.ElseOutputDir.bytes()));
  if (!folder) return;
  choices_.ElseOutputDir = AddBackslash(ToNativePath(*folder));
  changed_();
}

}  // namespace ledrix
