#include "charset/read_with_conversion.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "charset/judge_code.h"
#include "platform/files.h"
#include "platform/output_file.h"
#include "platform/temporary_copy.h"

namespace ledrix {
namespace {

constexpr int64_t kLinesPerReport = 10000;

// Bytes of many lines that are converted at once.
constexpr size_t kManyLines = size_t{1} << 15;
static_assert(kManyLines + kKnownRunSlack <= OutputFile::kMostToFill);

std::string_view LineFeedOf(LineCutting cutting) {
  switch (cutting) {
    case LineCutting::kUtf16Le:
      return {"\n\0", 2};
    case LineCutting::kUtf16Be:
      return {"\0\n", 2};
    case LineCutting::kBytes:
      break;
  }
  return "\n";
}

// One file on its way through the conversion.
class Conversion {
 public:
  Conversion(RunServices& services, const NativePath& path, InputFile& file)
      : services_(services), path_(path), file_(file), cutter_(file) {}

  Result<ReadInput> Run() {
    Judge();
    return Read();
  }

  // Of a file that was judged before: `is_kept` when it is what a pipe held.
  Result<ReadInput> Run(const CharsetChoice& choice, bool is_kept) {
    choice_ = choice;
    empty_ = cutter_.Peek(1).empty();
    is_kept_ = is_kept;
    return Read();
  }

 private:
  Result<ReadInput> Read() {
    if (const Status unread = cutter_.failure(); !unread.ok()) return unread.error();
    if (services_.job().StopRequested) return AsItIs();
    if (file_.info().kind == FileKind::kNull) return AsItIs();
    // A pipe can be read only once, so what was judged of it has to be kept in any case.
    if (is_regular() && (empty_ || choice_.NeedsNoConversion())) return AsItIs();
    converter_ = choice_.MakeConverter();
    if (converter_ == nullptr) return Error{ErrorKind::kCharset};
    if (services_.witness() != nullptr) converter_->loss().KeepFolded();
    services_.SetBarText(choice_.charset + " 変換中");
    if (services_.job().StopRequested) return AsItIs();
    return WriteCopy();
  }

  ReadInput AsItIs() const {
    ReadInput input{path_, std::nullopt, file_.info(), {}};
    input.charset = choice_.charset;
    return input;
  }
  bool is_regular() const { return !is_kept_ && file_.info().kind == FileKind::kRegular; }

  void Judge() {
    const std::string before = services_.bar_text();
    services_.SetBarText("文字コード判定中");
    const std::string_view head = cutter_.Peek(modJudgeCode::kDecidingBytes);
    empty_ = head.empty();
    choice_ = ChooseCharset(services_.options().CharsetCode, head);
    services_.SetBarText(before);
  }

  Result<ReadInput> WriteCopy() {
    const bool converts = !choice_.NeedsNoConversion();
    NativePath shown_path = converts ? path_ + ("_" + choice_.charset) : path_;
    const bool is_beside = is_regular() && !services_.job().rerun;
    Result<OutputFile> copy =
        CreateNamelessFile(is_beside ? DirOf(path_) : TemporaryFolder(), shown_path);
    if (!copy.ok()) return copy.error();
    if (!converts) {
      CopyBytes(copy.value());
    } else if (!ConvertLines(copy.value())) {
      return AsItIs();
    }
    if (const Status unread = cutter_.failure(); !unread.ok()) return unread.error();
    Result<InputFile> readable = ReadBack(std::move(copy.value()));
    if (!readable.ok()) return readable.error();
    services_.SetBarText("");
    ReadInput input{std::move(shown_path), std::move(readable.value()), file_.info(),
                    converts ? converter_->loss() : ConversionLoss()};
    input.charset = choice_.charset;
    input.is_hashed = true;
    return input;
  }

  void CopyBytes(OutputFile& copy) {
    for (std::string_view bytes; cutter_.NextBytes(bytes) && copy.failure().ok();)
      copy.Write(bytes);
  }

  // False when the job was stopped.
  bool ConvertLines(OutputFile& copy) {
    int64_t lines = 0;
    std::string_view bytes;
    while (copy.failure().ok()) {
      const int64_t many = ConvertManyLines(copy, kLinesPerReport - lines % kLinesPerReport);
      if (many == 0 && !cutter_.Next(choice_.cutting, bytes)) break;
      lines += many;
      if (many == 0) ConvertLine(bytes, lines++, copy);
      if (lines % kLinesPerReport == 0) {
        ReportPercent(cutter_.line_end(), file_.info().size);
        if (services_.job().StopRequested) return false;
      }
    }
    ReportPercent(1, 1);
    return true;
  }

  // Converts `most` of the next lines or fewer, as long as nothing is lost; their number. Where
  // that fails it is not tried again for a while.
  int64_t ConvertManyLines(OutputFile& copy, int64_t most) {
    constexpr int64_t kLongestPause = 4096;
    if (converter_->line_feed() != LineFeedOf(choice_.cutting)) return 0;
    if (lines_to_pause_ > 0 && lines_to_pause_-- > 0) return 0;
    const std::string_view bytes = cutter_.NextLines(kManyLines);
    const size_t room = bytes.size() + kKnownRunSlack;
    const ConvertedLines many = converter_->ConvertLines(bytes, most, copy.WriteInPlace(room));
    copy.GiveBack(room - many.written);
    if (many.lines > 0) cutter_.TakeLines(many.read, 2 * converter_->line_feed().size());
    lines_to_pause_ = pause_ = many.is_good ? 0 : std::min(2 * pause_ + 1, kLongestPause);
    return many.lines;
  }

  void ConvertLine(std::string_view bytes, int64_t lines_before, OutputFile& copy) {
    text_.Clear();
    converter_->Convert(bytes, lines_before == 0 ? LinePosition::kFirst : LinePosition::kLater,
                        text_);
    if (choice_.cutting != LineCutting::kBytes && bytes.size() % 2 != 0) {
      converter_->NoteCutWithinUnit(cutter_.end_bytes());
    }
    text_.AppendCode('\r');
    text_.AppendCode('\n');
    copy.Write(text_.bytes());
  }

  void ReportPercent(uint64_t done, uint64_t total) {
    const double share = total > 1 ? static_cast<double>(done - 1) / static_cast<double>(total - 1)
                                   : static_cast<double>(total);
    const auto percent = std::lround(std::min(share, 1.0) * 100);
    services_.SetBarText(choice_.charset + " 変換中 ･･･ " + std::to_string(percent) + "%");
  }

  RunServices& services_;
  const NativePath& path_;
  InputFile& file_;
  LineCutter cutter_;
  std::unique_ptr<LineConverter> converter_;
  CharsetChoice choice_;
  SjisText text_;      // of one line
  int64_t pause_ = 0;  // lines converted one by one after the last attempt at many
  int64_t lines_to_pause_ = 0;
  bool empty_ = false;
  bool is_kept_ = false;
};

}  // namespace

Result<ReadInput> ReadWithConversion(RunServices& services, const NativePath& path, Sha256* hash) {
  const std::string& code = services.options().CharsetCode;
  if (code.empty()) {
    ReadInput input{path, std::nullopt, std::nullopt, {}};
    input.charset = "Shift_JIS";
    input.found_by = "無変換";
    return input;
  }
  Result<InputFile> file = InputFile::Open(path);
  if (!file.ok()) return file.error();
  services.platform().YieldBetweenBlocks(file.value());
  if (hash != nullptr) file.value().HashInto(*hash);
  Result<ReadInput> read = Conversion(services, path, file.value()).Run();
  if (read.ok()) read.value().found_by = code == kFullAuto ? "先頭から判定" : "指定";
  return read;
}

Result<ReadInput> ReadJudged(RunServices& services, const NativePath& path, JudgedFile judged,
                             const CharsetChoice& choice, Sha256* hash) {
  const bool is_kept = judged.kept.has_value();
  if (is_kept && choice.NeedsNoConversion()) {
    ReadInput input{path, std::move(judged.kept), judged.seen, {}};
    input.charset = choice.charset;
    return input;
  }
  Result<InputFile> file = is_kept ? std::move(*judged.kept) : InputFile::Open(path);
  if (!file.ok()) return file.error();
  services.platform().YieldBetweenBlocks(file.value());
  if (hash != nullptr) file.value().HashInto(*hash);
  Result<ReadInput> read = Conversion(services, path, file.value()).Run(choice, is_kept);
  if (read.ok()) read.value().seen = judged.seen;
  return read;
}

}  // namespace ledrix
