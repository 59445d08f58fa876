#include "platform/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace ledrix {

FolderLock::FolderLock(const NativePath& folder)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  constexpr useconds_t kPause = 2000;  // microseconds
  constexpr int kMostTries = 1000;
  for (int i = 0; i < kMostTries && flock(folder_.number(), LOCK_EX | LOCK_NB) != 0; ++i) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;
    usleep(kPause);
  }
}

}  // namespace ledrix
