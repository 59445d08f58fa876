// The main window's menu bar.
#pragma once

#include <functional>

#include "run/job_record.h"
#include "ui/condition_menus.h"

class QMenuBar;

namespace ledrix {

class MainMenu {
 public:
  // What the entries do; each is called from the event handler of its entry. What the compare
  // conditions are set to goes straight into the option record.
  struct Commands {
    std::function<void()> compare_texts;
    std::function<void(CompareRange)> compare_directories;
    std::function<void()> make_directory_information;
    std::function<void(bool)> write_evidence;  // of every job from now on
    std::function<void()> verify_evidence;
    std::function<void()> end;
    std::function<void()> clear_results;
    std::function<void()> refresh;
    std::function<void()> edit_options;
    std::function<void()> show_help;
    std::function<void()> show_readme;
    std::function<void()> show_version;
    std::function<void()> clear_settings;
    std::function<void()> conditions_changed;  // by a pattern
  };
  // Fills the bar, which owns the menus. All must outlive the menu; a charset is asked for above
  // the window.
  MainMenu(QMenuBar& bar, QWidget& window, OptionRecord& options, PatternSlots& patterns,
           PlatformServices& platform, bool writes_evidence, const Commands& commands);

  // Once the options and the patterns are loaded; may show a message.
  void FillConditions();
  // After a change of the options or the patterns.
  void FollowOptions();

 private:
  void FillOperation(bool writes_evidence, const Commands& commands);
  void FillOption(const Commands& commands);
  void FillHelp(const Commands& commands);

  QMenu& operation_;
  QMenu& option_;
  QMenu& help_;
  QMenu* const MenuMatchGrp;
  QMenu* const MenuPatternGrp;
  QMenu* const MenuCharsetGrp;
  MatchMenu match_;
  PatternMenu pattern_;
  CharsetMenu charset_;
};

}  // namespace ledrix
