// The search step by step on two rings of slots, as slow and as plain as it can be: what every
// faster search must agree with.
#pragma once

#include <string>
#include <vector>

namespace ledrix::test {

// The decisions about two files in their order: "=" unchanged, "!" changed, "+" added, "-" deleted.
std::string ReferenceDecisions(const std::vector<std::string>& old_lines,
                               const std::vector<std::string>& new_lines, int window_lines,
                               int match_lines);

}  // namespace ledrix::test
