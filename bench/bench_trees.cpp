#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

#include "bench_inputs.h"

namespace ledrix::bench {
namespace {

constexpr int64_t kFilesPerFolder = 100;

bool WriteFile(const std::string& path, const std::string& bytes, time_t time) {
  std::ofstream(path, std::ios::binary) << bytes;
  const timespec times[2] = {{time, 0}, {time, 0}};
  return utimensat(AT_FDCWD, path.c_str(), times, 0) == 0;
}

std::string TreeFolder(int64_t file) {
  const int64_t number = file / kFilesPerFolder;
  return "/d" + std::to_string(number / 20) + "/業務" + std::to_string(number % 20);
}

bool WriteKeyFiles(const std::string& stem, const std::vector<std::string>& names) {
  std::ofstream records(stem + ".ddf", std::ios::binary);
  std::ofstream keys(stem, std::ios::binary);
  records << "\\root\r\n";
  for (const std::string& name : names) {
    records << "\\LIB\\," << name << ",2024/03/09 14:05:07,100\r\n";
    keys << "\\LIB\\" << name << "\n";
  }
  records.close();
  keys.close();
  return records.good() && keys.good();
}

}  // namespace

bool MakeTrees(const std::string& folder, int64_t files) {
  constexpr time_t kTime = 1709960707;
  std::string lines;
  for (int i = 0; i < 200; ++i) {
    lines += std::to_string(100100 + i * 100) + "     MOVE WK-A TO WK-B" + std::to_string(i % 10) +
             ".  ADD 1 TO WK-C.\r\n";
  }
  bool good = true;
  for (const char* side : {"old", "new"}) {
    const std::string tree = folder + "/trees." + side;
    const std::string pairs = folder + "/pairs." + side;
    std::filesystem::create_directories(pairs);
    const time_t pair_time = kTime + (side[0] == 'n' ? 60 : 0);
    for (int64_t i = 0; i < files; ++i) {
      if (i % kFilesPerFolder == 0) std::filesystem::create_directories(tree + TreeFolder(i));
      const std::string name = "/PROG" + std::to_string(i) + ".CBL";
      std::string path = tree + TreeFolder(i);
      path += name;
      good = WriteFile(path, std::string(i % 50, 'x'), kTime + i) && good;
      if (i % 100 == 0) good = WriteFile(pairs + name, lines, pair_time) && good;
    }
  }
  return good;
}

bool MakeKeys(const std::string& folder, int64_t records) {
  std::mt19937_64 random(932);
  bool good = true;
  for (const int side : {0, 1}) {
    std::vector<std::string> names;
    names.reserve(static_cast<size_t>(records));
    for (int64_t i = 0; i < records; ++i) {
      const int64_t number = i + side * records / 2;
      names.push_back("PROG" + std::to_string(number * 2654435761 % 4294967296) + "_" +
                      std::to_string(number) + ".CBL");
    }
    std::shuffle(names.begin(), names.end(), random);
    good = WriteKeyFiles(folder + (side == 0 ? "/keys.old" : "/keys.new"), names) && good;
  }
  return good;
}

}  // namespace ledrix::bench
