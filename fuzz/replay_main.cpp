// Runs every target without libFuzzer: its finds, its seeds, and as many inputs made of these by a
// generator that is always the same.
// Usage: ledrix_fuzz FOLDER-OF-FINDS-AND-SEEDS [TARGET [TIMES-AS-MANY]]
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "support.h"
#include "targets.h"

// There when the program is built with sanitizers.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace ledrix::fuzz {
namespace {

std::string current;       // the input that runs
std::string current_path;  // where it is kept when it ends the program

void KeepCurrent() {
  const int file = open(current_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (write(file, current.data(), current.size()) < 0) return;
  (void)std::fprintf(stderr, "the input is in %s\n", current_path.c_str());
}

void KeepAtSignal(int signal) {
  KeepCurrent();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

class Mutator {
 public:
  explicit Mutator(std::vector<std::string> inputs) : inputs_(std::move(inputs)) {}

  std::string Next() {
    std::string input = Any();
    for (size_t changes = 1 + Below(4); changes > 0; --changes) Change(input);
    return input;
  }

 private:
  size_t Below(size_t bound) { return bound == 0 ? 0 : random_() % bound; }
  const std::string& Any() { return inputs_[Below(inputs_.size())]; }

  void Change(std::string& input) {
    using namespace std::string_view_literals;
    constexpr std::string_view kTelling = "\0\x1C\n\r\x1B\xFF\x81 \t\"'\\[]=,;*?/%9-"sv;
    const size_t at = Below(input.size() + 1);
    const size_t size = Below(std::min<size_t>(input.size() - at, 16) + 1);
    switch (Below(6)) {
      case 0:
        input.insert(at, 1, static_cast<char>(random_()));
        break;
      case 1:
        input.insert(at, 1, kTelling[Below(kTelling.size())]);
        break;
      case 2:
        if (at < input.size()) input[at] = static_cast<char>(input[at] ^ 1 << Below(8));
        break;
      case 3:
        input.erase(at, size);
        break;
      case 4:
        input.insert(Below(input.size() + 1), std::string(input, at, size));
        break;
      default: {
        const std::string& other = Any();
        input = input.substr(0, at) + other.substr(Below(other.size() + 1));
      }
    }
  }

  std::vector<std::string> inputs_;
  std::mt19937_64 random_{20240309};
};

std::vector<std::string> InputsOf(const std::string& target, const std::string& folder) {
  std::vector<std::string> inputs;
  std::error_code none;  // a target may have no finds
  for (const char* kind : {"finds", "seeds"}) {
    const std::filesystem::path place = std::filesystem::path(folder) / kind / target;
    for (const auto& entry : std::filesystem::directory_iterator(place, none)) {
      inputs.push_back(ReadFile(NativePath(entry.path().string())));
    }
  }
  std::ranges::sort(inputs);
  return inputs;
}

void Replay(const Target& target, const std::string& folder, int runs) {
  const std::string name(target.name);
  current_path = "find-" + name;
  const std::vector<std::string> inputs = InputsOf(name, folder);
  const auto run = [&target](std::string input) {
    current = std::move(input);
    target.run(current);
  };
  for (const std::string& input : inputs) run(input);
  Mutator mutator(inputs);
  for (int i = 0; i < runs; ++i) run(mutator.Next());
  std::printf("%s: %zu inputs, %d made of them\n", name.c_str(), inputs.size(), runs);
}

}  // namespace
}  // namespace ledrix::fuzz

int main(int argc, char** argv) {
  using namespace ledrix::fuzz;
  if (argc < 2) return 2;
  const std::string_view only = argc > 2 ? argv[2] : "";
  const int times = argc > 3 ? std::atoi(argv[3]) : 1;
  if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(KeepCurrent);
  std::signal(SIGABRT, KeepAtSignal);
  if (__sanitizer_set_death_callback == nullptr) std::signal(SIGSEGV, KeepAtSignal);
  int replayed = 0;
  for (const Target& target : kTargets) {
    if (!only.empty() && target.name != only) continue;
    Replay(target, argv[1], target.tries * times);
    ++replayed;
  }
  return replayed > 0 ? 0 : 2;
}
