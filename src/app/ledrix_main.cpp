// The desktop program. Its command line is read before any object of the desktop exists: a batch
// compare needs no display.
#include <cstdio>
#include <string>
#include <vector>

#include "app/batch_platform.h"
#include "app/console_help.h"
#include "app/display.h"
#include "app/program_run.h"
#include "app/viewer.h"
#include "app/windows.h"
#include "jobs/batch_compare.h"
#include "platform/program_folder.h"
#include "platform/version.h"
#include "settings/settings_store.h"

namespace ledrix {
namespace {

void TellBatchOfUnreadSettings(const SettingsStore& store, PlatformServices& platform) {
  LogUnreadSettings(ProgramFolder(), store.path(), platform);
  platform.ShowMessage({"設定ファイルを読めません\n" + PathToUtf8(store.path()) + "\n" +
                        DescribeError(store.unread().error()) + "\n" + kWithoutSettings});
}

int RunBatch(const CommandLineArgs& args) {
  SettingsStore store(SettingsPath());
  store.Load().Ignore();
  JobRecord job;
  BatchPlatform platform(job);
  if (!store.unread().ok()) {
    TellBatchOfUnreadSettings(store, platform);
    return kTroubleStatus;
  }
  OptionRecord options;
  LoadOptions(store, options);
  RunFrontEnd front_end;
  RunServices services(options, job, platform, front_end);
  BatchCompare(args, ProgramFolder(), services);
  return static_cast<int>(services.end());
}

int Print(const std::string& text) {
  return std::printf("%s\n", text.c_str()) > 0 && std::fflush(stdout) == 0 ? 0 : kTroubleStatus;
}

int RunView(int argc, char** argv) {
  const std::vector<std::string> files(argv + 2, argv + argc);
  if (files.empty()) {
    PrintTrouble(kDesktopProgram, "ledrix --view FILE としてください");
    return kTroubleStatus;
  }
  if (!DisplayAnswers()) {
    PrintTrouble(kDesktopProgram, "画面が使えません。ledrixc view を使用してください");
    return kTroubleStatus;
  }
  return RunViewer(files, argc, argv);
}

int Run(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (command == "--help" || command == "-h") return Print(ProgramHelpText());
  if (command == "--version") return Print(std::string("ledrix ") + ProgramVersion());
  if (command == "--view") return RunView(argc, argv);
  if (command == "--pdf")
    return RunPdf(std::vector<std::string>(argv + 2, argv + argc), argc, argv);
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
  return ledrix::RunProgram(ledrix::kDesktopProgram, ledrix::Run, argc, argv);
}
