// Where a fuzzer enters, libFuzzer or the replay alike. The first argument, or $LEDRIX_FUZZ_TARGET,
// names the target; the folder behind it, if there is one, is given the target's starting inputs.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "support.h"
#include "targets.h"

namespace ledrix::fuzz {
namespace {

const Target* chosen = nullptr;

bool Choose(const char* name) {
  const auto found = std::ranges::find(Targets(), std::string_view(name), &Target::name);
  if (found == Targets().end()) return false;
  chosen = &*found;
  setenv("LEDRIX_FUZZ_TARGET", name, 1);  // for the processes that libFuzzer starts
  return true;
}

[[noreturn]] void TellTargets() {
  for (const Target& target : Targets()) std::puts(std::string(target.name).c_str());
  std::exit(2);
}

void GiveStarts(const NativePath& folder) {
  for (size_t i = 0; i < chosen->starts.size(); ++i) {
    WriteFile(AddBackslash(folder) + ("start-" + std::to_string(i)), chosen->starts[i]);
  }
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
    TellTargets();
  }
  WorkFolder();
  for (int i = 1; i < *argc; ++i) {
    const ledrix::NativePath path((*argv)[i]);
    if (!ledrix::IsFolder(path)) continue;
    GiveStarts(path);
    break;
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ledrix::fuzz::chosen->run({reinterpret_cast<const char*>(data), size});
  return 0;
}
