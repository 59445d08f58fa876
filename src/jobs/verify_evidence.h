// Verifies the record of a job: that it is what was written, that the files it names are what they
// were, and that the same inputs give the same outputs again.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/native_path.h"
#include "run/run_services.h"

namespace ledrix {

struct VerifyRequest {
  std::vector<NativePath> records;
  // Files below the first folder are looked for below the second.
  std::vector<std::pair<NativePath, NativePath>> roots;
  bool reruns = true;
};

// Told one line for everything that was looked at: what it is, a tab, what was found, a tab, its
// path; and trouble, as for stderr.
struct VerifyReport {
  std::function<void(const std::string& line)> line;
  std::function<void(const std::string& line)> trouble;
};

// kNoDifference when all is as it was, kDifference when something changed, kTrouble when something
// could not be looked at. Outputs are written again in a folder for temporary files alone.
// `platform` yields meanwhile; `stopped` tells that it was asked to stop.
JobEnd VerifyEvidence(const VerifyRequest& request, PlatformServices& platform,
                      const std::function<bool()>& stopped, const VerifyReport& report);

}  // namespace ledrix
