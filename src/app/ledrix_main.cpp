// The desktop program. Its command line is read before any object of the desktop exists: a batch
// compare needs no display.
#include <cstdio>
#include <ctime>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "app/batch_platform.h"
#include "app/signals.h"
#include "jobs/batch_compare.h"
#include "platform/files.h"
#include "platform/program_folder.h"
#include "settings/settings_store.h"

namespace ledrix {
namespace {

constexpr int kTroubleStatus = static_cast<int>(JobEnd::kTrouble);

int RunBatch(const CommandLineArgs& args) {
  OptionRecord options;
  SettingsStore store(SettingsPath());
  // Without a readable store every option has its default; that it is missing is nothing to tell.
  const Status unread = store.Load();
  if (unread && PathExists(SettingsPath())) {
    PrintTrouble(kDesktopProgram, PathToUtf8(SettingsPath()) + ": " + DescribeError(*unread));
  }
  LoadOptions(store, options);
  JobRecord job;
  BatchPlatform platform(job);
  RunFrontEnd front_end;
  RunServices services(options, job, platform, front_end);
  BatchCompare(args, ProgramFolder(), services);
  return static_cast<int>(services.end());
}

int Run(const std::vector<std::string>& arguments) {
  const CommandLineArgs args = ParseCommandLine(arguments);
  if (args.is_batch()) return RunBatch(args);
  PrintTrouble(kDesktopProgram,
               "ウィンドウはまだ有りません。ledrix /old 旧ファイル /new "
               "新ファイル または ledrixc を使用してください");
  return kTroubleStatus;
}

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  tzset();
  ledrix::InstallSignalHandlers();
  try {
    return ledrix::Run(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::bad_alloc&) {
    ledrix::PrintTrouble(ledrix::kDesktopProgram, "メモリが足りません");
  } catch (const std::exception& error) {
    ledrix::PrintTrouble(ledrix::kDesktopProgram, error.what());
  }
  return ledrix::kTroubleStatus;
}
