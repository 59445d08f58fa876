// Walks a directory tree, depth first, each folder's entries in byte order of their names.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "dircomp/dir_entry.h"
#include "platform/error.h"
#include "platform/folders.h"

namespace ledrix::modDComp {

// A failure of a walk and where it happened.
struct WalkError {
  NativePath path;
  Error error;
};

// What a walk calls.
struct TreeVisitor {
  // Asked when a folder is entered; false leaves the folder out.
  std::function<bool()> enter_folder = [] { return true; };
  // Between the entries of a folder that is being read.
  std::function<void()> read_entry = [] {};
  // Each regular file, links to one included. Pipes, sockets and devices are passed over. The exact
  // name's bytes stay only until the function returns.
  std::function<void(const FileRecord&, const ExactName&)> visit_file;
  // A file that was removed after its folder was listed; the walk goes on without it.
  std::function<void(const NativePath&)> file_gone = [](const NativePath&) {};
  // When a folder has been walked to its end.
  std::function<void()> leave_folder = [] {};
  // The file that the job writes; it is not visited, whatever its names.
  std::optional<FileInfo> output;
  // Further files that are not visited, or nullptr.
  const FileSet* no_entries = nullptr;
};

// Visits every file below `root`, which ends in a separator. Every real folder is walked; a link
// to a folder only if its target lies outside the root, is no ancestor of it and was not yet
// reached through a link. A folder that cannot be read or is removed meanwhile, a path too long for
// the system and every other failure ends the walk; only a file that was removed does not.
std::optional<WalkError> WalkTree(const NativePath& root, const TreeVisitor& visitor);

// The line that tells of a file that was removed after its folder was listed.
std::string FileGoneText(const NativePath& path);

}  // namespace ledrix::modDComp
