// The desktop program. Its command line is read before any object of the desktop exists: a batch
// compare needs no display.
#include <cstdio>
#include <ctime>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "app/batch_platform.h"
#include "app/display.h"
#include "app/signals.h"
#include "app/windows.h"
#include "jobs/batch_compare.h"
#include "platform/program_folder.h"
#include "settings/settings_store.h"

namespace ledrix {
namespace {

constexpr int kTroubleStatus = static_cast<int>(JobEnd::kTrouble);

int RunBatch(const CommandLineArgs& args) {
  OptionRecord options;
  LoadOptions(LoadUserSettings(), options);
  JobRecord job;
  BatchPlatform platform(job);
  RunFrontEnd front_end;
  RunServices services(options, job, platform, front_end);
  BatchCompare(args, ProgramFolder(), services);
  return static_cast<int>(services.end());
}

int Run(int argc, char** argv) {
  const CommandLineArgs args = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
  if (args.is_batch()) return RunBatch(args);
  if (!DisplayAnswers()) {
    PrintTrouble(kDesktopProgram,
                 "画面が使えません。ledrix /old 旧ファイル /new "
                 "新ファイル または ledrixc を使用してください");
    return kTroubleStatus;
  }
  return RunWindows(args, argc, argv);
}

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  tzset();
  ledrix::InstallSignalHandlers();
  try {
    return ledrix::Run(argc, argv);
  } catch (const std::bad_alloc&) {
    ledrix::PrintTrouble(ledrix::kDesktopProgram, "メモリが足りません");
  } catch (const std::exception& error) {
    ledrix::PrintTrouble(ledrix::kDesktopProgram, error.what());
  }
  return ledrix::kTroubleStatus;
}
