// Walks a directory tree, depth first, each folder's entries in byte order of their names.
#pragma once

#include <functional>
#include <set>
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
  // Each regular file, links to one included. Pipes, sockets and devices are passed over.
  std::function<void(const FileRecord&)> visit_file;
  // When a folder has been walked to its end.
  std::function<void()> leave_folder = [] {};
};

// Visits every file below `root`, which ends in a separator. Every real folder is walked; a link
// to a folder only if its target lies outside the root, is no ancestor of it and was not yet
// reached through a link. The first failure ends the walk.
std::optional<WalkError> WalkTree(const NativePath& root, const TreeVisitor& visitor);

}  // namespace ledrix::modDComp
