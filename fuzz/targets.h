// Fuzz targets: functions that do something with any bytes and end the program when what must hold
// does not.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ledrix::fuzz {

struct Target {
  std::string_view name;
  void (*run)(std::string_view bytes);
  std::vector<std::string> starts;  // inputs from which all others are made
  int tries;                        // how many of these the tests make
};

// Every target there is. A new one is a function below and a row in targets.cpp.
const std::vector<Target>& Targets();

void JudgeTarget(std::string_view bytes);
void ConvertTarget(std::string_view bytes);
void PrepareTarget(std::string_view bytes);
void CompareTarget(std::string_view bytes);
void PairTarget(std::string_view bytes);
void DirInfoTarget(std::string_view bytes);
void DirCompareTarget(std::string_view bytes);
void SettingsTarget(std::string_view bytes);
void IniTarget(std::string_view bytes);
void PatternTarget(std::string_view bytes);
void RunLogTarget(std::string_view bytes);
void CommandLineTarget(std::string_view bytes);
void NamePatternTarget(std::string_view bytes);
void LauncherTarget(std::string_view bytes);

}  // namespace ledrix::fuzz
