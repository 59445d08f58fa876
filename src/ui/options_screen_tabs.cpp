#include "ui/options_screen_tabs.h"

#include <QGridLayout>
#include <QVBoxLayout>
#include <array>

#include "ui/named.h"
#include "ui/qt_text.h"
#include "ui/rows.h"

namespace ledrix {

QWidget* MakeScreenTab(OptionControls& controls) {
  auto* const tab = new QWidget;
  auto* const layout = new QVBoxLayout(tab);
  const auto add = [&](const char* name, OptionKey key, const char* caption) {
    layout->addWidget(controls.Flag(name, key, caption));
  };
  add("OptEndPath", "EndPath", "起動時に前回終了したパスから再開する");
  add("OptVerDisp", "VerDisp", "起動時のﾊﾞｰｼﾞｮﾝ情報表示を省略する");
  add("OptStartMsg", "StartMsg", "処理開始時に「はい」「いいえ」の確認をする");

  layout->addWidget(controls.Choice("OptDbClick", "OptDbClick", " ﾌｧｲﾙﾘｽﾄﾎﾞｯｸｽでﾀﾞﾌﾞﾙｸﾘｯｸ ",
                                    {"関連付けAP起動", "対ﾃﾞｨﾚｸﾄﾘ同名ﾌｧｲﾙ一発検索"}));

  add("OptSendToLDX", "SendToLDX", "「送る」ｺﾏﾝﾄﾞはLedrixﾃﾞｨﾚｸﾄﾘ内のSendToを使用する");
  add("OptDELMenuVisible", "DELMenuVisible", "「ﾌｧｲﾙ削除」のﾒﾆｭｰを非表示にする");
  add("OptDirBoxSClick", "DirBoxSClick", "ﾃﾞｨﾚｸﾄﾘﾎﾞｯｸｽはｼﾝｸﾞﾙｸﾘｯｸで開く");
  add("OptDirBoxSynchro", "DirBoxSynchro", "ﾃﾞｨﾚｸﾄﾘﾎﾞｯｸｽはｼﾝｸﾛする (Shift+Clickで逆動作)");
  add("OptOutListClear", "OutListClear", "実行毎に結果一覧ﾘｽﾄﾎﾞｯｸｽをｸﾘｱする");
  layout->addStretch();
  return tab;
}

FontBox::FontBox()
    : QGroupBox("※ ﾃﾞｨﾚｸﾄﾘﾎﾞｯｸｽ、ﾌｧｲﾙﾘｽﾄﾎﾞｯｸｽ、結果一覧ﾘｽﾄﾎﾞｯｸｽ の ﾌｫﾝﾄ設定"),
      OptFontNameSize(Named(new QLabel, "OptFontNameSize")),
      BtnFontNameSize(Named(new QPushButton("ﾌｫﾝﾄの選択..."), "BtnFontNameSize")),
      DefFontNameSize(Named(new QPushButton("初期値"), "DefFontNameSize")) {
  OptFontNameSize->setTextFormat(Qt::PlainText);
  connect(BtnFontNameSize, &QPushButton::clicked, this, [this] {
    if (const auto chosen = ChooseFont(this, font_)) Show(*chosen);
  });
  connect(DefFontNameSize, &QPushButton::clicked, this, [this] {
    const OptionRecord defaults;
    Show({defaults.FontName, defaults.FontSize});
  });
  auto* const layout = new QHBoxLayout(this);
  layout->addWidget(OptFontNameSize, 1);
  layout->addWidget(BtnFontNameSize);
  layout->addWidget(DefFontNameSize);
}

void FontBox::Show(const FontChoice& font) {
  font_ = font;
  OptFontNameSize->setText(ToQString(font.name + " : " + std::to_string(font.size) + " ﾎﾟｲﾝﾄ"));
}

QWidget* MakeFileTypesTab(OptionControls& controls, FontBox* font_box) {
  auto* const tab = new QWidget;
  auto* const types = new QGroupBox("ﾕｰｻﾞ設定 ﾌｧｲﾙﾀｲﾌﾟ");
  auto* const grid = new QGridLayout(types);
  grid->addWidget(new QLabel("ﾀｲﾄﾙ"), 0, 1);
  grid->addWidget(new QLabel("ﾊﾟﾀｰﾝ"), 0, 2);
  std::array<QLineEdit*, 3> titles{};
  std::array<QLineEdit*, 3> patterns{};
  for (int k = 0; k < 3; ++k) {
    const auto i = static_cast<size_t>(k);
    const std::string number = std::to_string(k);
    titles[i] = controls.Text(("TextPatternTtl" + number).c_str(), kTitleKeys[i]);
    patterns[i] = controls.Text(("TextPattern" + number).c_str(), kPatternKeys[i]);
    grid->addWidget(new QLabel(QString::number(k + 1)), k + 1, 0);
    grid->addWidget(titles[i], k + 1, 1);
    grid->addWidget(patterns[i], k + 1, 2);
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 3);

  auto* const defaults_button = Named(new QPushButton("初期値"), "BtnDeflt");
  QObject::connect(defaults_button, &QPushButton::clicked, tab, [titles, patterns] {
    const OptionRecord defaults;
    for (size_t i = 0; i < titles.size(); ++i) {
      titles[i]->setText(ToQString(defaults.FPatternTtl[i]));
      patterns[i]->setText(ToQString(defaults.FPattern[i]));
    }
  });
  auto* const foot = new QHBoxLayout;
  foot->addWidget(new QLabel("*.xxx 形式で入力　（複数は ; で区切る）"), 1);
  foot->addWidget(defaults_button);
  grid->addLayout(foot, 4, 1, 1, 2);

  auto* const layout = new QVBoxLayout(tab);
  layout->addWidget(types);
  layout->addWidget(font_box);
  layout->addStretch();
  return tab;
}

}  // namespace ledrix
