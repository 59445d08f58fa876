// Reads an input file of a pair under the chosen charset, as Shift_JIS.
//
// A file that is not Shift_JIS is converted into a copy without a name, in the file's folder (a
// pipe's in the folder for temporary files): one line for each line of the file, Shift_JIS, CR LF.
// Listings call the copy by the file's path, "_" and the charset.
#pragma once

#include <optional>

#include "charset/charset_choice.h"
#include "charset/conversion_loss.h"
#include "charset/sure_reading.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/native_path.h"
#include "run/run_services.h"

namespace ledrix {

// One input file of a pair as the compare is to read it.
struct ReadInput {
  NativePath shown_path;          // what outputs call it
  std::optional<InputFile> copy;  // to be read in place of the file; nothing: the file itself
  std::optional<FileInfo> seen;   // the file as it was when reading began, if it did
  ConversionLoss loss;            // what became "?" in the copy
  std::string charset;            // as which it is read
  std::string found_by;           // how that was found
  bool is_hashed = false;         // all of its bytes went into the hash
};

// Converts one input file of the current pair when that is needed: not without a chosen charset,
// for a file that is Shift_JIS already, and for an empty one. Returns why the file could not be
// read or the copy not be written. A stop request ends it early without a failure. What is read
// goes into `hash`, if there is one; it is of use only when the result says so.
Result<ReadInput> ReadWithConversion(RunServices& services, const NativePath& path,
                                     Sha256* hash = nullptr);

// The same for a file that was judged as a whole and is to be read by this choice.
Result<ReadInput> ReadJudged(RunServices& services, const NativePath& path, JudgedFile judged,
                             const CharsetChoice& choice, Sha256* hash = nullptr);

}  // namespace ledrix
