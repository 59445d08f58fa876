#include "ui/condition_menus.h"

#include <QActionGroup>
#include <QInputDialog>
#include <QMenu>

#include "charset/line_converter.h"
#include "charset/read_with_conversion.h"
#include "settings/option_draft.h"
#include "settings/settings_store.h"
#include "text/ascii.h"
#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

struct MatchEntry {
  const char* caption;
  int16_t lines;
};
constexpr std::array<MatchEntry, 4> kMatchEntries{
    {{" 3行", 3}, {" 5行", 5}, {" 8行", 8}, {"10行", 10}}};
constexpr size_t kOtherEntry = kMatchEntries.size();

constexpr const char* kStandard = "標準";
constexpr const char* kDirect = "直接指定";

QAction* AddEntry(QMenu& menu, const char* array, size_t index) {
  return Named(menu.addAction(QString()), array, index);
}

bool IsSame(const QString& a, const QString& b) {
  return QString::compare(a, b, Qt::CaseInsensitive) == 0;
}

// Empty as well when the dialog is cancelled.
QString AskForText(const QString& title, const QString& prompt, QWidget* parent) {
  QInputDialog dialog(parent);
  dialog.setWindowTitle(title);
  dialog.setLabelText(prompt);
  dialog.setOkButtonText("OK");
  dialog.setCancelButtonText("ｷｬﾝｾﾙ");
  return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

}  // namespace

MatchMenu::MatchMenu(QMenu& menu, OptionRecord& options)
    : options_(options), group_(new QActionGroup(&menu)) {
  for (size_t i = 0; i < MenuMatchLine.size(); ++i) {
    QAction* const entry = AddEntry(menu, "MenuMatchLine", i);
    entry->setCheckable(true);
    group_->addAction(entry);
    QObject::connect(entry, &QAction::triggered, &menu, [this, i] { Choose(i); });
    if (i < kMatchEntries.size()) entry->setText(kMatchEntries[i].caption);
    MenuMatchLine[i] = entry;
  }
  Synchronise();
}

void MatchMenu::Choose(size_t entry) {
  if (entry != kOtherEntry) options_.OptMatch = kMatchEntries[entry].lines;
  Synchronise();
}

void MatchMenu::Synchronise() {
  size_t entry = 0;
  while (entry < kOtherEntry && kMatchEntries[entry].lines != options_.OptMatch) ++entry;
  MenuMatchLine[entry]->setChecked(true);
  MenuMatchLine[kOtherEntry]->setText(QString("Else(%1行)").arg(options_.OptMatch));
  MenuMatchLine[kOtherEntry]->setVisible(entry == kOtherEntry);
}

PatternMenu::PatternMenu(QMenu& menu, OptionRecord& options, PatternSlots& patterns,
                         std::function<void()> on_applied)
    : menu_(menu), options_(options), patterns_(patterns), on_applied_(std::move(on_applied)) {
  for (size_t i = 0; i < MenuPattern.size(); ++i) {
    MenuPattern[i] = AddEntry(menu, "MenuPattern", i);
    QObject::connect(MenuPattern[i], &QAction::triggered, &menu, [this, i] {
      patterns_.ApplyPattern(i, options_);
      on_applied_();
    });
  }
  Rebuild();
}

void PatternMenu::Rebuild() {
  bool has_named = false;
  for (size_t i = 0; i < MenuPattern.size(); ++i) {
    const std::string& name = patterns_[i].name;
    MenuPattern[i]->setText(ToCaption(ToQString(name)));
    MenuPattern[i]->setVisible(!name.empty());
    has_named |= !name.empty();
  }
  menu_.menuAction()->setEnabled(has_named);
}

CharsetMenu::CharsetMenu(QMenu& menu, OptionRecord& options, PlatformServices& platform,
                         QWidget* parent)
    : menu_(menu),
      options_(options),
      platform_(platform),
      parent_(parent),
      group_(new QActionGroup(&menu)) {}

void CharsetMenu::BuildCharsetMenu() {
  menu_.clear();
  MenuCharset.clear();
  previous_ = 0;
  const QString stored = ToQString(options_.CharsetCode);
  size_t selected = Add(kStandard);
  for (const std::string& name : CharsetList(options_)) {
    if (name.empty()) continue;
    const size_t index = Add(ToQString(name));
    if (IsSame(stored, ToQString(name))) selected = index;
  }
  Add(kDirect);
  for (const char* const judged : {kFullAuto, kSureAuto}) {
    const size_t index = Add(judged);
    if (IsSame(stored, judged)) selected = index;
  }
  if (selected == 0) options_.CharsetCode.clear();
  Select(selected);
}

size_t CharsetMenu::Add(const QString& caption) {
  const size_t index = MenuCharset.size();
  QAction* const entry = AddEntry(menu_, "MenuCharset", index);
  entry->setText(ToCaption(caption));
  entry->setData(caption);
  entry->setCheckable(true);
  group_->addAction(entry);
  QObject::connect(entry, &QAction::triggered, &menu_, [this, index] { Select(index); });
  MenuCharset.push_back(entry);
  return index;
}

void CharsetMenu::Select(size_t index) {
  const QString clicked = MenuCharset[index]->data().toString();
  if (IsSame(clicked, kDirect)) {
    index = AskForCharset();
  } else if (!IsSame(clicked, kStandard) && !IsSame(clicked, kFullAuto) &&
             !IsSame(clicked, kSureAuto) && !IsUsable(clicked)) {
    index = previous_;
  }
  MenuCharset[index]->setChecked(true);
  const QString chosen = MenuCharset[index]->data().toString();
  const bool is_charset = !IsSame(chosen, kStandard) && !IsSame(chosen, kDirect);
  options_.CharsetCode = is_charset ? ToUtf8(chosen) : std::string();
  previous_ = index;
}

size_t CharsetMenu::AskForCharset() {
  const QString answer = AskForText(
      "文字コード指定",
      "直接使用する文字コード(Charset)を指定してください\nなお exe再起動時にはリセットされます",
      parent_);
  if (Trimmed(ToUtf8(answer)).empty()) return previous_;
  return IsUsable(answer) ? Add(answer) : previous_;
}

bool CharsetMenu::IsUsable(const QString& charset) {
  const std::string name = ToUtf8(charset);
  if (IsCharsetAvailable(name)) return true;
  platform_.ShowMessage({"ご使用の環境では " + name + " の文字コードは使用できません"});
  return false;
}

}  // namespace ledrix
