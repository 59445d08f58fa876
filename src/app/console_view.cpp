#include "app/console_view.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "app/console_front_end.h"
#include "app/console_platform.h"
#include "app/program_run.h"
#include "app/signals.h"
#include "app/terminal_listing.h"
#include "platform/pager.h"
#include "text/iconv_encoder.h"

namespace ledrix {
namespace {

constexpr size_t kMostShownOfLine = size_t{1} << 20;  // bytes
constexpr size_t kBytesPerLook = size_t{1} << 22;

bool WantsColors(const std::string& choice) {
  if (choice != "auto") return choice == "always";
  const char* const no_color = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  const bool is_refused = no_color != nullptr && *no_color != '\0';
  return !is_refused && isatty(STDOUT_FILENO) == 1 && terminal != nullptr &&
         std::string_view(terminal) != "dumb";
}

TerminalLook LookOf(const ViewArguments& arguments) {
  TerminalLook look;
  look.colors = WantsColors(arguments.color);
  if (!arguments.side.empty()) look.side = arguments.side == "old" ? Side::kOld : Side::kNew;
  if (arguments.first_block > 0) look.blocks = {arguments.first_block, arguments.last_block};
  return look;
}

// A file that is to be shown, read whole.
struct OpenedView {
  std::string name;
  ViewedFile file;
  int64_t maybe_cut = 0;  // lines of the one side that is shown
};

int Tell(const std::string& name, const std::string& what) {
  PrintTrouble(kConsoleProgram, name + ": " + what);
  return kTroubleStatus;
}

Result<ViewedFile> OpenView(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (info.ok() && info.value().kind == FileKind::kRegular)
    return ViewedFile::Open(path, kMostShownOfLine);
  Result<InputFile> source = InputFile::Open(path);
  if (!source.ok()) return source.error();
  return ViewedFile::OpenCopy(std::move(source.value()), path, kMostShownOfLine);
}

// As far as it can be read, or until a signal asks to stop.
void ReadWhole(ViewedFile& file) {
  while (!IsStopSignalled() && file.ReadOn(kBytesPerLook)) {
  }
}

// True when the terminal cannot show all of it at once.
bool NeedsPager(std::vector<OpenedView>& views, const TerminalLook& look) {
  const std::optional<TerminalSize> terminal = OutputTerminal();
  if (!terminal) return false;
  int rows = 0;
  std::string line;
  for (OpenedView& view : views) {
    TerminalListing listing(view.file, look);
    while (listing.Next(line)) {
      const bool is_wide = listing.width() > static_cast<size_t>(terminal->columns);
      if (is_wide || ++rows >= terminal->rows) return true;
    }
  }
  return false;
}

// False when nobody reads on.
bool WriteLine(IconvEncoder* encoder, const std::string& line) {
  const std::string text = (encoder == nullptr ? line : encoder->Encode(line)) + "\n";
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
}

void Write(std::vector<OpenedView>& views, const TerminalLook& look) {
  const std::string charset = LocaleCharset();
  const auto encoder = charset.empty() ? nullptr : IconvEncoder::Open(charset);
  std::string line;
  for (OpenedView& view : views) {
    if (&view != &views.front() && !WriteLine(encoder.get(), "")) return;
    TerminalListing listing(view.file, look);
    while (!IsStopSignalled() && listing.Next(line)) {
      if (!WriteLine(encoder.get(), line)) return;
    }
    view.maybe_cut = listing.maybe_cut();
  }
}

int Show(std::vector<OpenedView>& views, const TerminalLook& look) {
  {
    std::optional<Pager> pager;
    if (NeedsPager(views, look)) pager.emplace();
    Write(views, look);
    // Who reads only the first lines wants no more of them.
    const bool is_left = (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) && errno == EPIPE;
    if (is_left && std::freopen("/dev/null", "w", stdout) == nullptr) return kTroubleStatus;
  }
  int status = IsStopSignalled() ? kTroubleStatus : 0;
  for (const OpenedView& view : views) {
    if (!view.file.failure().ok())
      status = Tell(view.name, DescribeError(view.file.failure().error()));
    if (view.file.has_cut_lines())
      status = Tell(view.name, "長すぎる行は先頭の 1,048,576 バイトだけを表示しました");
    // No trouble, but what a listing does not hold.
    if (look.side == Side::kOld && view.file.shape()->style.vertical)
      Tell(view.name, "縦交互の結果ﾘｽﾄでは、一致する行は新側のもの（行番号も新側）です");
    if (view.maybe_cut > 0) {
      Tell(view.name, std::to_string(view.maybe_cut) +
                          " 行は出力幅いっぱいまであり、続きが結果ﾘｽﾄにない場合があります");
    }
  }
  return status;
}

}  // namespace

int RunViewCommand(const ViewArguments& arguments) {
  const bool is_input = arguments.path == "-";
  const NativePath path = MakeAbsolute(NativePath(is_input ? "/dev/stdin" : arguments.path));
  const std::string name = PathToUtf8(NativePath(arguments.path));
  Result<ViewedFile> file = OpenView(path);
  if (!file.ok()) return Tell(name, DescribeError(file.error()));
  std::vector<OpenedView> views;
  views.push_back({name, std::move(file.value()), 0});
  ViewedFile& view = views.front().file;
  ReadWhole(view);
  const TerminalLook look = LookOf(arguments);
  if (view.shape() == nullptr && (look.side || look.blocks)) {
    return Tell(name, "テキスト比較の結果ﾘｽﾄではありません");
  }
  if (!TerminalListing(view, look).HasBlocks()) {
    return Tell(
        name, "指定されたブロックはありません（1～" + std::to_string(view.blocks().size()) + "）");
  }
  return Show(views, look);
}

int ShowListings(const std::vector<NativePath>& files, const ViewArguments& arguments) {
  std::vector<OpenedView> views;
  for (const NativePath& path : files) {
    Result<ViewedFile> file = ViewedFile::Open(path, kMostShownOfLine);
    // What an unchanged pair leaves out is nothing to show.
    if (!file.ok() || file.value().shape() == nullptr) continue;
    views.push_back({PathToUtf8(path), std::move(file.value()), 0});
    ReadWhole(views.back().file);
  }
  return views.empty() ? 0 : Show(views, LookOf(arguments));
}

}  // namespace ledrix
