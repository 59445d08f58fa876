#include "desktop/launcher.h"

#include <cerrno>

#include "desktop/exec_line.h"
#include "desktop/key_file.h"
#include "desktop/start_program.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr size_t kMostBytes = size_t{1} << 16;
constexpr const char* kGroup = "Desktop Entry";
constexpr std::string_view kSuffix = ".desktop";
constexpr const char* kTerminal = "x-terminal-emulator";

std::string Text(const KeyFile& file, std::string_view key) {
  return UnescapeValue(file.Get(kGroup, key).value_or(""));
}

bool Flag(const KeyFile& file, std::string_view key) {
  return file.Get(kGroup, key) == "true";
}

std::optional<Launcher> FromKeyFile(const NativePath& path, const KeyFile& file) {
  if (Text(file, "Type") != "Application") return std::nullopt;
  std::optional<std::vector<LauncherWord>> words = CutExecLine(Text(file, "Exec"));
  if (!words) return std::nullopt;
  const std::string needed = Text(file, "TryExec");
  if (!needed.empty() && FindProgram(needed).empty()) return std::nullopt;

  Launcher launcher;
  launcher.path = path;
  launcher.name = FileNameOf(path);
  if (launcher.name.ends_with(kSuffix)) {
    launcher.name.resize(launcher.name.size() - kSuffix.size());
  }
  launcher.title = Text(file, "Name[ja]");
  if (launcher.title.empty()) launcher.title = Text(file, "Name");
  launcher.icon = Text(file, "Icon");
  launcher.folder = NativePath(Text(file, "Path"));
  launcher.in_terminal = Flag(file, "Terminal");
  launcher.is_hidden = Flag(file, "Hidden");
  launcher.is_shown = !launcher.is_hidden && !Flag(file, "NoDisplay");
  launcher.words = std::move(*words);
  return launcher;
}

bool IsFloppyDrive(const std::string& name) {
  return name.find("3.5") != std::string::npos || name.find("ｲﾝﾁ") != std::string::npos;
}

// The first word, which is a text.
const std::string& ProgramOf(const Launcher& launcher) {
  return launcher.words[0][0].text;
}

// What a program is to open, as its codes want it.
struct Target {
  std::string path;
  std::string address;
};

// What a code stands for inside a word.
std::string Expanded(const Launcher& launcher, char code, const Target& target) {
  switch (code) {
    case 'f':
    case 'F':
      return target.path;
    case 'u':
    case 'U':
      return target.address;
    case 'c':
      return launcher.title;
    case 'k':
      return launcher.path.bytes();
    default:
      return {};
  }
}

void AppendWord(const Launcher& launcher, const LauncherWord& word, const Target& target,
                std::vector<std::string>& arguments) {
  if (word.size() == 1 && word[0].code == 'i') {
    if (!launcher.icon.empty()) arguments.insert(arguments.end(), {"--icon", launcher.icon});
    return;
  }
  std::string text;
  bool has_text = false;
  for (const LauncherPiece& piece : word) {
    has_text |= piece.code == '\0';
    text += piece.code == '\0' ? piece.text : Expanded(launcher, piece.code, target);
  }
  if (has_text || !text.empty()) arguments.push_back(std::move(text));
}

bool HasFileCode(const Launcher& launcher) {
  constexpr std::string_view kFileCodes = "fFuU";
  for (const LauncherWord& word : launcher.words) {
    for (const LauncherPiece& piece : word) {
      if (piece.code != '\0' && kFileCodes.find(piece.code) != std::string_view::npos) return true;
    }
  }
  return false;
}

std::vector<std::string> ArgumentsFor(const Launcher& launcher, const Target& target) {
  std::vector<std::string> arguments;
  for (const LauncherWord& word : launcher.words) AppendWord(launcher, word, target, arguments);
  if (!HasFileCode(launcher)) arguments.push_back(target.path);
  return arguments;
}

Status StartWithArguments(const Launcher& launcher, std::vector<std::string> arguments) {
  if (launcher.in_terminal) {
    if (FindProgram(ProgramOf(launcher)).empty()) return Error::System(ENOENT);
    arguments.insert(arguments.begin(), {kTerminal, "-e"});
  }
  return StartProgram(arguments, launcher.folder);
}

}  // namespace

std::optional<Launcher> ReadLauncher(const NativePath& path) {
  const std::optional<KeyFile> file = KeyFile::Read(path, kMostBytes);
  return file ? FromKeyFile(path, *file) : std::nullopt;
}

std::vector<Launcher> ListLaunchers(const NativePath& folder) {
  std::vector<Launcher> launchers;
  if (IsOpenToOthers(folder)) return launchers;
  const Result<std::vector<FolderEntry>> entries = ReadFolder(folder);
  if (!entries.ok()) return launchers;
  for (const FolderEntry& entry : entries.value()) {
    if (!entry.name.ends_with(kSuffix) || entry.name.size() == kSuffix.size()) continue;
    const NativePath path = folder + entry.name;
    const std::optional<KeyFile> file = KeyFile::Read(path, kMostBytes);
    if (!file || file->is_open_to_others() || IsOpenToOthers(DirOf(RealPath(path)))) continue;
    std::optional<Launcher> launcher = FromKeyFile(path, *file);
    if (launcher && launcher->is_shown && !IsFloppyDrive(launcher->name) &&
        !FindProgram(ProgramOf(*launcher)).empty()) {
      launchers.push_back(std::move(*launcher));
    }
  }
  return launchers;
}

std::vector<std::string> LauncherArguments(const Launcher& launcher, const NativePath& file) {
  return ArgumentsFor(launcher, {file.bytes(), FileAddress(file)});
}

std::string FileAddress(const NativePath& path) {
  constexpr std::string_view kPlain = "-._~/";
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string address = "file://";
  for (const char c : path.bytes()) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsAsciiLetter(c) || IsAsciiDigit(c) || kPlain.find(c) != std::string_view::npos) {
      address += c;
    } else {
      address += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return address;
}

Status StartWithFile(const Launcher& launcher, const NativePath& file) {
  return StartWithArguments(launcher, LauncherArguments(launcher, file));
}

Status StartWithAddress(const Launcher& launcher, const std::string& address) {
  return StartWithArguments(launcher, ArgumentsFor(launcher, {address, address}));
}

}  // namespace ledrix
