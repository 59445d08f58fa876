// Judges many short texts: reads the size of each, a line feed and its bytes on standard input, and
// prints for each the verdict on all of its bytes and that of the full-auto mode.
#include <cstdio>
#include <string>

#include "charset/refute_judgement.h"
#include "charset/sure_judgement.h"

int main() {
  using namespace ledrix::modJudgeCode;
  size_t size = 0;
  std::string text;
  while (std::scanf("%zu%*1[\n]", &size) == 1) {
    text.resize(size);
    if (std::fread(text.data(), 1, size, stdin) != size) return 2;
    SureJudge judge;
    judge.Add(text);
    judge.Finish();
    const SureVerdict verdict = judge.Verdict();
    std::printf("%s\t%s\t%s\n", ToText(verdict.code), ToText(verdict.found_by),
                std::string(ToText(FollowedVerdict(text))).c_str());
  }
}
