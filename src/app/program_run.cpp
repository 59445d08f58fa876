#include "app/program_run.h"

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <new>
#include <utility>

#include "app/signals.h"

namespace ledrix {
namespace {

constexpr const char* kNoMemory = "メモリが足りません";

// A stream that was closed fails when it is written to, as it would have without this.
void OpenStandardStreams() {
  int descriptor = 0;
  do {
    descriptor = open("/dev/null", O_RDONLY);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor < 0) _exit(kTroubleStatus);
  close(descriptor);
}

// Memory that is given back when there is no more: what ends the work needs some.
void*& Reserve() {
  constexpr size_t kReserve = size_t{1} << 16;  // bytes
  static void* reserve = std::malloc(kReserve);
  return reserve;
}

[[noreturn]] void OnNoMemory() {
  std::free(std::exchange(Reserve(), nullptr));
  throw std::bad_alloc();
}

// Where no failure may pass, and where there is no memory for the failure itself, a lack of memory
// ends the program here.
[[noreturn]] void OnTerminate() {
  bool lacks_memory = Reserve() == nullptr;
  if (std::current_exception() != nullptr) {
    try {
      throw;
    } catch (const std::bad_alloc&) {
      lacks_memory = true;
    } catch (...) {
      lacks_memory = false;
    }
  }
  if (!lacks_memory) std::abort();
  WriteTrouble(program_invocation_short_name, kNoMemory);
  _exit(kTroubleStatus);
}

}  // namespace

void WriteTrouble(const char* name, const char* text) {
  iovec parts[4];
  size_t count = 0;
  for (const char* part : {name, ": ", text, "\n"}) {
    parts[count++] = {const_cast<char*>(part), std::strlen(part)};
  }
  static_cast<void>(writev(STDERR_FILENO, parts, static_cast<int>(count)) > 0);
}

int RunProgram(const char* name, int (*run)(int, char**), int argc, char** argv) {
  OpenStandardStreams();
  Reserve();
  std::set_new_handler(OnNoMemory);
  std::set_terminate(OnTerminate);
  errno = 0;
  tzset();
  if (errno == ENOMEM) {  // every time would be shown as that of another zone
    WriteTrouble(name, kNoMemory);
    return kTroubleStatus;
  }
  InstallSignalHandlers();
  try {
    return run(argc, argv);
  } catch (const std::bad_alloc&) {
    WriteTrouble(name, kNoMemory);
  } catch (const std::exception& error) {
    WriteTrouble(name, error.what());
  }
  return kTroubleStatus;
}

}  // namespace ledrix
