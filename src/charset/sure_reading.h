// Judging input files by all of their bytes before they are read.
#pragma once

#include <optional>

#include "charset/charset_choice.h"
#include "charset/sure_judgement.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/native_path.h"
#include "run/run_services.h"

namespace ledrix {

// The option CharsetCode that has both files of a pair judged so.
inline constexpr const char* kSureAuto = "FULLAUTO(全体判定)";

// A file that was read once, for its judge.
struct JudgedFile {
  modJudgeCode::SureJudge judge;
  FileInfo seen;                  // as it was when that began
  std::optional<InputFile> kept;  // what a pipe held, to be read from its beginning
};

// Reads a file whole, in blocks; a stop request ends it early. Returns why it could not be read, or
// that it changed meanwhile.
Result<JudgedFile> JudgeFile(RunServices& services, const NativePath& path);
// The same outside a job. What a pipe held is lost.
Status JudgeFile(const NativePath& path, modJudgeCode::SureJudge& judge);

// How a file of this verdict is read; one that is left open is Shift_JIS.
CharsetChoice ChoiceOf(const modJudgeCode::SureVerdict& verdict);

}  // namespace ledrix
