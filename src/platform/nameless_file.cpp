#include "platform/nameless_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace ledrix {
namespace {

bool MeansUnsupported(int number) {
  return number == EOPNOTSUPP || number == EISDIR || number == EINVAL || number == ENOENT;
}

}  // namespace

Result<OutputFile> CreateNamelessFile(const NativePath& folder, const NativePath& shown_path) {
  FileDescriptor descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
  if (!descriptor.is_open() && MeansUnsupported(errno)) {
    std::string name = (AddBackslash(folder) + ".ledrix-XXXXXX").bytes();
    descriptor = FileDescriptor(mkostemp(name.data(), O_CLOEXEC));
    if (descriptor.is_open() && unlink(name.c_str()) != 0) return Error::System(errno);
  }
  if (!descriptor.is_open()) {
    return errno == EACCES ? Error{ErrorKind::kFolderIsLocked} : Error::System(errno);
  }
  return OutputFile::OverDescriptor(shown_path, std::move(descriptor));
}

Result<InputFile> ReadBack(OutputFile file) {
  Result<FileDescriptor> descriptor = file.Release();
  if (!descriptor.ok()) return descriptor.error();
  if (lseek(descriptor.value().number(), 0, SEEK_SET) != 0) return Error::System(errno);
  return InputFile::OverDescriptor(std::move(descriptor.value()));
}

NativePath TemporaryFolder() {
  const char* const folder = std::getenv("TMPDIR");
  return AddBackslash(NativePath(folder != nullptr && *folder != '\0' ? folder : "/tmp"));
}

}  // namespace ledrix
