#include "platform/version.h"

namespace ledrix {

const char* ProgramVersion() {
  return LEDRIX_VERSION;
}

}  // namespace ledrix
