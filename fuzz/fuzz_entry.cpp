// Where libFuzzer enters. The first argument, or $LEDRIX_FUZZ_TARGET, names the target.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

#include "support.h"
#include "targets.h"

namespace ledrix::fuzz {
namespace {

const Target* chosen = nullptr;

bool Choose(const char* name) {
  chosen = std::ranges::find(kTargets, std::string_view(name), &Target::name);
  if (chosen == std::end(kTargets)) return false;
  setenv("LEDRIX_FUZZ_TARGET", name, 1);  // for the processes that libFuzzer starts
  return true;
}

}  // namespace
}  // namespace ledrix::fuzz

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  using namespace ledrix::fuzz;
  const char* const name = std::getenv("LEDRIX_FUZZ_TARGET");
  if (*argc > 1 && Choose((*argv)[1])) {
    (*argv)[1] = (*argv)[0];
    ++*argv;
    --*argc;
  } else if (name == nullptr || !Choose(name)) {
    for (const Target& target : kTargets) std::puts(std::string(target.name).c_str());
    std::exit(2);
  }
  WorkFolder();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ledrix::fuzz::chosen->run({reinterpret_cast<const char*>(data), size});
  return 0;
}
