// The menus of the compare conditions: the main window owns them, these classes fill them and put
// what is chosen into the option record. A menu and everything handed over must outlive the class
// that fills it. There is one thread, the user interface's.
#pragma once

#include <QString>
#include <array>
#include <functional>
#include <vector>

#include "platform/services.h"
#include "settings/option_record.h"
#include "settings/pattern_slots.h"

class QAction;
class QActionGroup;
class QMenu;
class QWidget;

namespace ledrix {

// How many equal lines count as being back in step (OptMatch): four fixed numbers, and a fifth
// entry that is there while another number holds.
class MatchMenu {
 public:
  MatchMenu(QMenu& menu, OptionRecord& options);

  // After any change of OptMatch.
  void Synchronise();

 private:
  void Choose(size_t entry);

  OptionRecord& options_;
  QActionGroup* const group_;
  std::array<QAction*, 5> MenuMatchLine{};
};

// The named condition patterns. Without one the menu is disabled.
class PatternMenu {
 public:
  // `on_applied` is called after a pattern was copied into the record.
  PatternMenu(QMenu& menu, OptionRecord& options, PatternSlots& patterns,
              std::function<void()> on_applied);

  // After any change of the slots' names.
  void Rebuild();

 private:
  QMenu& menu_;
  OptionRecord& options_;
  PatternSlots& patterns_;
  std::function<void()> on_applied_;
  std::array<QAction*, kPatternSlots> MenuPattern{};
};

// The character code that files are read in (CharsetCode): none, one of the option Charset, one
// typed in, or each file's own. Entries typed in last as long as the menu.
class CharsetMenu {
 public:
  // `parent` is the window above which a charset is asked for; it may be null.
  CharsetMenu(QMenu& menu, OptionRecord& options, PlatformServices& platform, QWidget* parent);

  // Fills the menu and selects the stored charset, once the options are loaded and the window may
  // show messages. A charset that is none of the entries is forgotten.
  void BuildCharsetMenu();

 private:
  // All indexes count the entries from 0.
  size_t Add(const QString& caption);
  void Select(size_t index);
  // The entry to select after somebody typed a charset, or was asked for one and typed none.
  size_t AskForCharset();
  bool IsUsable(const QString& charset);

  QMenu& menu_;
  OptionRecord& options_;
  PlatformServices& platform_;
  QWidget* parent_;
  QActionGroup* const group_;
  std::vector<QAction*> MenuCharset;
  size_t previous_ = 0;
};

}  // namespace ledrix
