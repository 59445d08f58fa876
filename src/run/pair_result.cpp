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

std::string PairTally::Text() const {
  constexpr const char* kNames[] = {"変更あり", "変更なし", "SKIP", "対象外", "エラー", "中断"};
  std::string text;
  int64_t left = pairs_;
  const auto add = [&text](const char* name, int64_t count) {
    if (count > 0) text += std::string(" ") + name + " " + std::to_string(count);
  };
  for (size_t end = 0; end < ends_.size(); ++end) {
    add(kNames[end], ends_[end]);
    left -= ends_[end];
  }
  add("未処理", left);
  return "全 " + std::to_string(pairs_) + " 組:" + text;
}

}  // namespace ledrix
