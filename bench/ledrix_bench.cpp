// Makes the inputs of the benchmarks and times whole commands.
//
//   ledrix_bench make FOLDER LINES
//       writes the files of bench_inputs.h
//   ledrix_bench make-large FOLDER LINES
//   ledrix_bench make-trees FOLDER FILES
//   ledrix_bench make-keys FOLDER RECORDS
//   ledrix_bench time NAME LINES RUNS COMMAND [OTHER]
//       runs a shell command RUNS times after a warm-up, in turn with the other command when there
//       is one, and prints a row of a Markdown table: the name, the command's median seconds, its
//       lines a second, its peak memory in megabytes and, with another command, that one's median
//       seconds and the median of the ratios of each pair of runs. The outputs out.lst, out.ddf and
//       side.txt in the current folder are removed before every command: none pays for emptying
//       what another wrote.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "bench_inputs.h"

namespace ledrix::bench {
namespace {

struct Measure {
  double seconds = 0;
  double megabytes = 0;  // the largest process of the command
};

Measure RunOnce(const char* command) {
  for (const char* output : {"out.lst", "out.ddf", "side.txt"}) unlink(output);
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    execl("/bin/sh", "sh", "-c", command, nullptr);
    _exit(126);
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  // 0 and 1 are the answers of a compare; anything else measured nothing.
  if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) {
    std::fprintf(stderr, "ledrix_bench: this failed: %s\n", command);
    std::exit(2);
  }
  return {elapsed.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

int Time(const char* name, double lines, int runs, const char* command, const char* other) {
  std::vector<double> ours;
  std::vector<double> theirs;
  std::vector<double> ratios;
  double megabytes = 0;
  for (int run = -1; run < runs; ++run) {
    const Measure mine = RunOnce(command);
    const Measure its = other == nullptr ? Measure{} : RunOnce(other);
    if (run < 0) continue;  // the warm-up
    ours.push_back(mine.seconds);
    theirs.push_back(its.seconds);
    ratios.push_back(mine.seconds / its.seconds);
    megabytes = std::max(megabytes, mine.megabytes);
  }
  const double seconds = Median(ours);
  std::printf("| %s | %.3f | %.1f | %.1f |", name, seconds, lines / seconds / 1e6, megabytes);
  if (other == nullptr) {
    std::printf(" | |\n");
  } else {
    std::printf(" %.3f | %.2f |\n", Median(theirs), Median(ratios));
  }
  return 0;
}

}  // namespace
}  // namespace ledrix::bench

int main(int argc, char** argv) {
  if (argc == 4 && std::strcmp(argv[1], "make") == 0) {
    return ledrix::bench::MakeInputs(argv[2], std::atoll(argv[3])) ? 0 : 2;
  }
  if (argc == 4 && std::strcmp(argv[1], "make-large") == 0) {
    return ledrix::bench::MakeLarge(argv[2], std::atoll(argv[3])) ? 0 : 2;
  }
  if (argc == 4 && std::strcmp(argv[1], "make-trees") == 0) {
    return ledrix::bench::MakeTrees(argv[2], std::atoll(argv[3])) ? 0 : 2;
  }
  if (argc == 4 && std::strcmp(argv[1], "make-keys") == 0) {
    return ledrix::bench::MakeKeys(argv[2], std::atoll(argv[3])) ? 0 : 2;
  }
  if ((argc == 6 || argc == 7) && std::strcmp(argv[1], "time") == 0) {
    return ledrix::bench::Time(argv[2], std::atof(argv[3]), std::max(1, std::atoi(argv[4])),
                               argv[5], argc == 7 ? argv[6] : nullptr);
  }
  std::fprintf(stderr,
               "usage: ledrix_bench make|make-large|make-trees|make-keys FOLDER COUNT\n"
               "       ledrix_bench time NAME LINES RUNS COMMAND [OTHER]\n");
  return 2;
}
