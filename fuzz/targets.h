// Fuzz targets: functions that do something with any bytes and end the program when what must hold
// does not. What they start from lies in seeds/, a folder for each.
#pragma once

#include <string_view>

namespace ledrix::fuzz {

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
void RecordTarget(std::string_view bytes);
void ListingTarget(std::string_view bytes);

struct Target {
  std::string_view name;
  void (*run)(std::string_view bytes);
  int tries;  // how many inputs the tests make of the seeds and finds
};

inline constexpr Target kTargets[] = {
    {"judge", JudgeTarget, 4000},
    {"convert", ConvertTarget, 1000},
    {"prepare", PrepareTarget, 8000},
    {"compare", CompareTarget, 1000},
    {"pair", PairTarget, 800},
    {"dir-info", DirInfoTarget, 4000},
    {"dir-compare", DirCompareTarget, 1500},
    {"settings", SettingsTarget, 500},
    {"ini", IniTarget, 500},
    {"pattern", PatternTarget, 150},
    {"run-log", RunLogTarget, 500},
    {"command-line", CommandLineTarget, 8000},
    {"name-pattern", NamePatternTarget, 8000},
    {"launcher", LauncherTarget, 2000},
    {"record", RecordTarget, 2000},
    {"listing", ListingTarget, 2000},
};

}  // namespace ledrix::fuzz
