#include "stepcount/line_counter.h"

#include <cstring>
#include <memory>

namespace ledrix::modStep {

Result<int64_t> CountFileLines(RunServices& services, const NativePath& path) {
  constexpr size_t kBlockSize = size_t{1} << 17;
  Result<InputFile> file = InputFile::Open(path);
  if (!file.ok()) return file.error();
  services.platform().YieldBetweenBlocks(file.value());
  const auto buffer = std::make_unique_for_overwrite<char[]>(kBlockSize);
  int64_t count = 0;
  bool in_line = false;       // bytes of a line that has not ended yet were read
  bool after_return = false;  // the last byte read was a CR
  while (true) {
    const Result<size_t> size = file.value().Read(buffer.get(), kBlockSize);
    if (!size.ok()) return size.error();
    if (size.value() == 0) break;
    const char* at = buffer.get();
    const char* const end = at + size.value();
    if (after_return && *at == '\n') ++at;
    after_return = false;
    while (at < end) {
      const void* const found = std::memchr(at, '\r', static_cast<size_t>(end - at));
      in_line = found == nullptr;
      if (in_line) break;
      if (services.YieldAndAskStop()) return int64_t{0};
      ++count;
      at = static_cast<const char*>(found) + 1;
      after_return = at == end;
      if (at < end && *at == '\n') ++at;
    }
  }
  if (services.YieldAndAskStop()) return int64_t{0};
  if (const Status changed = CheckUnchanged(path, file.value().info()); !changed.ok()) {
    return changed.error();
  }
  return count + (in_line ? 1 : 0);
}

}  // namespace ledrix::modStep
