// The controls of the options dialog, each bound to the key of the option that it edits.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/option_draft.h"
#include "settings/option_record.h"

namespace ledrix {

// Makes controls and carries values between them and texts as the option record has them. The
// controls belong to the layouts into which they are put; `name` is a control's object
// name.
class OptionControls {
 public:
  QCheckBox* Flag(const char* name, OptionKey key, const char* caption);
  // A box that holds one option button for each caption, named NAME0, NAME1 and so on.
  QGroupBox* Choice(const char* name, OptionKey key, const char* title,
                    std::initializer_list<const char*> captions);
  QLineEdit* Text(const char* name, OptionKey key);
  // A field as wide as `digits` digits, in which anything can be typed.
  QLineEdit* NarrowText(const char* name, OptionKey key, int digits);
  // The same, in which only digits can be typed.
  QLineEdit* Number(const char* name, OptionKey key, int digits);
  // A list of presets above which any text can be typed.
  QComboBox* Combo(const char* name, OptionKey key, std::initializer_list<const char*> presets);
  // The same, in which only digits can be typed.
  QComboBox* NumberCombo(const char* name, OptionKey key,
                         std::initializer_list<const char*> presets);

  // Puts the record's values, numbers clamped, into every control, or into those of some keys only.
  void Show(const OptionRecord& record);
  void Show(const OptionRecord& record, std::span<const OptionKey> keys);

  // What a control holds; a line break or another control character in it is a space. A text that
  // nobody touched is returned exactly as the record had it.
  std::string Value(OptionKey key) const;
  void ReadInto(OptionDraft& draft) const;

  // The control of a key, or the first of its option buttons; nullptr when no control edits it.
  QWidget* ControlOf(OptionKey key) const;

 private:
  struct Binding {
    OptionKey key;
    QWidget* control;
    std::function<std::string()> read;
    std::function<void(const std::string&)> show;
    std::string stored;  // what was shown last, as the record had it ...
    std::string shown;   // ... and as the control gave it back
  };

  static std::string Value(const Binding& binding);
  static void Show(Binding& binding, const OptionRecord& record);
  // Add, and gives the control what is said of the option.
  void Bind(OptionKey key, QWidget* control, std::function<std::string()> read,
            std::function<void(const std::string&)> show);
  void Add(OptionKey key, QWidget* control, std::function<std::string()> read,
           std::function<void(const std::string&)> show);

  std::vector<Binding> bindings_;
};

}  // namespace ledrix
