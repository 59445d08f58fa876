// A listing as text for a terminal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "listing/viewed_file.h"
#include "run/side.h"

namespace ledrix {

struct TerminalLook {
  bool colors = false;
  std::optional<Side> side;                           // this side alone
  std::optional<std::pair<int64_t, int64_t>> blocks;  // their numbers, from and to
};

// What a terminal shows of a file, line by line, in UTF-8. Control characters are shown as symbols
// (U+2400 and on); spaces at the end of a row are left out.
class TerminalListing {
 public:
  // `file` is read whole and must outlive the object. A text that is no listing has neither sides
  // nor blocks.
  TerminalListing(ViewedFile& file, TerminalLook look);

  // False when a block is asked for that the listing does not have.
  bool HasBlocks() const;
  // The next line without its end. False behind the last one.
  bool Next(std::string& line);
  // Columns of the line last returned, without what only tells its colour.
  size_t width() const { return width_; }
  // Lines of the one side returned so far of which the listing may hold only the beginning.
  int64_t maybe_cut() const { return maybe_cut_; }

 private:
  bool IsShown(int64_t line, RowKind kind) const;
  void PutHeading(std::string& out);
  void PutRow(int64_t line, std::string& out);
  bool PutSide(int64_t line, RowKind kind, std::string& out);
  void Put(const LineText& text, const std::vector<Stretch>& stretches, const char* color,
           std::string& out);
  const char* ColorOf(int64_t line);

  ViewedFile& file_;
  const TerminalLook look_;
  int64_t next_ = 0;
  bool has_heading_;
  size_t width_ = 0;
  int64_t maybe_cut_ = 0;
};

}  // namespace ledrix
