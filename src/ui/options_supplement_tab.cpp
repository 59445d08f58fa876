#include "ui/options_supplement_tab.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "platform/program_folder.h"
#include "ui/choosers.h"
#include "ui/named.h"
#include "ui/qt_text.h"
#include "ui/rows.h"

namespace ledrix {

OutputFolderBox::OutputFolderBox(OptionControls& controls, PlatformServices& platform)
    : QGroupBox("結果ﾌｧｲﾙ出力先"),
      controls_(controls),
      platform_(platform),
      OptContOutDir(controls.Flag("OptContOutDir", "ContOutDir",
                                  "出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘを常に固定する（最優先）")),
      OptContOutDirPath(controls.Text("OptContOutDirPath", "ContOutDirPath")),
      BtnContOutDirPath(Named(new QPushButton("参照..."), "BtnContOutDirPath")) {
  connect(OptContOutDir, &QCheckBox::clicked, this, [this] { ApplyRule(); });
  connect(BtnContOutDirPath, &QPushButton::clicked, this, [this] { Choose(); });
  auto* const path_row = new QHBoxLayout;
  path_row->addWidget(OptContOutDirPath, 1);
  path_row->addWidget(BtnContOutDirPath);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(OptContOutDir);
  layout->addLayout(path_row);
}

bool OutputFolderBox::IsMissing() const {
  return !IsFixedFolder(controls_.Value("ContOutDirPath"));
}

bool OutputFolderBox::ApplyRule() {
  const bool wanted = OptContOutDir->isChecked();
  BtnContOutDirPath->setEnabled(wanted);
  if (!wanted || !IsMissing()) return true;
  const std::string own = PathToUtf8(StripBackslash(ProgramFolder()));
  platform_.ShowMessage({"出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません" + own + " を仮定します"});
  OptContOutDirPath->setText(ToQString(own));
  return false;
}

std::string OutputFolderBox::Folder() const {
  std::string folder = controls_.Value("ContOutDirPath");
  return OptContOutDir->isChecked() ? MakeAbsolute(NativePath(folder)).bytes() : folder;
}

void OutputFolderBox::Choose() {
  const auto folder = ChooseFolder(this, "結果ﾘｽﾄﾌｧｲﾙ出力先の選択", OptContOutDirPath->text());
  if (folder) OptContOutDirPath->setText(*folder);
}

QWidget* MakeSupplementTab(OptionControls& controls, OutputFolderBox* folder_box,
                           PatternBox* pattern_box) {
  auto* const tab = new QWidget;
  QLineEdit* const types = controls.Text("TextNoPattern", "NoPattern");
  auto* const defaults_button = Named(new QPushButton("初期値"), "BtnDefltNo");
  QObject::connect(defaults_button, &QPushButton::clicked, types,
                   [types] { types->setText(ToQString(OptionRecord().NoPattern)); });

  auto* const skipped = new QGroupBox("処理対象外(SKIP)条件");
  auto* const skipped_layout = new QVBoxLayout(skipped);
  skipped_layout->addWidget(controls.Flag("OptNoCngNoOut", "OptNoCngNoOut",
                                          "ﾌｧｲﾙ日時ｻｲｽﾞが同じ場合、変更なし(SKIP)とする"));
  auto* const types_row = new QHBoxLayout;
  types_row->addWidget(new QLabel("ﾌｧｲﾙﾀｲﾌﾟ"));
  types_row->addWidget(types, 1);
  types_row->addWidget(defaults_button);
  skipped_layout->addLayout(types_row);

  auto* const layout = new QVBoxLayout(tab);
  layout->addWidget(folder_box);
  layout->addWidget(skipped);
  layout->addWidget(pattern_box);
  layout->addStretch();
  return tab;
}

}  // namespace ledrix
