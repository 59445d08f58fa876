#include "charset/sjis_writer.h"

#include <algorithm>

namespace ledrix {

uint64_t SjisWriter::NextOrdinal() {
  // The byte is no trail byte, so there is no need to step by characters.
  const std::string_view unscanned = std::string_view(text_.bytes()).substr(scanned_);
  question_marks_ += static_cast<uint64_t>(std::count(unscanned.begin(), unscanned.end(), '?'));
  scanned_ = text_.size();
  return question_marks_ + 1;
}

}  // namespace ledrix
