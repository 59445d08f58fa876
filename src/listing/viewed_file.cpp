#include "listing/viewed_file.h"

#include <algorithm>
#include <cstring>

#include "charset/refute_judgement.h"
#include "platform/temporary_copy.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

using modJudgeCode::CodeName;
using modJudgeCode::SureCode;

constexpr size_t kJudgedBytes = size_t{1} << 22;
constexpr size_t kBlockBytes = size_t{1} << 18;
constexpr size_t kLoadedParts = 8;

SureCode ToSureCode(CodeName code) {
  switch (code) {
    case CodeName::kUnicode:
      return SureCode::kUtf16Le;
    case CodeName::kJis:
      return SureCode::kJis;
    case CodeName::kUtf7:
      return SureCode::kUtf7;
    case CodeName::kUtf8:
      return SureCode::kUtf8;
    case CodeName::kEuc:
      return SureCode::kEuc;
    case CodeName::kSjis:
      break;
  }
  return SureCode::kSjis;
}

std::vector<SjisView> ViewsOf(const std::vector<SjisText>& texts) {
  return {texts.begin(), texts.end()};
}

}  // namespace

Result<ViewedFile> ViewedFile::Open(const NativePath& path, size_t most_shown) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (!info.ok()) return info.error();
  if (const Status refused = RefuseIrregular(info.value()); !refused.ok()) return refused.error();
  Result<InputFile> file = InputFile::OpenRegular(path);
  if (!file.ok()) return file.error();
  return Begin(std::move(file.value()), most_shown);
}

Result<ViewedFile> ViewedFile::OpenCopy(InputFile source, const NativePath& shown,
                                        size_t most_shown) {
  Result<OutputFile> copy = CreateNamelessFile(TemporaryFolder(), shown);
  if (!copy.ok()) return copy.error();
  std::vector<char> block(kBlockBytes);
  while (copy.value().failure().ok()) {
    const Result<size_t> count = source.Read(block.data(), block.size());
    if (!count.ok()) return count.error();
    if (count.value() == 0) break;
    copy.value().Write({block.data(), count.value()});
  }
  Result<InputFile> file = ReadBack(std::move(copy.value()));
  if (!file.ok()) return file.error();
  return Begin(std::move(file.value()), most_shown);
}

Result<ViewedFile> ViewedFile::Begin(InputFile file, size_t most_shown) {
  ViewedFile viewed(std::move(file), most_shown);
  std::vector<char> head(std::min<uint64_t>(kJudgedBytes, viewed.info().size));
  const size_t size = viewed.ReadBlock(0, head.data(), head.size());
  if (!viewed.failure_.ok()) return viewed.failure_.error();
  viewed.parts_.push_back({0, 0});
  viewed.FindShape({head.data(), size});
  if (viewed.shape() == nullptr) viewed.JudgeCode({head.data(), size});
  return viewed;
}

void ViewedFile::JudgeCode(std::string_view head) {
  modJudgeCode::SureJudge judge;
  // A line that the end of these bytes cuts is nothing to judge by.
  const size_t last = head.size() < kJudgedBytes ? head.size() : head.rfind('\n');
  judge.Add(head.substr(0, last));
  judge.Finish();
  const std::string_view deciding = head.substr(0, modJudgeCode::kDecidingBytes);
  code_ = judge.Verdict().code.value_or(ToSureCode(modJudgeCode::FollowedVerdict(deciding)));
  decoder_ = std::make_unique<LineDecoder>(code_);
}

void ViewedFile::FindShape(std::string_view bytes) {
  std::vector<SjisView> lines;
  while (lines.size() < kMostHeaderLines && !bytes.empty()) {
    const size_t end = bytes.find("\r\n");
    if (end == std::string_view::npos) break;
    lines.push_back(SjisView::FromBytes(bytes.substr(0, end)));
    bytes.remove_prefix(end + 2);
  }
  std::optional<ListingShape> shape = ReadShape(lines);
  if (!shape) return;
  shape_ = std::make_unique<ListingShape>(std::move(*shape));
  finder_ = std::make_unique<BlockFinder>(*shape_);
}

size_t ViewedFile::ReadBlock(uint64_t position, char* buffer, size_t capacity) {
  size_t size = 0;
  while (size < capacity) {
    const Result<size_t> count = file_.ReadAt(position + size, buffer + size, capacity - size);
    if (!count.ok()) {
      failure_.KeepFirst(count.error());
      break;
    }
    if (count.value() == 0) break;
    size += count.value();
  }
  return size;
}

size_t ViewedFile::unit() const {
  return code_ == SureCode::kUtf16Le || code_ == SureCode::kUtf16Be ? 2 : 1;
}

// The first byte of a line feed, or npos. `bytes` begin with a whole unit.
size_t ViewedFile::FindLineFeed(std::string_view bytes, size_t from) const {
  if (unit() == 1) return bytes.find('\n', from);
  const bool big = code_ == SureCode::kUtf16Be;
  for (size_t at = from; at + 1 < bytes.size(); at += 2) {
    if (bytes[at + (big ? 1 : 0)] == '\n' && bytes[at + (big ? 0 : 1)] == '\0') return at;
  }
  return std::string_view::npos;
}

std::string_view ViewedFile::WithoutCr(std::string_view line) const {
  const std::string_view cr = unit() == 1                   ? std::string_view("\r", 1)
                              : code_ == SureCode::kUtf16Be ? std::string_view("\0\r", 2)
                                                            : std::string_view("\r\0", 2);
  if (line.ends_with(cr)) line.remove_suffix(cr.size());
  return line;
}

bool ViewedFile::ReadOn(size_t bytes) {
  if (is_read_) return false;
  std::vector<char> buffer(kBlockBytes);
  for (size_t done = 0; done < bytes;) {
    const size_t size = ReadBlock(read_, buffer.data(), buffer.size());
    std::string_view block(buffer.data(), size);
    done += size;
    while (!block.empty()) {
      const size_t found = FindLineFeed(block, 0);
      const size_t taken = found == std::string_view::npos ? block.size() : found + unit();
      const std::string_view piece = block.substr(0, std::min(found, block.size()));
      read_ += taken;
      block.remove_prefix(taken);
      if (found == std::string_view::npos || !carried_.empty()) {
        carried_.append(piece.substr(0, most_shown_ - std::min(most_shown_, carried_.size())));
      }
      if (found != std::string_view::npos) TakeLine(read_, carried_.empty() ? piece : carried_);
    }
    if (size < buffer.size()) {
      EndReading();
      return false;
    }
  }
  return true;
}

// `end` is behind the line feed.
void ViewedFile::TakeLine(uint64_t end, std::string_view bytes) {
  // All bytes of a line are counted here, those of its end included.
  if (end - line_begin_ > most_shown_ + 2 * unit()) has_cut_lines_ = true;
  if (finder_) finder_->Add(SjisView::FromBytes(WithoutCr(bytes)));
  carried_.clear();
  line_begin_ = end;
  ++lines_;
  if (end - parts_.back().begin >= kPartBytes) parts_.push_back({end, lines_});
}

void ViewedFile::EndReading() {
  if (line_begin_ < read_) TakeLine(read_, std::string(carried_));
  is_read_ = true;
  if (!shape_ || lines_ < shape_->header_lines) return;
  std::vector<SjisText> last;
  for (int64_t line = std::max<int64_t>(0, lines_ - static_cast<int64_t>(kMostSummaryLines));
       line < lines_; ++line) {
    last.push_back(SjisText(SjisView::FromBytes(LineAt(line).bytes)));
  }
  summary_ = ReadSummary(*shape_, ViewsOf(last));
  // The line of the simple form has spaces where rows have their marks.
  if (summary_) body_end_ = lines_ - (shape_->style.simple ? 1 : 3);
}

const std::vector<ListingBlock>& ViewedFile::blocks() const {
  static const std::vector<ListingBlock> kNone;
  return finder_ ? finder_->blocks() : kNone;
}

const ChangeCounts& ViewedFile::counts() const {
  static const ChangeCounts kNone;
  return finder_ ? finder_->counts() : kNone;
}

// Cuts a part into its lines. The last one may be longer than what is held of it.
void ViewedFile::CutLines(LoadedPart& part, bool goes_on, int64_t lines) const {
  const std::string_view bytes(part.bytes.data(), part.bytes.size());
  size_t begin = 0;
  while (static_cast<int64_t>(part.lines.size()) < lines) {
    const size_t found = begin < bytes.size() ? FindLineFeed(bytes, begin) : std::string_view::npos;
    const bool is_last = found == std::string_view::npos;
    const std::string_view line =
        begin < bytes.size() ? bytes.substr(begin, (is_last ? bytes.size() : found) - begin)
                             : std::string_view();
    const std::string_view text = is_last && goes_on ? line : WithoutCr(line);
    const bool is_cut = text.size() > most_shown_ || (is_last && goes_on);
    part.lines.push_back({begin, std::min(text.size(), most_shown_), is_cut});
    begin = is_last ? bytes.size() : found + unit();
  }
}

const ViewedFile::LoadedPart& ViewedFile::Load(size_t index) {
  const auto found = std::find_if(loaded_.begin(), loaded_.end(),
                                  [index](const LoadedPart& part) { return part.index == index; });
  if (found != loaded_.end()) {
    std::rotate(found, found + 1, loaded_.end());
    return loaded_.back();
  }
  const bool is_last = index + 1 == parts_.size();
  const uint64_t begin = parts_[index].begin;
  const uint64_t end = is_last ? line_begin_ : parts_[index + 1].begin;
  const uint64_t wanted = std::min<uint64_t>(end - begin, kPartBytes + most_shown_ + 4);
  LoadedPart part{index, std::vector<char>(wanted), {}};
  part.bytes.resize(ReadBlock(begin, part.bytes.data(), part.bytes.size()));
  CutLines(part, wanted < end - begin,
           (is_last ? lines_ : parts_[index + 1].line) - parts_[index].line);
  if (loaded_.size() == kLoadedParts) loaded_.erase(loaded_.begin());
  loaded_.push_back(std::move(part));
  return loaded_.back();
}

ViewedFile::Line ViewedFile::LineAt(int64_t line) {
  if (line == lines_) return {carried_, true};
  const auto behind =
      std::upper_bound(parts_.begin(), parts_.end(), line,
                       [](int64_t wanted, const Part& part) { return wanted < part.line; });
  const auto index = static_cast<size_t>(behind - parts_.begin()) - 1;
  const auto place = static_cast<size_t>(line - parts_[index].line);
  // It was loaded while it was the last part, and has grown since.
  std::erase_if(loaded_, [&](const LoadedPart& part) {
    return part.index == index && part.lines.size() <= place;
  });
  const LoadedPart& part = Load(index);
  const LoadedPart::Place& at = part.lines[place];
  return {{part.bytes.data() + at.begin, at.size}, at.is_cut};
}

LineText ViewedFile::TextAt(int64_t line) {
  const std::string_view bytes = LineAt(line).bytes;
  return shape_ ? DecodeRow(*shape_, SjisView::FromBytes(bytes))
                : decoder_->Decode(bytes, line == 0);
}

RowKind ViewedFile::KindAt(int64_t line) {
  if (!shape_ || line < shape_->header_lines || line >= body_end_) return RowKind::kOther;
  return KindOfRow(*shape_, SjisView::FromBytes(LineAt(line).bytes));
}

int64_t ViewedFile::FirstRowOf(int64_t line) {
  int64_t first = line;
  const int64_t most = static_cast<int64_t>(kMostRowsOfLine);
  while (first > 0 && line - first < most && KindAt(first) == RowKind::kContinued) --first;
  return EndOfChange(first) > line ? first : line;
}

int64_t ViewedFile::EndOfChange(int64_t first) {
  const RowKind kind = KindAt(first);
  int64_t end = first + 1;
  if (kind != RowKind::kChanged && kind != RowKind::kAdded && kind != RowKind::kDeleted) return end;
  const int64_t most = static_cast<int64_t>(kMostRowsOfLine);
  while (end < lines_ && end - first < most && KindAt(end) == RowKind::kContinued) ++end;
  return end;
}

RowKind ViewedFile::ChangeAt(int64_t line) {
  const RowKind kind = KindAt(line);
  return kind == RowKind::kContinued ? KindAt(FirstRowOf(line)) : kind;
}

std::vector<SjisText> ViewedFile::RowsOfChange(int64_t first) {
  std::vector<SjisText> rows;
  const int64_t end = EndOfChange(first);
  for (int64_t row = first; row < end; ++row) {
    rows.push_back(SjisText(SjisView::FromBytes(LineAt(row).bytes)));
  }
  return rows;
}

std::vector<Stretch> ViewedFile::StretchesAt(int64_t line) {
  if (!shape_) return {};
  const int64_t first = FirstRowOf(line);
  if (KindAt(first) != RowKind::kChanged) return {};
  std::vector<Stretch> stretches = DifferencesOf(first);
  std::erase_if(stretches, [&](const Stretch& stretch) {
    return stretch.row != static_cast<size_t>(line - first);
  });
  return stretches;
}

// A pair is asked for once for each of its rows and, on paper, for each piece of them.
const std::vector<Stretch>& ViewedFile::DifferencesOf(int64_t first) {
  if (compared_.first != first || compared_.read != read_) {
    compared_ = {first, read_, FindDifferences(*shape_, ViewsOf(RowsOfChange(first)))};
  }
  return compared_.stretches;
}

bool ViewedFile::HidesDifference(int64_t line) {
  if (!shape_ || line >= lines_) return false;
  const int64_t first = FirstRowOf(line);
  return KindAt(first) == RowKind::kChanged && DifferencesOf(first).empty();
}

bool ViewedFile::MayBeCut(int64_t line, Side side) {
  if (!shape_ || shape_->style.vertical) return false;
  const RowKind kind = KindAt(line);
  const auto row = SjisView::FromBytes(LineAt(line).bytes);
  const std::optional<SideColumns> columns = TextColumns(*shape_, kind, row, side);
  if (!columns) return false;
  const SjisView text = row.From(columns->begin).First(columns->end - columns->begin);
  // The last column is free where a double-byte character did not fit.
  const bool is_full = TrimRight(text).size() + 1 >= shape_->format.text_width;
  return is_full && EndOfChange(FirstRowOf(line)) == line + 1;
}

std::optional<std::string> ViewedFile::SideTextAt(int64_t first, Side side) {
  if (!shape_) return std::nullopt;
  SjisText text;
  bool shows = false;
  RowKind kind = KindAt(first);
  size_t blank = 0;  // columns of rows that show nothing, unless something follows
  for (const SjisText& row : RowsOfChange(first)) {
    const std::optional<SideColumns> columns = TextColumns(*shape_, kind, row, side);
    if (columns) {
      const SjisView piece =
          SjisView(row).From(columns->begin).First(columns->end - columns->begin);
      text.Append(std::exchange(blank, 0), ' ');
      // A space ends the row where a double-byte character did not fit.
      const bool is_filled = shows && SjisCharSize(piece, 0) == 2 && text.bytes().ends_with(' ');
      text = (is_filled ? SjisText(SjisView(text).First(text.size() - 1)) : text) + piece;
      shows = true;
    } else {
      blank += shape_->format.text_width;
    }
    kind = RowKind::kContinued;
  }
  if (!shows) return std::nullopt;
  return DecodeSjis(shape_->style.vertical ? SjisView(text) : TrimRight(text));
}

}  // namespace ledrix
