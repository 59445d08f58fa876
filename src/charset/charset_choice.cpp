#include "charset/charset_choice.h"

#include "charset/refute_judgement.h"

namespace ledrix {
namespace {

using modJudgeCode::CodeName;

const char* CharsetOf(CodeName code) {
  switch (code) {
    case CodeName::kSjis:
      return "Shift_JIS";
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

LineCutting CuttingOf(CharsetFamily family, CodeName code, std::string_view head) {
  switch (family) {
    case CharsetFamily::kUtf16:
      return head.substr(0, 2) == "\xFE\xFF" ? LineCutting::kUtf16Be : LineCutting::kUtf16Le;
    case CharsetFamily::kUtf16Le:
      return LineCutting::kUtf16Le;
    case CharsetFamily::kUtf16Be:
      return LineCutting::kUtf16Be;
    default:
      return code == CodeName::kUnicode ? LineCutting::kUtf16Le : LineCutting::kBytes;
  }
}

}  // namespace

std::unique_ptr<LineConverter> CharsetChoice::MakeConverter() const {
  return LineConverter::Make(
      charset, cutting == LineCutting::kUtf16Be ? ByteOrder::kBigEndian : ByteOrder::kLittleEndian);
}

CharsetChoice ChooseCharset(const std::string& charset_code, std::string_view head) {
  const CodeName code = modJudgeCode::FollowedVerdict(head);
  const std::string charset = charset_code == kFullAuto ? CharsetOf(code) : charset_code;
  return {charset, CuttingOf(FamilyOf(charset), code, head)};
}

}  // namespace ledrix
