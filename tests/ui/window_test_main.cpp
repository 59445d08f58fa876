#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
  setenv("TZ", "Asia/Tokyo", 1);
  tzset();
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
