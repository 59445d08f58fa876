#include "platform/scratch_folder.h"

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/temporary_copy.h"

namespace ledrix {

Result<ScratchFolder> ScratchFolder::Make() {
  std::string name = (TemporaryFolder() + "ledrix-XXXXXX").bytes();
  if (mkdtemp(name.data()) == nullptr) return LastError();
  return ScratchFolder(AddBackslash(NativePath(name)));
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove_all(path_.bytes(), ignored);
}

}  // namespace ledrix
