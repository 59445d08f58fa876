#include "charset/read_with_conversion.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "charset/judge_code.h"
#include "charset/line_converter.h"
#include "charset/line_cutter.h"
#include "platform/files.h"
#include "platform/output_guard.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

using modJudgeCode::CodeName;

constexpr const char* kNoConversion = "Shift_JIS";
constexpr int64_t kLinesPerReport = 10000;

const char* CharsetOf(CodeName code) {
  switch (code) {
    case CodeName::kSjis:
      return kNoConversion;
    case CodeName::kJis:
      return "ISO-2022-JP";
    case CodeName::kEuc:
      return "EUC-JP";
    case CodeName::kUnicode:
      return "UNICODE";
    case CodeName::kUtf7:
      return "UTF-7";
    case CodeName::kUtf8:
      return "UTF-8";
  }
  return "_autodetect";
}

bool IsUtf16Name(const std::string& charset) {
  return charset.rfind("UTF16", 0) == 0 || charset.rfind("UTF-16", 0) == 0;
}

// One file on its way through the conversion.
class Conversion {
 public:
  Conversion(RunServices& services, const std::vector<NativePath>& inputs, NativePath& path,
             InputFile& file)
      : services_(services), inputs_(inputs), path_(path), file_(file), cutter_(file) {}

  Status Run() {
    Judge();
    if (const Status unread = cutter_.failure(); !unread.ok()) return unread;
    if (services_.job().StopRequested) return Status();
    // A pipe can be read only once, so what was judged of it has to be kept in any case.
    if (is_regular() && (empty_ || charset_ == kNoConversion)) return Status();
    converter_ = LineConverter::Make(charset_);
    if (converter_ == nullptr) return Error{ErrorKind::kCharset};
    services_.SetBarText(charset_ + " 変換中");
    if (services_.job().StopRequested) return Status();
    return WriteCopy();
  }

 private:
  bool is_regular() const { return file_.info().kind == FileKind::kRegular; }

  void Judge() {
    const std::string before = services_.bar_text();
    services_.SetBarText("文字コード判定中");
    const std::string_view head = cutter_.Peek(modJudgeCode::kDecidingBytes);
    empty_ = head.empty();
    const CodeName code = modJudgeCode::JudgeCode(head);
    services_.SetBarText(before);
    const std::string& chosen = services_.options().CharsetCode;
    charset_ = chosen == kFullAuto ? CharsetOf(code) : chosen;
    const bool by_name = chosen != kFullAuto && IsUtf16Name(charset_);
    cutting_ = code == CodeName::kUnicode || by_name ? LineCutting::kUtf16 : LineCutting::kBytes;
  }

  // The files of the pair must not be overwritten by a copy that happens to have their name.
  Status RefuseCopy(const NativePath& copy) {
    const JobFiles& files = services_.job().files;
    std::vector<NativePath> outputs = {files.OutPath, files.SbnPath, files.MrgPath};
    if (services_.csv().is_open()) outputs.push_back(services_.csv().path());
    return RefuseOutput(copy, inputs_, outputs, services_.job().ProtectedFiles);
  }

  Status WriteCopy() {
    const std::string suffix = "_" + charset_;
    const NativePath copy_path = is_regular() ? path_ + suffix : UnusedTemporaryPath(suffix);
    if (const Status refused = RefuseCopy(copy_path); !refused.ok()) return refused;
    services_.temp_files().Add(copy_path);
    Result<OutputFile> copy = OutputFile::CreateTemporary(copy_path);
    if (!copy.ok()) return copy.error();
    if (charset_ == kNoConversion) {
      CopyBytes(copy.value());
    } else if (!ConvertLines(copy.value())) {
      return Status();
    }
    if (const Status unread = cutter_.failure(); !unread.ok()) return unread;
    if (const Status unwritten = copy.value().Close(); !unwritten.ok()) return unwritten;
    path_ = copy_path;
    services_.SetBarText("");
    return Status();
  }

  void CopyBytes(OutputFile& copy) {
    for (std::string_view bytes; cutter_.NextBytes(bytes) && copy.failure().ok();)
      copy.Write(bytes);
  }

  // False when the job was stopped.
  bool ConvertLines(OutputFile& copy) {
    SjisText text;
    int64_t lines = 0;
    for (std::string_view bytes; cutter_.Next(cutting_, bytes) && copy.failure().ok();) {
      text.Clear();
      converter_->Convert(bytes, lines == 0 ? LinePosition::kFirst : LinePosition::kLater, text);
      copy.Write(text.bytes());
      copy.Write("\r\n");
      if (++lines % kLinesPerReport == 0) {
        ReportPercent(cutter_.line_end(), file_.info().size);
        if (services_.job().StopRequested) return false;
      }
    }
    ReportPercent(1, 1);
    return true;
  }

  void ReportPercent(uint64_t done, uint64_t total) {
    const double share = total > 1 ? static_cast<double>(done - 1) / static_cast<double>(total - 1)
                                   : static_cast<double>(total);
    const auto percent = std::lround(std::min(share, 1.0) * 100);
    services_.SetBarText(charset_ + " 変換中 ･･･ " + std::to_string(percent) + "%");
  }

  RunServices& services_;
  const std::vector<NativePath>& inputs_;
  NativePath& path_;
  InputFile& file_;
  LineCutter cutter_;
  std::unique_ptr<LineConverter> converter_;
  std::string charset_;
  LineCutting cutting_ = LineCutting::kBytes;
  bool empty_ = false;
};

}  // namespace

Status ReadWithConversion(RunServices& services, const std::vector<NativePath>& inputs,
                          NativePath& path) {
  if (services.options().CharsetCode.empty()) return Status();
  Result<InputFile> file = InputFile::Open(path);
  if (!file.ok()) return file.error();
  services.platform().YieldBetweenBlocks(file.value());
  return Conversion(services, inputs, path, file.value()).Run();
}

}  // namespace ledrix
