#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
  setenv("TZ", "Asia/Tokyo", 1);
  tzset();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
