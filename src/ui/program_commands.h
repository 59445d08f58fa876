// Commands of the main menu that concern the program itself.
#pragma once

#include "platform/services.h"
#include "settings/settings_store.h"
#include "ui/desktop_actions.h"

namespace ledrix {

// Tells why the settings could not be read when their file exists: the program works with the
// defaults and does not write the file.
void TellUnreadSettings(const SettingsStore& store, PlatformServices& platform);

// Writes the settings. A failure is told; nothing is written, and nothing told again, when they
// could not be read.
void SaveSettings(const SettingsStore& store, PlatformServices& platform);

// Asks, and on Yes empties the settings, in the file as well. True: the program is to end at once
// and to save nothing. When the file cannot be written that is told, and the settings stay.
[[nodiscard]] bool ClearSettings(SettingsStore& store, PlatformServices& platform);

// Opens the help, "Ledrix.chm" where it is and else the pages of the manual, or the readme
// (FindProgramFile) by its association. A message tells when it is missing or when the desktop
// knows no program for it.
void ShowHelp(DesktopActions& actions, PlatformServices& platform);
void ShowReadme(DesktopActions& actions, PlatformServices& platform);

}  // namespace ledrix
