// Runs the job that the job record describes.
#pragma once

#include "jobs/run_services.h"

namespace ledrix {

// Runs a text compare of one pair, with its CSV summary when that is wanted. How the job ended
// stands in the services afterwards.
void RunJob(RunServices& services);

}  // namespace ledrix
