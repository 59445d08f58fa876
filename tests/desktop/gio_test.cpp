// What GIO, which comes with Qt, does with launchers, beside what this room does with the same
// ones. When GIO's half of a test fails there is a newer GIO, and what ARCHITECTURE.md says of it
// no longer holds.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "desktop/launcher.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

// The library as it lies on this machine, found without its headers.
class Gio {
 public:
  bool is_here() const { return library_ != nullptr; }

  // False when it refuses the launcher or says that it could not be started.
  bool Start(const NativePath& launcher, const NativePath& file) const {
    void* const info =
        Function<void*(const char*)>("g_desktop_app_info_new_from_filename")(launcher.c_str());
    if (info == nullptr) return false;
    void* const object = Function<void*(const char*)>("g_file_new_for_path")(file.c_str());
    void* const files = Function<void*(void*, void*)>("g_list_append")(nullptr, object);
    const bool is_started = Function<int(void*, void*, void*, void**)>("g_app_info_launch")(
                                info, files, nullptr, nullptr) != 0;
    Function<void(void*)>("g_list_free")(files);
    for (void* const owned : {object, info}) Function<void(void*)>("g_object_unref")(owned);
    return is_started;
  }

 private:
  template <typename F>
  F* Function(const char* name) const {
    return reinterpret_cast<F*>(dlsym(library_, name));
  }

  void* library_ = dlopen("libgio-2.0.so.0", RTLD_NOW);  // which cannot be unloaded
};

class GioTest : public testing::Test {
 protected:
  void SetUp() override {
    // Neither a session bus nor another file system than the machine's is asked.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus", 1);
    setenv("GIO_USE_VFS", "local", 1);
    if (!gio.is_here()) GTEST_SKIP() << "GIO is not installed";
    umask(022);
  }

  // Starts the one launcher of a folder, in that folder.
  static bool StartByRoom(const test::TempFolder& folder, const NativePath& file) {
    const std::vector<Launcher> launchers = ListLaunchers(NativePath(folder.path() + "/"));
    return launchers.size() == 1 && StartWithFile(launchers[0], file).ok();
  }
  bool StartByGio(const test::TempFolder& folder, const NativePath& file) const {
    return gio.Start(folder.At("x.desktop"), file);
  }
  static NativePath WriteLauncher(const test::TempFolder& folder, const std::string& exec) {
    return folder.Write("x.desktop", "[Desktop Entry]\nType=Application\nName=x\nPath=" +
                                         folder.path() + "\nExec=" + exec + "\n");
  }

  Gio gio;
};

TEST_F(GioTest, PassesNamesWholeButRunsTheCommandsInThem) {
  for (const bool is_gio : {false, true}) {
    const test::TempFolder folder;
    const auto start = [&](const std::string& exec, const char* name) {
      WriteLauncher(folder, exec);
      const NativePath file = folder.At(name);
      EXPECT_TRUE(is_gio ? StartByGio(folder, file) : StartByRoom(folder, file)) << exec;
    };
    start("touch %f", "\x83\\\xFF");
    EXPECT_TRUE(test::WaitForFile(folder.At("\x83\\\xFF"))) << is_gio;
    start("sh -c 'true %f; touch done'", "$(touch${IFS}command)");
    EXPECT_TRUE(test::WaitForFile(folder.At("done")));
    EXPECT_EQ(test::FileExists(folder.At("command")), is_gio);
  }
}

TEST_F(GioTest, OffersWhatOthersCanWriteTo) {
  const test::TempFolder folder;
  chmod(WriteLauncher(folder, "true").c_str(), 0666);
  EXPECT_FALSE(StartByRoom(folder, NativePath("/f")));
  EXPECT_TRUE(StartByGio(folder, NativePath("/f")));
}

TEST_F(GioTest, CallsAProgramStartedThatTheSystemCannotRun) {
  const test::TempFolder folder;
  const NativePath program = folder.Write("program", "#!/no/such/interpreter\n");
  chmod(program.c_str(), 0755);
  WriteLauncher(folder, program.bytes());
  EXPECT_FALSE(StartByRoom(folder, NativePath("/f")));
  EXPECT_TRUE(StartByGio(folder, NativePath("/f")));
}

}  // namespace
}  // namespace ledrix
