#include "run/pair_result.h"

namespace ledrix {

const char* PairEndText(PairEnd end) {
  switch (end) {
    case PairEnd::kChanged:
      return "";
    case PairEnd::kUnchanged:
      return "変更なし";
    case PairEnd::kSkipped:
      return "ﾌｧｲﾙ日時ｻｲｽﾞ変更なし(SKIP)";
    case PairEnd::kExcluded:
      return "対象外ﾌｧｲﾙﾀｲﾌﾟ";
    case PairEnd::kFailed:
      return "エラー";
    case PairEnd::kStopped:
      return "中断";
  }
  return "";
}

}  // namespace ledrix
