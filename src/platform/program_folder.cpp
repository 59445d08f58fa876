#include "platform/program_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/files.h"

namespace ledrix {
namespace {

constexpr const char* kPortableMark = "Ledrix.portable";

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

NativePath HomeFolder() {
  const std::string home = Environment("HOME");
  if (!home.empty()) return NativePath(home);
  const passwd* user = getpwuid(getuid());
  return NativePath(user == nullptr ? "/" : user->pw_dir);
}

// A folder of the base directories of the desktop; a relative path is not taken.
NativePath BaseFolder(const char* variable, const char* below_home) {
  const std::string folder = Environment(variable);
  if (!folder.empty() && folder[0] == '/') return AddBackslash(NativePath(folder));
  return AddBackslash(HomeFolder()) + below_home;
}

NativePath ExecutableFolder() {
  const NativePath path = RealPath(NativePath("/proc/self/exe"));
  return path.empty() ? path : DirOf(path);
}

NativePath ChooseProgramFolder() {
  const std::string chosen = Environment("LEDRIX_HOME");
  if (!chosen.empty()) return AddBackslash(MakeAbsolute(NativePath(chosen)));
  NativePath executable_folder = ExecutableFolder();
  if (!executable_folder.empty() && PathExists(executable_folder + kPortableMark)) {
    return executable_folder;
  }
  return UserDataFolder() + "ledrix/";
}

}  // namespace

NativePath UserDataFolder() {
  return BaseFolder("XDG_DATA_HOME", ".local/share/");
}

NativePath UserConfigurationFolder() {
  return BaseFolder("XDG_CONFIG_HOME", ".config/");
}

NativePath ProgramFolder() {
  NativePath folder = ChooseProgramFolder();
  // When it cannot be made, writing into it will fail and be dealt with there.
  MakePrivateFolder(folder).Ignore();
  return folder;
}

NativePath SharedFolder() {
  return DirOf(StripBackslash(ExecutableFolder())) + "share/ledrix/";
}

NativePath FindProgramFile(std::string_view name) {
  NativePath own = ProgramFolder() + name;
  NativePath shared = SharedFolder() + name;
  return !GetFileInfo(own).ok() && GetFileInfo(shared).ok() ? shared : own;
}

NativePath SendToFolder(SendToOwner owner) {
  if (owner == SendToOwner::kProgram) return AddBackslash(FindProgramFile("SendTo"));
  return UserDataFolder() + "ledrix/SendTo/";
}

NativePath SettingsPath() {
  return UserConfigurationFolder() + "ledrix/settings.ini";
}

}  // namespace ledrix
