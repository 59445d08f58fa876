// The two sides of the main window, and what is done between them.
#pragma once

#include <array>

#include "jobs/file_sides.h"
#include "ui/file_frame.h"

namespace ledrix {

class SidePair {
 public:
  // Both must outlive the pair.
  SidePair(FileFrame* old_side, FileFrame* new_side) : frames_{old_side, new_side} {}

  FileFrame& operator[](Side side) const { return *frames_[IndexOf(side)]; }
  auto begin() const { return frames_.begin(); }
  auto end() const { return frames_.end(); }

  // Both sides as plain data.
  FileSides Snapshot() const;
  void Refresh() const;

  // A folder that both sides show already is not opened anew.
  void SwapFolders() const;
  void AlignFolders(Side to_side, Side from_side) const;
  // After one side went from one folder to another: the folder that corresponds on the other side
  // is opened there, if there is one.
  void FollowFolder(Side side, const NativePath& from, const NativePath& to) const;

  // Selects on the other side the namesakes of what is selected on this one, and nothing else.
  void SelectNamesakesOf(Side side) const;
  void SelectAllMatching() const;

 private:
  const std::array<FileFrame*, 2> frames_;
};

}  // namespace ledrix
