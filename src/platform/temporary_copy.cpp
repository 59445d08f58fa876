#include "platform/temporary_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

#include "platform/nameless_file.h"

namespace ledrix {
Result<OutputFile> CreateNamelessFile(const NativePath& folder, const NativePath& shown_path) {
  Result<std::optional<FileDescriptor>> nameless = OpenNameless(folder, 0600);
  Status failure = nameless.status();
  FileDescriptor descriptor;
  if (nameless.ok() && nameless.value()) {
    descriptor = std::move(*nameless.value());
  } else if (nameless.ok()) {
    std::string name = (AddBackslash(folder) + ".ledrix-XXXXXX").bytes();
    descriptor = FileDescriptor(mkostemp(name.data(), O_CLOEXEC));
    if (!descriptor.is_open() || unlink(name.c_str()) != 0) failure = LastError();
  }
  if (failure.ok()) return OutputFile::OverDescriptor(shown_path, std::move(descriptor));
  const bool is_locked = failure.error().system_number == EACCES;
  return is_locked ? Error{ErrorKind::kFolderIsLocked} : failure.error();
}

Result<InputFile> ReadBack(OutputFile file) {
  Result<FileDescriptor> descriptor = file.Release();
  if (!descriptor.ok()) return descriptor.error();
  if (lseek(descriptor.value().number(), 0, SEEK_SET) != 0) return LastError();
  return InputFile::OverDescriptor(std::move(descriptor.value()));
}

NativePath TemporaryFolder() {
  const char* const folder = std::getenv("TMPDIR");
  return AddBackslash(NativePath(folder != nullptr && *folder != '\0' ? folder : "/tmp"));
}

}  // namespace ledrix
