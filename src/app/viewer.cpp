#include "app/viewer.h"

#include <unistd.h>

#include <QGuiApplication>
#include <cstdio>
#include <optional>

#include "app/batch_platform.h"
#include "app/program_run.h"
#include "app/signals.h"
#include "app/window_application.h"
#include "platform/output_guard.h"
#include "platform/program_folder.h"
#include "settings/settings_store.h"
#include "ui/desktop_actions.h"
#include "ui/listing_paper.h"
#include "ui/listing_window.h"
#include "ui/program_commands.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

constexpr const char* kPdfUsage =
    "ledrix --pdf LISTING... --out FILE|FOLDER [--paper A4|B4|A3] [--portrait] としてください";
constexpr size_t kBytesPerLook = size_t{1} << 24;

int Tell(const std::string& text) {
  PrintTrouble(kDesktopProgram, text);
  return kTroubleStatus;
}

struct PdfArguments {
  std::vector<NativePath> listings;
  std::string out;
  std::string paper = "A4";
  bool portrait = false;
};

// Nothing when they cannot be understood.
std::optional<PdfArguments> ReadPdfArguments(const std::vector<std::string>& arguments) {
  PdfArguments read;
  bool has_options = true;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool is_option = has_options && argument.starts_with("--");
    if (!is_option) {
      read.listings.push_back(MakeAbsolute(NativePath(argument)));
    } else if (argument == "--") {
      has_options = false;
    } else if (argument == "--portrait") {
      read.portrait = true;
    } else if ((argument == "--out" || argument == "--paper") && i + 1 < arguments.size()) {
      (argument == "--out" ? read.out : read.paper) = arguments[++i];
    } else {
      return std::nullopt;
    }
  }
  if (read.listings.empty() || read.out.empty()) return std::nullopt;
  return read;
}

// Where the PDF files go, one for each listing.
std::vector<NativePath> PdfPaths(const PdfArguments& arguments, bool is_folder) {
  const NativePath out = MakeAbsolute(NativePath(arguments.out));
  if (!is_folder) return {out};
  std::vector<NativePath> paths;
  for (const NativePath& listing : arguments.listings)
    paths.push_back(AddBackslash(out) + (FileNameOf(listing) + ".pdf"));
  return paths;
}

// Writes one PDF file; returns why it could not be, or what it lacks, in one line.
std::optional<std::string> MakePdf(const NativePath& listing, const NativePath& path,
                                   const QPageLayout& layout) {
  Result<ViewedFile> file = ViewedFile::Open(listing);
  if (!file.ok()) return PathToUtf8(listing) + ": " + DescribeError(file.error());
  while (!IsStopSignalled() && file.value().ReadOn(kBytesPerLook)) {
  }
  if (!file.value().failure().ok())
    return PathToUtf8(listing) + ": " + DescribeError(file.value().failure().error());
  const Status status =
      WritePdf(file.value(), FileNameOf(listing), path, layout, [] { return !IsStopSignalled(); });
  if (!status.ok()) return PathToUtf8(path) + ": " + DescribeError(status.error());
  if (!file.value().has_cut_lines()) return std::nullopt;
  return PathToUtf8(listing) + ": 長すぎる行は先頭の 65,536 バイトだけを出力しました";
}

}  // namespace

int RunViewer(const std::vector<std::string>& files, int& argc, char** argv) {
  WindowApplication application(argc, argv);
  SettingsStore store(SettingsPath());
  store.Load().Ignore();
  WindowPlatform platform;
  DesktopActions actions;
  bool is_shown = false;
  for (const std::string& name : files) {
    const NativePath path = MakeAbsolute(NativePath(name));
    is_shown = ListingWindow::Open({platform, actions, store}, path) != nullptr || is_shown;
  }
  if (!is_shown) return kTroubleStatus;
  const int status = application.Run();
  if (store.unread().ok()) SaveSettings(store, platform);
  return status;
}

int RunPdf(const std::vector<std::string>& arguments, int& argc, char** argv) {
  const std::optional<PdfArguments> read = ReadPdfArguments(arguments);
  if (!read) return Tell(kPdfUsage);
  const std::optional<QPageLayout> layout = MakePageLayout(read->paper, read->portrait);
  if (!layout) return Tell("用紙は A4、B4、A3 のいずれかです: " + read->paper);
  const bool is_folder = read->out.back() == '/' || IsFolder(MakeAbsolute(NativePath(read->out)));
  if (!is_folder && read->listings.size() > 1)
    return Tell("二つ以上の結果ﾘｽﾄの出力先はフォルダでなければなりません: " + read->out);
  if (const auto refused = RefuseMissingFolder(read->out)) return Tell(*refused);
  const std::vector<NativePath> paths = PdfPaths(*read, is_folder);
  // Nothing is opened before every output may be written.
  for (size_t i = 0; i < paths.size(); ++i) {
    const std::vector<NativePath> earlier(paths.begin(),
                                          paths.begin() + static_cast<std::ptrdiff_t>(i));
    const Status refused = RefuseOutput(paths[i], read->listings, earlier);
    if (!refused.ok()) return Tell(PathToUtf8(paths[i]) + ": " + DescribeError(refused.error()));
  }
  // Fonts need an application object, and the platform without a screen serves as well.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // What that platform misses of a desktop is no trouble of a nightly job.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  const QGuiApplication application(argc, argv);
  int status = 0;
  for (size_t i = 0; i < paths.size() && !IsStopSignalled(); ++i) {
    const std::optional<std::string> trouble = MakePdf(read->listings[i], paths[i], *layout);
    if (trouble) status = Tell(*trouble);
  }
  return IsStopSignalled() ? kTroubleStatus : status;
}

}  // namespace ledrix
