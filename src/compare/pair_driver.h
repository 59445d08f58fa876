// Compares one pair of files from start to end: the skip rule, the outputs, the compare itself,
// and the one-line result with its CSV row.
#pragma once

#include "run/run_services.h"

namespace ledrix::modComp {

// Compares the pair that the job record describes and hands its result line to AddResultLines.
//
// The user is told of inputs that cannot be opened and of outputs that cannot be created; of
// anything that fails later a trouble line tells, and the pair's outputs are removed then. How the
// pair ended is noted in the services.
PairEnd ComparePair(RunServices& services);

}  // namespace ledrix::modComp
