#include "ui/fonts.h"

#include <QFont>
#include <QStringList>

namespace ledrix {

void SubstituteFonts() {
  const QStringList proportional = {"IPAPGothic", "Noto Sans CJK JP", "VL PGothic"};
  const QStringList fixed = {"IPAGothic", "Noto Sans Mono CJK JP", "VL Gothic"};
  for (const char* const name :
       {"ＭＳ Ｐゴシック", "MS PGothic", "MS UI Gothic", "Meiryo", "メイリオ"}) {
    QFont::insertSubstitutions(name, proportional);
  }
  for (const char* const name : {"ＭＳ ゴシック", "MS Gothic"}) {
    QFont::insertSubstitutions(name, fixed);
  }
  const QStringList mincho = {"IPAPMincho", "Noto Serif CJK JP"};
  for (const char* const name : {"ＭＳ Ｐ明朝", "ＭＳ 明朝", "MS PMincho", "MS Mincho"}) {
    QFont::insertSubstitutions(name, mincho);
  }
}

}  // namespace ledrix
