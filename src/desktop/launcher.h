// Launcher files (*.desktop), which tell how a program is started with a file.
//
// Of a launcher the group [Desktop Entry] counts: Type (Application), Exec, TryExec, Path,
// Terminal, Hidden, NoDisplay, and Name and Icon for Exec's codes.
//
// Exec is cut into words at blanks. A part between quotation marks (" or ') belongs to one word; a
// backslash takes the next character as it is, between " only one of " ` $ \. Codes: %f %F the
// file's path, %u %U its address, %i "--icon" and the icon, %c the name, %k the launcher's path,
// %% a percent sign; %d %D %n %N %v %m stand for nothing; any other makes the launcher broken. A
// code that stands with other text in a word with quotation marks or backslashes is no code: such
// words are what programs read as commands, and nothing of a file's name gets into them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/native_path.h"

namespace ledrix {

// A piece of a word of Exec: a code, or a text as it stands.
struct LauncherPiece {
  char code = '\0';  // '\0' for a text
  std::string text;
};
using LauncherWord = std::vector<LauncherPiece>;

struct Launcher {
  NativePath path;    // of the launcher file
  std::string name;   // the file's name without ".desktop", in the bytes of the file system
  std::string title;  // UTF-8; Japanese when the launcher has it
  std::string icon;
  NativePath folder;  // in which the program starts; empty: the current one
  bool in_terminal = false;
  bool is_hidden = false;  // as good as deleted
  bool is_shown = true;    // in menus
  std::vector<LauncherWord> words;
};

// Nothing for a broken launcher: no regular file, more than 64 KB, another type than an
// application, no Exec or one that cannot be cut, or a TryExec that is no program.
std::optional<Launcher> ReadLauncher(const NativePath& path);

// The launchers of a send-to folder, which ends in a separator, in byte order of their names.
// Left out are hidden and broken ones, those whose program is not installed, those of floppy drives
// ("3.5" or "ｲﾝﾁ" in the name), and those that others can write to: a file or link whose folder,
// target or target's folder belongs to, or is writable by, anybody but this user and the
// administrator.
std::vector<Launcher> ListLaunchers(const NativePath& folder);

// The program and its arguments for a file, whose path is absolute; without a code for the file it
// is the last argument.
std::vector<std::string> LauncherArguments(const Launcher& launcher, const NativePath& file);

// "file://" and the path, each byte but letters, digits and -._~/ as % and two digits.
std::string FileAddress(const NativePath& path);

// Starts the launcher's program with a file, in a terminal (x-terminal-emulator) if it asks for
// one. Returns why it could not be started.
Status StartWithFile(const Launcher& launcher, const NativePath& file);
// The same with an address such as that of a web page, which every code for a file stands for.
Status StartWithAddress(const Launcher& launcher, const std::string& address);

}  // namespace ledrix
