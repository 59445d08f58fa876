// The judgement of a file's code, and its conversion under every kind of charset name.
#include <cmath>

#include "charset/charset_choice.h"
#include "charset/code_sequences.h"
#include "charset/judge_code.h"
#include "charset/read_with_conversion.h"
#include "charset/refute_judgement.h"
#include "support.h"
#include "targets.h"
#include "text/code_page_932.h"

namespace ledrix::fuzz {
namespace {

// Size of the line end at a position, 0 when there is none.
size_t EndAt(std::string_view bytes, size_t at, LineCutting cutting) {
  using namespace std::string_view_literals;
  const auto size_of = [rest = bytes.substr(at)](std::string_view cr, std::string_view lf) {
    if (rest.starts_with(lf)) return lf.size();
    if (!rest.starts_with(cr)) return size_t{0};
    return rest.substr(cr.size()).starts_with(lf) ? cr.size() + lf.size() : cr.size();
  };
  if (cutting == LineCutting::kBytes) return size_of("\r", "\n");
  if (cutting == LineCutting::kUtf16Le) return size_of("\r\0"sv, "\n\0"sv);
  return size_of("\0\r"sv, "\0\n"sv);
}

struct CutLine {
  std::string_view text;
  std::string_view end;
};

std::vector<CutLine> CutText(std::string_view bytes, LineCutting cutting) {
  std::vector<CutLine> lines;
  const size_t step = cutting == LineCutting::kUtf16Be ? 2 : 1;
  size_t start = 0;
  for (size_t at = 0; at < bytes.size();) {
    const size_t end = EndAt(bytes, at, cutting);
    if (end > 0) {
      lines.push_back({bytes.substr(start, at - start), bytes.substr(at, end)});
      start = at + end;
    }
    at += end > 0 ? end : step;
  }
  if (start < bytes.size()) lines.push_back({bytes.substr(start), {}});
  return lines;
}

// Line by line, each by a converter of its own, which no line before it can have changed.
void CheckLines(const CharsetChoice& choice, std::string_view bytes, std::string_view copy,
                const ConversionLoss& loss) {
  const std::unique_ptr<LineConverter> all = choice.MakeConverter();
  std::string expected;
  for (const CutLine& line : CutText(bytes, choice.cutting)) {
    const LinePosition position = expected.empty() ? LinePosition::kFirst : LinePosition::kLater;
    SjisText text;
    SjisText again;
    all->Convert(line.text, position, text);
    choice.MakeConverter()->Convert(line.text, position, again);
    Require(text == again, "a line is converted whatever stands before it");
    if (choice.cutting != LineCutting::kBytes && line.text.size() % 2 != 0) {
      all->NoteCutWithinUnit(line.end);
    }
    Require(EncodeSjis(DecodeSjis(text)) == text, "a converted line holds characters only");
    if (FamilyOf(choice.charset) == CharsetFamily::kUtf8 && IsValidIn(line.text, Utf8Sequence)) {
      const bool marked = position == LinePosition::kFirst && line.text.starts_with("\xEF\xBB\xBF");
      Require(EncodeSjis(line.text.substr(marked ? 3 : 0)) == text, "UTF-8 is encoded as it is");
    }
    expected += text.bytes() + "\r\n";
  }
  Require(copy == expected, "the copy is the lines of the file, one by one");
  Require(loss == all->loss() && loss.count() == all->loss().count() &&
              loss.first_line() == all->loss().first_line(),
          "the copy loses what its lines lose");
}

}  // namespace

void JudgeTarget(std::string_view bytes) {
  Input input(bytes);
  // The end of what is examined may lie anywhere in the text.
  const bool is_long = input.Number(0, 15, 0) == 1;
  const auto room = static_cast<size_t>(input.Number(1, 64, 1));
  std::string text(is_long ? modJudgeCode::kDecidingBytes - room : 0, 'a');
  text += input.Rest();
  const std::string_view head = std::string_view(text).substr(0, modJudgeCode::kDecidingBytes);
  Require(modJudgeCode::JudgeCode(text) == modJudgeCode::JudgeCode(head),
          "what lies behind the deciding bytes does not count");
  const modJudgeCode::CodeName followed = modJudgeCode::FollowedVerdict(head);
  Require(!ToText(followed).empty(), "a judgement has a name");
  if (text.empty() || is_long) return;
  using namespace modJudgeCode;
  for (const auto score : {ScoreJIS, ScoreUnicode, ScoreUTF8, ScoreUTF7, ScoreSJIS, ScoreEUC}) {
    Require(std::isfinite(score(text)), "a score is a number");
  }
  const bool is_utf8 = IsValidIn(text, Utf8Sequence) && text.find('\0') == std::string::npos;
  Require(!is_utf8 || followed != CodeName::kUnicode, "UTF-8 without 00 is not read as UTF-16");
}

void ConvertTarget(std::string_view bytes) {
  Input input(bytes);
  QuietRun run;
  run.options.CharsetCode = TakeCharset(input);
  const std::string_view text = input.Rest();
  const CharsetChoice choice = ChooseCharset(run.options.CharsetCode, text);
  const NativePath path = WorkFolder() + "text";
  WriteFile(path, text);
  Result<ReadInput> read = ReadWithConversion(run.services, path);
  Require(read.ok(), "a file can be read under every charset");
  const bool as_it_is = text.empty() || choice.NeedsNoConversion();
  Require(read.value().copy.has_value() != as_it_is, "what needs it is converted");
  if (as_it_is) return;
  std::string copy(4 * text.size() + 64, '\0');
  const Result<size_t> size = read.value().copy->Read(copy.data(), copy.size());
  Require(size.ok() && size.value() < copy.size(), "the copy can be read");
  copy.resize(size.value());
  CheckLines(choice, text, copy, read.value().loss);
}

}  // namespace ledrix::fuzz
