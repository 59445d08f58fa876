#include "ui/main_menu.h"

#include <QMenuBar>

#include "ui/named.h"

namespace ledrix {
namespace {

void Entry(QMenu& menu, const char* name, const char* caption, std::function<void()> command,
           const QList<QKeySequence>& keys = {}) {
  QAction* const action = Named(menu.addAction(caption), name);
  QObject::connect(action, &QAction::triggered, &menu,
                   [command = std::move(command)] { command(); });
  action->setShortcuts(keys);
}

}  // namespace

MainMenu::MainMenu(QMenuBar& bar, QWidget& window, OptionRecord& options, PatternSlots& patterns,
                   PlatformServices& platform, bool writes_evidence, const Commands& commands)
    : operation_(*bar.addMenu("操作(&M)")),
      option_(*bar.addMenu("ｵﾌﾟｼｮﾝ(&O)")),
      help_(*bar.addMenu("ﾍﾙﾌﾟ(&H)")),
      MenuMatchGrp(Named(new QMenu("一致条件(&M)", &option_), "MenuMatchGrp")),
      MenuPatternGrp(Named(new QMenu("条件ﾊﾟﾀｰﾝ(&P)", &option_), "MenuPatternGrp")),
      MenuCharsetGrp(Named(new QMenu("文字ｺｰﾄﾞ", &option_), "MenuCharsetGrp")),
      match_(*MenuMatchGrp, options),
      pattern_(*MenuPatternGrp, options, patterns,
               [this, changed = commands.conditions_changed] {
                 match_.Synchronise();
                 changed();
               }),
      charset_(*MenuCharsetGrp, options, platform, &window) {
  FillOperation(writes_evidence, commands);
  FillOption(commands);
  FillHelp(commands);
}

void MainMenu::FillOperation(bool writes_evidence, const Commands& commands) {
  Entry(operation_, "MenuTextCompStart", "ﾃｷｽﾄｺﾝﾍﾟｱ開始(&S)", commands.compare_texts,
        {Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter});
  QMenu& ranges = *Named(operation_.addMenu("ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ開始(&D)"), "MenuDirComp");
  const auto compare = [&commands](CompareRange range) {
    return [compare = commands.compare_directories, range] { compare(range); };
  };
  Entry(ranges, "MenuDirCompFullPath", "フルパス(&F)", compare(CompareRange::kFullPath));
  Entry(ranges, "MenuDirCompCurentPath", "カレントパス(&C)", compare(CompareRange::kCurrentPath),
        {Qt::CTRL | Qt::Key_D});
  Entry(ranges, "MenuDirCompNoPath", "パスなし(&N)", compare(CompareRange::kNoPath));
  Entry(operation_, "MenuDirDatEdit", "ﾃﾞｨﾚｸﾄﾘ情報作成(&E)", commands.make_directory_information);
  operation_.addSeparator();
  QAction* const evidence = Named(operation_.addAction("証跡を出力"), "MenuEvidence");
  evidence->setCheckable(true);
  evidence->setChecked(writes_evidence);
  QObject::connect(evidence, &QAction::toggled, &operation_,
                   [command = commands.write_evidence](bool on) { command(on); });
  Entry(operation_, "MenuVerify", "証跡の検証", commands.verify_evidence);
  operation_.addSeparator();
  Entry(operation_, "MenuEnd", "Ledrix の終了(&X)", commands.end);
}

void MainMenu::FillOption(const Commands& commands) {
  Entry(option_, "MenuListClear", "結果一覧ｸﾘｱ(&C)", commands.clear_results);
  option_.addMenu(MenuMatchGrp);
  option_.addMenu(MenuPatternGrp);
  option_.addMenu(MenuCharsetGrp);
  Entry(option_, "MenuRefresh", "最新の情報に更新(&R)", commands.refresh,
        {Qt::Key_F5, Qt::CTRL | Qt::Key_R});
  option_.addSeparator();
  Entry(option_, "MenuOption", "ｵﾌﾟｼｮﾝ設定(&O)", commands.edit_options);
}

void MainMenu::FillHelp(const Commands& commands) {
  Entry(help_, "MenuHelpContents", "目次(&C)", commands.show_help, {Qt::Key_F1});
  Entry(help_, "menuReadme", "Readme表示", commands.show_readme);
  help_.addSeparator();
  Entry(help_, "MenuHelpVersion", "ﾊﾞｰｼﾞｮﾝ情報(&A)", commands.show_version);
  Entry(help_, "MenuRegClear", "ｱﾝｲﾝｽﾄｰﾙ(ﾚｼﾞｽﾄﾘｸﾘｱ)", commands.clear_settings);
}

void MainMenu::FillConditions() {
  FollowOptions();
  charset_.BuildCharsetMenu();
}

void MainMenu::FollowOptions() {
  match_.Synchronise();
  pattern_.Rebuild();
}

}  // namespace ledrix
