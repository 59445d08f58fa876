// A file of any size that is looked at line by line, and what it says when it is a listing.
//
// Nothing of it is held but places of some lines, a few blocks of text and the blocks of the
// listing. It is read on while it is shown already.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "charset/sure_judgement.h"
#include "listing/differing_stretches.h"
#include "listing/line_text.h"
#include "listing/listing_blocks.h"
#include "platform/error.h"
#include "platform/files.h"

namespace ledrix {

// Lines are counted from 0.
class ViewedFile {
 public:
  // A longer line is cut there, in bytes.
  static constexpr size_t kMostShown = size_t{1} << 16;

  // A regular file; anything else is refused without opening it. `most_shown` as kMostShown.
  static Result<ViewedFile> Open(const NativePath& path, size_t most_shown = kMostShown);
  // Takes what is left of a pipe, or all of a file, into a file without a name and opens that.
  // `hook` is called between its blocks.
  static Result<ViewedFile> OpenCopy(InputFile source, const NativePath& shown,
                                     size_t most_shown = kMostShown);

  ViewedFile(ViewedFile&&) noexcept = default;
  ViewedFile& operator=(ViewedFile&&) noexcept = default;

  const FileInfo& info() const { return file_.info(); }
  modJudgeCode::SureCode code() const { return code_; }
  // Nothing for a text that is no listing.
  const ListingShape* shape() const { return shape_.get(); }

  // Reads on, some `bytes` or more. Returns false when all is read, or nothing more can be.
  bool ReadOn(size_t bytes);
  bool is_read() const { return is_read_; }
  // Bytes read so far.
  uint64_t read() const { return read_; }
  // Why the file could not be read to its end. A file that shrinks ends early without a failure.
  const Status& failure() const { return failure_; }

  // A line read so far is longer than what is shown of it.
  bool has_cut_lines() const { return has_cut_lines_; }

  // Known so far; the last one may be read up to its middle.
  int64_t lines() const { return lines_ + (carried_.empty() ? 0 : 1); }
  // Empty and zero for a text that is no listing.
  const std::vector<ListingBlock>& blocks() const;
  const ChangeCounts& counts() const;
  // Once all is read; nothing for a listing that ends without one.
  const std::optional<ListingSummary>& summary() const { return summary_; }

  // A line without its end; valid until the next call of anything here.
  struct Line {
    std::string_view bytes;
    bool is_cut = false;
  };
  // REQUIRES: line < lines().
  Line LineAt(int64_t line);
  LineText TextAt(int64_t line);
  // kOther for the lines of a text that is no listing, of a header and of a summary.
  RowKind KindAt(int64_t line);

  // The first row of the change that a line belongs to; the line itself for any other.
  int64_t FirstRowOf(int64_t line);
  // Behind the last row of the change that begins at a line.
  int64_t EndOfChange(int64_t first);
  // The kind of a row; of one that continues a change, that of its first row.
  RowKind ChangeAt(int64_t line);
  // What differs in a row of a changed pair; nothing in any other row.
  std::vector<Stretch> StretchesAt(int64_t line);
  // True for a row of a changed pair of which the listing shows nothing that differs: it stands
  // behind the columns of a side, or is spaces at the end.
  bool HidesDifference(int64_t line);
  // True for the last row of a line that fills the columns of a side: the listing may hold only the
  // beginning of that line. Never true for a vertical listing, which shows lines whole.
  bool MayBeCut(int64_t line, Side side);
  // What the rows of a change, or one row that is none, show of a side, in one line of UTF-8.
  // Nothing when they show nothing of it.
  std::optional<std::string> SideTextAt(int64_t first, Side side);

 private:
  // Where a part of the file begins, and its first line.
  struct Part {
    uint64_t begin;
    int64_t line;
  };
  struct LoadedPart {
    size_t index;
    std::vector<char> bytes;
    struct Place {
      size_t begin;
      size_t size;
      bool is_cut;
    };
    std::vector<Place> lines;
  };
  static constexpr size_t kPartBytes = size_t{1} << 16;

  ViewedFile(InputFile file, size_t most_shown) : file_(std::move(file)), most_shown_(most_shown) {}
  static Result<ViewedFile> Begin(InputFile file, size_t most_shown);

  void JudgeCode(std::string_view head);
  void FindShape(std::string_view head);
  size_t ReadBlock(uint64_t position, char* buffer, size_t capacity);
  size_t FindLineFeed(std::string_view bytes, size_t from) const;
  size_t unit() const;
  void TakeLine(uint64_t end, std::string_view bytes);
  void EndReading();
  const LoadedPart& Load(size_t index);
  void CutLines(LoadedPart& part, bool goes_on, int64_t lines) const;
  std::string_view WithoutCr(std::string_view line) const;
  std::vector<SjisText> RowsOfChange(int64_t first);
  const std::vector<Stretch>& DifferencesOf(int64_t first);

  InputFile file_;
  size_t most_shown_;
  modJudgeCode::SureCode code_ = modJudgeCode::SureCode::kSjis;
  std::unique_ptr<LineDecoder> decoder_;
  std::unique_ptr<ListingShape> shape_;
  std::unique_ptr<BlockFinder> finder_;
  std::vector<Part> parts_;
  std::string carried_;      // the bytes of the line that is being read, as many as are shown
  uint64_t line_begin_ = 0;  // where that line begins
  uint64_t read_ = 0;
  int64_t lines_ = 0;                                       // read to their ends
  int64_t body_end_ = std::numeric_limits<int64_t>::max();  // where the summary begins, if known
  bool is_read_ = false;
  bool has_cut_lines_ = false;
  Status failure_;
  std::optional<ListingSummary> summary_;
  // The changed pair looked at last, as it was when so many bytes of the file were read.
  struct ComparedPair {
    int64_t first = -1;
    uint64_t read = 0;
    std::vector<Stretch> stretches;
  };
  ComparedPair compared_;
  std::vector<LoadedPart> loaded_;  // those used last, the latest at the end
};

}  // namespace ledrix
