#include "charset/sure_reading.h"

#include <functional>
#include <memory>

#include "platform/output_file.h"
#include "platform/temporary_copy.h"

namespace ledrix {
namespace {

using modJudgeCode::SureCode;
using modJudgeCode::SureJudge;

// Hands every block of a file to `take`, until that is false.
Status ForEachBlock(InputFile& file, const std::function<bool(std::string_view)>& take) {
  constexpr size_t kBlockToJudge = size_t{1} << 18;
  const auto block = std::make_unique_for_overwrite<char[]>(kBlockToJudge);
  while (true) {
    const Result<size_t> size = file.Read(block.get(), kBlockToJudge);
    if (!size.ok()) return size.error();
    if (size.value() == 0 || !take({block.get(), size.value()})) return {};
  }
}

}  // namespace

Result<JudgedFile> JudgeFile(RunServices& services, const NativePath& path) {
  Result<InputFile> file = InputFile::Open(path);
  if (!file.ok()) return file.error();
  services.platform().YieldBetweenBlocks(file.value());
  JudgedFile judged;
  judged.seen = file.value().info();
  std::optional<OutputFile> copy;
  if (judged.seen.kind != FileKind::kRegular && judged.seen.kind != FileKind::kNull) {
    Result<OutputFile> made = CreateNamelessFile(TemporaryFolder(), path);
    if (!made.ok()) return made.error();
    copy = std::move(made.value());
  }
  const Status unread = ForEachBlock(file.value(), [&](std::string_view block) {
    judged.judge.Add(block);
    if (copy) copy->Write(block);
    return !services.job().StopRequested;
  });
  if (!unread.ok()) return unread.error();
  judged.judge.Finish();
  if (copy) {
    Result<InputFile> kept = ReadBack(std::move(*copy));
    if (!kept.ok()) return kept.error();
    judged.kept = std::move(kept.value());
  }
  if (const Status changed = CheckUnchanged(path, judged.seen); !changed.ok()) {
    return changed.error();
  }
  return judged;
}

Status JudgeFile(const NativePath& path, SureJudge& judge) {
  Result<InputFile> file = InputFile::Open(path);
  if (!file.ok()) return file.error();
  Status failure = ForEachBlock(file.value(), [&](std::string_view block) {
    judge.Add(block);
    return true;
  });
  judge.Finish();
  failure.KeepFirst(CheckUnchanged(path, file.value().info()));
  return failure;
}

CharsetChoice ChoiceOf(const modJudgeCode::SureVerdict& verdict) {
  const SureCode code = verdict.code.value_or(SureCode::kSjis);
  switch (code) {
    case SureCode::kAscii:
    case SureCode::kSjis:
      return {"Shift_JIS", LineCutting::kBytes};
    case SureCode::kUtf16Le:
      return {CharsetNameOf(code), LineCutting::kUtf16Le};
    case SureCode::kUtf16Be:
      return {CharsetNameOf(code), LineCutting::kUtf16Be};
    default:
      return {CharsetNameOf(code), LineCutting::kBytes};
  }
}

}  // namespace ledrix
