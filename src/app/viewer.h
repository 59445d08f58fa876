// "ledrix --view" and "ledrix --pdf".
#pragma once

#include <string>
#include <vector>

namespace ledrix {

// Shows readers of the files and returns the exit status when all were closed. REQUIRES: a display
// answers.
int RunViewer(const std::vector<std::string>& files, int& argc, char** argv);

// Writes listings as PDF files, without a display; `arguments` are those behind "--pdf". Returns
// the exit status.
int RunPdf(const std::vector<std::string>& arguments, int& argc, char** argv);

}  // namespace ledrix
