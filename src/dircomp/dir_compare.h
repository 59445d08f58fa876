// Compares two sides, each a directory tree or a directory information file.
#pragma once

#include <string>
#include <string_view>

#include "dircomp/dir_side.h"
#include "run/run_services.h"

namespace ledrix::modDComp {

// Compares OldPath with NewPath into the listing OutPath, pairing entries by CompareRange.
// `type_filter` (patterns joined by ";") says which names take part on both sides when the option
// DCompSelect is on.
//
// When a side cannot be read to its end the job has failed, when it is stopped meanwhile it has no
// result either: the listing is removed. A later stop leaves a listing without summary. The listing
// itself is no entry of a side.
void DirCompJob(RunServices& services, std::string_view type_filter);

// The names of the files directly in a folder, hidden ones included, sorted; for the clipboard,
// joined by CR LF.
std::string FolderListText(const NativePath& folder);
// The names that only the new folder holds, only the old one, and both, for the clipboard.
std::string FolderCompareText(const NativePath& old_folder, const NativePath& new_folder);

}  // namespace ledrix::modDComp
