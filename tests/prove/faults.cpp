// Preloaded into a program under proof: at one of its calls, counted from main on, something goes
// wrong. What, when and where is told by variables of the environment:
//   FAULT_KIND    the kind of calls that count: one of kKinds; "any" is each but "alloc"
//   FAULT_AT      the number of the call, from 1; 0 is the begin of main
//   FAULT_DO      an errno as number; short (one byte is read or written); signal; limit (of
//   memory,
//                 at main: what is in use and FAULT_ARG bytes more); shrink, grow, vanish, folder,
//                 replace (the file FAULT_PATH; FAULT_ARG is the file that takes its place), gone
//                 (a folder with all in it)
//   FAULT_ARG     what the action needs
//   FAULT_ON      set when it goes on so from that call on
//   FAULT_UNDER   the folder that counts; FAULT_PATH  what is changed, and watched up to the first
//                 call on FAULT_UNTIL
//   FAULT_OUT     the folder below which a file has lost its content when its close fails
//   FAULT_REPORT  the file of the report; FAULT_CLOCK  the time of day, in seconds
// Descriptor 2 never fails, since nobody could be told.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kKinds[] = {"open",     "read", "write", "close",   "rename",  "unlink",
                                       "link",     "stat", "mkdir", "opendir", "readdir", "fsync",
                                       "mkostemp", "mode", "alloc", "any"};
constexpr int KindOf(std::string_view name) {
  int kind = 0;
  while (kKinds[kind] != name) ++kind;
  return kind;
}
constexpr int kAlloc = KindOf("alloc");
constexpr int kAny = KindOf("any");
constexpr int kShort = -1;

struct Report {
  int32_t happened;  // the number of the call
  int32_t opened;    // the number, of any kind, of the last call that opens the watched path
  int32_t looked;    // and of the last one that looks at it
  int32_t calls[kAny + 1];
  char path[PATH_MAX];  // of the call at which it happened
};
static_assert(offsetof(Report, path) == 76);

Report* report = nullptr;  // while nothing is counted: none
bool busy = false;         // the library's own calls
int chosen = kAny;
int first_call = 0;
int last_call = 0;
int error = 0;  // what Act returns
const char* under = "";
const char* watched = nullptr;

const char* Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

time_t Clock() {
  static const time_t clock = std::atol(Variable("FAULT_CLOCK"));
  return clock;
}

bool IsBelow(const char* path, const char* folder) {
  const size_t size = std::strlen(folder);
  return std::strncmp(path, folder, size) == 0 && (path[size] == '/' || path[size] == '\0');
}

void LimitMemory() {
  long pages = 0;
  if (FILE* const statm = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(statm, "%ld", &pages) != 1) std::abort();
    std::fclose(statm);
  }
  const rlim_t bytes = static_cast<rlim_t>(pages * sysconf(_SC_PAGESIZE)) +
                       static_cast<rlim_t>(std::atol(Variable("FAULT_ARG")));
  const rlimit limit = {bytes, bytes};
  if (setrlimit(RLIMIT_AS, &limit) != 0) std::abort();
}

void ChangeFile(const std::string& what, const std::filesystem::path& path) {
  std::error_code lost;
  if (what == "shrink") std::filesystem::resize_file(path, file_size(path, lost) / 2, lost);
  if (what == "grow") std::ofstream(path, std::ios::app) << "  THE END\r\n";
  if (what == "replace") std::filesystem::rename(Variable("FAULT_ARG"), path, lost);
  if (what == "vanish" || what == "folder") std::filesystem::remove(path, lost);
  if (what == "folder") std::filesystem::create_directory(path, lost);
  if (what == "gone") std::filesystem::remove_all(path, lost);
}

int Act() {
  if (error != 0) return error;
  busy = true;
  const std::string what = Variable("FAULT_DO");
  if (what == "limit") LimitMemory();
  ChangeFile(what, Variable("FAULT_PATH"));
  busy = false;
  if (what == "signal") kill(getpid(), std::atoi(Variable("FAULT_ARG")));
  return 0;
}

void Watch(int kind, const char* path) {
  if (watched != nullptr && std::strcmp(path, Variable("FAULT_UNTIL")) == 0) watched = nullptr;
  if (watched == nullptr || !IsBelow(path, watched)) return;
  const int32_t now = report->calls[kAny];
  if (kind == KindOf("open") || kind == KindOf("opendir")) report->opened = now;
  if (kind != KindOf("close")) report->looked = now;
}

// What a call of this kind on this path has to do: to fail with an errno, kShort, or 0.
int Meet(int kind, const char* path) {
  if (report == nullptr || busy || (kind != kAlloc && !IsBelow(path, under))) return 0;
  const int before = errno;
  ++report->calls[kind];
  if (kind != kAlloc) {
    ++report->calls[kAny];
    Watch(kind, path);
  }
  int result = 0;
  const int now = report->calls[chosen];
  if ((kind == chosen || (chosen == kAny && kind != kAlloc)) && now >= first_call &&
      now <= last_call && first_call > 0) {
    if (report->happened == 0) {
      report->happened = now;
      std::strncpy(report->path, path, PATH_MAX - 1);
    }
    result = Act();
  }
  errno = before;
  return result;
}

// The path that a descriptor, or a name below one, has.
class PathOf {
 public:
  explicit PathOf(int descriptor, const char* name = "") {
    const int before = errno;
    char link[32] = "/proc/self/cwd";
    if (descriptor != AT_FDCWD) {
      std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    }
    if (name[0] != '/') {
      const long size = syscall(SYS_readlink, link, text_, PATH_MAX);
      size_ = size > 0 ? static_cast<size_t>(size) : 0;
    }
    if (name[0] != '\0') {
      std::snprintf(text_ + size_, sizeof text_ - size_, "%s%s", name[0] == '/' ? "" : "/", name);
    }
    errno = before;
  }
  operator const char*() const { return text_; }

 private:
  char text_[PATH_MAX + 256] = "";
  size_t size_ = 0;
};

// What was written, but did not reach the disk, when that is told by a call.
void LoseContent(int fd) {
  if (lseek(fd, 0, SEEK_END) > 1 && ftruncate(fd, 1) != 0) return;  // not open for writing
}

PathOf Named(const char* name) {
  return PathOf(AT_FDCWD, name);
}

void Begin() {
  if (*Variable("FAULT_KIND") != '\0') chosen = KindOf(Variable("FAULT_KIND"));
  const std::string what = Variable("FAULT_DO");
  error = what == "short" ? kShort : std::atoi(what.c_str());
  first_call = std::atoi(Variable("FAULT_AT"));
  last_call = *Variable("FAULT_ON") == '\0' ? first_call
              : error == EINTR              ? first_call + 50
                                            : INT_MAX;
  under = Variable("FAULT_UNDER");
  watched = std::getenv("FAULT_PATH");
  const long file =
      syscall(SYS_openat, AT_FDCWD, Variable("FAULT_REPORT"), O_RDWR | O_CREAT | O_TRUNC, 0600);
  if (file < 0 || ftruncate(static_cast<int>(file), sizeof(Report)) != 0) std::abort();
  void* const memory =
      mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(file), 0);
  syscall(SYS_close, file);
  if (first_call == 0) Act();
  report = static_cast<Report*>(memory);
}

template <class Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

using MainFunction = int (*)(int, char**, char**);
MainFunction program_main = nullptr;

int Main(int argc, char** argv, char** environment) {
  Begin();
  return program_main(argc, argv, environment);
}

}  // namespace

#define REAL(name) static auto* const real = Real<decltype(name)>(#name)
#define MEET(kind, path, failed)      \
  constexpr int kKind = KindOf(kind); \
  const int met = Meet(kKind, path);  \
  if (met > 0) {                      \
    errno = met;                      \
    return failed;                    \
  }
// A function of `kind` that is looked at by `path`; the call is handed on.
#define HAND_ON(type, name, parameters, arguments, kind, path, failed) \
  type name parameters {                                               \
    REAL(name);                                                        \
    MEET(kind, path, failed)                                           \
    return real arguments;                                             \
  }
#define HAND_ON_OPEN(name, parameters, path, ...)                                       \
  int name parameters {                                                                 \
    REAL(name);                                                                         \
    va_list rest;                                                                       \
    va_start(rest, flags);                                                              \
    const unsigned mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(rest, unsigned) : 0; \
    va_end(rest);                                                                       \
    MEET("open", path, -1)                                                              \
    return real(__VA_ARGS__, mode);                                                     \
  }
#define HAND_ON_BYTES(name, parameters, kind, ...)     \
  ssize_t name parameters {                            \
    REAL(name);                                        \
    if (fd == STDERR_FILENO) return real(__VA_ARGS__); \
    MEET(kind, PathOf(fd), -1)                         \
    if (met == kShort && size > 1) size = 1;           \
    return real(__VA_ARGS__);                          \
  }

// The names are those of the C library.
// NOLINTBEGIN(bugprone-reserved-identifier,bugprone-macro-*,readability-identifier-naming)
extern "C" {

int __libc_start_main(MainFunction main, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*rtld_fini)(), void* stack_end) {
  using Start = int(MainFunction, int, char**, void (*)(), void (*)(), void (*)(), void*);
  static auto* const real = Real<Start>("__libc_start_main");
  program_main = main;
  return real(Main, argc, argv, init, fini, rtld_fini, stack_end);
}

HAND_ON_OPEN(open, (const char* path, int flags, ...), Named(path), path, flags)
HAND_ON_OPEN(openat, (int fd, const char* path, int flags, ...), PathOf(fd, path), fd, path, flags)

HAND_ON_BYTES(read, (int fd, void* to, size_t size), "read", fd, to, size)
HAND_ON_BYTES(pread, (int fd, void* to, size_t size, off_t at), "read", fd, to, size, at)
HAND_ON_BYTES(write, (int fd, const void* from, size_t size), "write", fd, from, size)
HAND_ON_BYTES(pwrite, (int fd, const void* from, size_t size, off_t at), "write", fd, from, size,
              at)
HAND_ON_BYTES(writev, (int fd, const iovec* from, int size), "write", fd, from, size)

int close(int fd) {
  REAL(close);
  const PathOf path(fd);
  const int met = fd == STDERR_FILENO ? 0 : Meet(KindOf("close"), path);
  if (met > 0 && met != EINTR && IsBelow(path, Variable("FAULT_OUT"))) LoseContent(fd);
  const int result = real(fd);  // it is closed in any case
  if (met <= 0) return result;
  errno = met;
  return -1;
}

HAND_ON(int, rename, (const char* from, const char* to)__THROW, (from, to), "rename", Named(to), -1)
HAND_ON(int, renameat, (int a, const char* from, int b, const char* to)__THROW, (a, from, b, to),
        "rename", PathOf(b, to), -1)
HAND_ON(int, renameat2, (int a, const char* from, int b, const char* to, unsigned flags)__THROW,
        (a, from, b, to, flags), "rename", PathOf(b, to), -1)
HAND_ON(int, link, (const char* from, const char* to)__THROW, (from, to), "link", Named(to), -1)
HAND_ON(int, linkat, (int a, const char* from, int b, const char* to, int flags)__THROW,
        (a, from, b, to, flags), "link", PathOf(b, to), -1)
HAND_ON(int, unlink, (const char* path)__THROW, (path), "unlink", Named(path), -1)
HAND_ON(int, unlinkat, (int fd, const char* path, int flags)__THROW, (fd, path, flags), "unlink",
        PathOf(fd, path), -1)

HAND_ON(int, stat, (const char* path, struct stat* to)__THROW, (path, to), "stat", Named(path), -1)
HAND_ON(int, lstat, (const char* path, struct stat* to)__THROW, (path, to), "stat", Named(path), -1)
int fstat(int fd, struct stat* to) __THROW {
  REAL(fstat);
  MEET("stat", PathOf(fd), -1)
  const int result = real(fd, to);
  // Listings show the time of a copy without a name.
  if (result == 0 && to->st_nlink == 0 && Clock() != 0) to->st_mtim = {Clock(), 0};
  return result;
}
HAND_ON(int, fstatat, (int fd, const char* path, struct stat* to, int flags)__THROW,
        (fd, path, to, flags), "stat", PathOf(fd, path), -1)
HAND_ON(int, statx, (int fd, const char* path, int flags, unsigned mask, struct statx* to)__THROW,
        (fd, path, flags, mask, to), "stat", PathOf(fd, path), -1)
HAND_ON(int, access, (const char* path, int mode)__THROW, (path, mode), "stat", Named(path), -1)
HAND_ON(char*, realpath, (const char* path, char* to)__THROW, (path, to), "stat", Named(path),
        nullptr)

HAND_ON(int, mkdir, (const char* path, mode_t mode)__THROW, (path, mode), "mkdir", Named(path), -1)
HAND_ON(DIR*, opendir, (const char* path), (path), "opendir", Named(path), nullptr)
HAND_ON(DIR*, fdopendir, (int fd), (fd), "opendir", PathOf(fd), nullptr)
HAND_ON(dirent*, readdir, (DIR * folder), (folder), "readdir", PathOf(dirfd(folder)), nullptr)
// The disk is not waited for: nothing here cuts its power.
int fsync(int fd) {
  const int met = Meet(KindOf("fsync"), PathOf(fd));
  if (met <= 0) return 0;
  LoseContent(fd);
  errno = met;
  return -1;
}
int fdatasync(int fd) {
  return fsync(fd);
}
HAND_ON(int, mkostemp, (char* path, int flags), (path, flags), "mkostemp", Named(path), -1)
HAND_ON(int, fchmod, (int fd, mode_t mode)__THROW, (fd, mode), "mode", PathOf(fd), -1)
HAND_ON(int, futimens, (int fd, const timespec* times)__THROW, (fd, times), "mode", PathOf(fd), -1)

int clock_gettime(clockid_t clock, timespec* to) __THROW {
  REAL(clock_gettime);
  if (clock != CLOCK_REALTIME || Clock() == 0) return real(clock, to);
  *to = {Clock(), 0};
  return 0;
}

void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);

#define HAND_ON_MEMORY(name, parameters, call) \
  void* name parameters __THROW {              \
    MEET("alloc", "", nullptr)                 \
    return (call);                             \
  }
HAND_ON_MEMORY(malloc, (size_t size), __libc_malloc(size))
HAND_ON_MEMORY(calloc, (size_t count, size_t size), __libc_calloc(count, size))
HAND_ON_MEMORY(realloc, (void* old, size_t size), __libc_realloc(old, size))
HAND_ON_MEMORY(aligned_alloc, (size_t alignment, size_t size), __libc_memalign(alignment, size))
int posix_memalign(void** to, size_t alignment, size_t size) __THROW {
  *to = aligned_alloc(alignment, size);
  return *to == nullptr ? ENOMEM : 0;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,bugprone-macro-*,readability-identifier-naming)
