#include <gtest/gtest.h>

#include "ui/window_platform.h"
#include "ui/window_test.h"

namespace ledrix {
namespace {

using Texts = std::vector<std::string>;

TEST(MessageBox, ShowsLinesAndReturnsTheButton) {
  WindowPlatform platform;
  test::ModalScript script;
  script.Answer("OK").Answer("はい").Answer("いいえ").Then([](QWidget& box) { box.close(); });
  EXPECT_EQ(platform.ShowMessage({"一\r二\r\n三"}), MessageAnswer::kOk);
  const Message question{"よろしいですか？", "題", MessageIcon::kQuestion, MessageButtons::kYesNo,
                         MessageAnswer::kNo};
  EXPECT_EQ(platform.ShowMessage(question), MessageAnswer::kYes);
  EXPECT_EQ(platform.ShowMessage(question), MessageAnswer::kNo);
  EXPECT_EQ(platform.ShowMessage(question), MessageAnswer::kNo);
  EXPECT_EQ(script.texts,
            (Texts{"Ledrix: 一\n二\n三", "題: よろしいですか？", "題: よろしいですか？"}));
}

}  // namespace
}  // namespace ledrix
