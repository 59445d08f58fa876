#include "ui/side_pair.h"

#include "jobs/folder_sync.h"
#include "ui/wait_cursor.h"

namespace ledrix {
namespace {

bool IsSameFolder(const NativePath& a, const NativePath& b) {
  return FoldedName(a.bytes()) == FoldedName(b.bytes());
}

}  // namespace

FileSides SidePair::Snapshot() const {
  return {frames_[0]->Snapshot(), frames_[1]->Snapshot()};
}

void SidePair::Refresh() const {
  for (FileFrame* const frame : frames_) frame->Refresh();
}

void SidePair::SwapFolders() const {
  const NativePath old_folder = frames_[0]->folder();
  const NativePath new_folder = frames_[1]->folder();
  if (IsSameFolder(old_folder, new_folder)) return;
  frames_[0]->OpenFolder(new_folder);
  frames_[1]->OpenFolder(old_folder);
}

void SidePair::AlignFolders(Side to_side, Side from_side) const {
  FileFrame& to = (*this)[to_side];
  const NativePath folder = (*this)[from_side].folder();
  if (!IsSameFolder(folder, to.folder())) to.OpenFolder(folder);
}

void SidePair::FollowFolder(Side side, const NativePath& from, const NativePath& to) const {
  FileFrame& other = (*this)[OtherSide(side)];
  const auto folder = CorrespondingFolder(from, to, other.folder());
  if (folder && IsFolder(*folder)) other.OpenFolder(*folder);
}

void SidePair::SelectNamesakesOf(Side side) const {
  const FileFrame& from = (*this)[side];
  FileFrame& other = (*this)[OtherSide(side)];
  const WaitCursor wait;
  FileSide matching = other.Snapshot();
  SelectNamesakes(from.Snapshot().files, matching.files);
  other.Select(matching.files);
}

void SidePair::SelectAllMatching() const {
  const WaitCursor wait;
  FileSides sides = Snapshot();
  SelectAllNamesakes(sides);
  for (const Side side : kBothSides) (*this)[side].Select(sides[side].files);
}

}  // namespace ledrix
