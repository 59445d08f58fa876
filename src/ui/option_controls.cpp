#include "ui/option_controls.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "settings/compare_options.h"
#include "text/leading_number.h"
#include "ui/explain.h"
#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

// Drops, with a beep, every key but a digit that would put a character into a field. Keys that
// move, delete or paste pass.
class DigitsOnly : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const QString text = key.text();
    constexpr auto kCommandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (text.isEmpty() || !text[0].isPrint() || (key.modifiers() & kCommandKeys) != 0 ||
        (text[0] >= '0' && text[0] <= '9')) {
      return QObject::eventFilter(watched, event);
    }
    QApplication::beep();
    return true;
  }
};

// The digits of a text; full-width ones become those that a number has.
QString DigitsOf(const QString& text) {
  constexpr QChar kFullWidthZero(0xFF10);
  QString digits;
  for (const QChar c : text) {
    const int wide = c.unicode() - kFullWidthZero.unicode();
    if (c >= '0' && c <= '9') digits += c;
    if (wide >= 0 && wide <= 9) digits += QChar('0' + wide);
  }
  return digits;
}

// What is put between the beginning and the end that a text had before.
struct Insertion {
  Insertion(const QString& before, const QString& after) {
    const qsizetype least = std::min(before.size(), after.size());
    while (start < least && before[start] == after[start]) ++start;
    qsizetype same_end = 0;
    while (same_end < least - start &&
           before[before.size() - 1 - same_end] == after[after.size() - 1 - same_end]) {
      ++same_end;
    }
    size = after.size() - same_end - start;
  }
  qsizetype start = 0;
  qsizetype size = 0;
};

// What is pasted or dropped loses everything but its digits; what stood there before stays.
void KeepDigits(QLineEdit* edit) {
  const auto before = std::make_shared<QString>();
  QObject::connect(edit, &QLineEdit::textChanged, edit, [edit, before] { *before = edit->text(); });
  QObject::connect(edit, &QLineEdit::textEdited, edit, [edit, before](QString text) {
    const Insertion added(*before, text);
    const QString digits = DigitsOf(text.mid(added.start, added.size));
    if (digits.size() == added.size) return;
    edit->setText(text.replace(added.start, added.size, digits));
    edit->setCursorPosition(static_cast<int>(added.start + digits.size()));
  });
}

// `receiver` is where the keys of the field arrive.
void AllowDigitsOnly(QLineEdit* edit, QWidget* receiver) {
  receiver->installEventFilter(new DigitsOnly(receiver));
  receiver->setInputMethodHints(Qt::ImhDigitsOnly);
  // An input method would commit full-width digits.
  receiver->setAttribute(Qt::WA_InputMethodEnabled, false);
  KeepDigits(edit);
}

// A paste can bring characters that no name, pattern or path has use for.
std::string WithoutControls(QString text) {
  for (QChar& c : text) {
    const auto category = c.category();
    if (category == QChar::Other_Control || category == QChar::Separator_Line ||
        category == QChar::Separator_Paragraph) {
      c = ' ';
    }
  }
  return ToUtf8(text);
}

}  // namespace

QCheckBox* OptionControls::Flag(const char* name, OptionKey key, const char* caption) {
  auto* const box = Named(new QCheckBox(caption), name);
  Bind(
      key, box, [box] { return std::string(box->isChecked() ? "1" : "0"); },
      [box](const std::string& text) { box->setChecked(LeadingInteger(text) != 0); });
  return box;
}

QGroupBox* OptionControls::Choice(const char* name, OptionKey key, const char* title,
                                  std::initializer_list<const char*> captions) {
  auto* const box = new QGroupBox(title);
  box->setLayout(new QVBoxLayout);
  std::vector<QRadioButton*> buttons;
  for (const char* const caption : captions) {
    auto* const button = Named(new QRadioButton(caption, box), name, buttons.size());
    ExplainOption(*button, key);
    button->setAccessibleName(QString(title).trimmed() + " " + caption);
    box->layout()->addWidget(button);
    buttons.push_back(button);
  }
  const auto read = [buttons] {
    const auto chosen = std::find_if(buttons.begin(), buttons.end(),
                                     [](const QRadioButton* b) { return b->isChecked(); });
    return std::to_string(chosen == buttons.end() ? 0 : chosen - buttons.begin());
  };
  const auto show = [buttons, key](const std::string& text) {
    const int choice = ClampedOption(key, LeadingInteger(text));
    buttons[static_cast<size_t>(choice)]->setChecked(true);
  };
  Add(key, buttons.front(), read, show);
  return box;
}

QLineEdit* OptionControls::Text(const char* name, OptionKey key) {
  auto* const edit = Named(new QLineEdit, name);
  Bind(
      key, edit, [edit] { return WithoutControls(edit->text()); },
      [edit](const std::string& text) {
        edit->setText(ToQString(text));
        edit->setCursorPosition(0);
      });
  return edit;
}

QLineEdit* OptionControls::NarrowText(const char* name, OptionKey key, int digits) {
  QLineEdit* const edit = Text(name, key);
  constexpr int kFrameDigits = 3;
  edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QString(digits + kFrameDigits, '0')));
  return edit;
}

QLineEdit* OptionControls::Number(const char* name, OptionKey key, int digits) {
  QLineEdit* const edit = NarrowText(name, key, digits);
  AllowDigitsOnly(edit, edit);
  return edit;
}

QComboBox* OptionControls::Combo(const char* name, OptionKey key,
                                 std::initializer_list<const char*> presets) {
  auto* const combo = Named(new QComboBox, name);
  combo->setEditable(true);
  combo->setInsertPolicy(QComboBox::NoInsert);
  combo->setCompleter(nullptr);  // what is typed stays as it is typed
  combo->setMinimumContentsLength(16);
  for (const char* const preset : presets) combo->addItem(preset);
  Bind(
      key, combo, [combo] { return WithoutControls(combo->currentText()); },
      [combo](const std::string& text) { combo->setEditText(ToQString(text)); });
  return combo;
}

QComboBox* OptionControls::NumberCombo(const char* name, OptionKey key,
                                       std::initializer_list<const char*> presets) {
  QComboBox* const combo = Combo(name, key, presets);
  AllowDigitsOnly(combo->lineEdit(), combo);
  return combo;
}

void OptionControls::Bind(OptionKey key, QWidget* control, std::function<std::string()> read,
                          std::function<void(const std::string&)> show) {
  ExplainOption(*control, key);
  Add(key, control, std::move(read), std::move(show));
}

void OptionControls::Add(OptionKey key, QWidget* control, std::function<std::string()> read,
                         std::function<void(const std::string&)> show) {
  bindings_.push_back({key, control, std::move(read), std::move(show), {}, {}});
}

void OptionControls::Show(Binding& binding, const OptionRecord& record) {
  binding.stored = FieldOf(binding.key).GetClamped(record);
  binding.show(binding.stored);
  binding.shown = binding.read();
}

void OptionControls::Show(const OptionRecord& record) {
  for (Binding& binding : bindings_) Show(binding, record);
}

void OptionControls::Show(const OptionRecord& record, std::span<const OptionKey> keys) {
  for (Binding& binding : bindings_) {
    if (std::find(keys.begin(), keys.end(), binding.key) != keys.end()) Show(binding, record);
  }
}

std::string OptionControls::Value(const Binding& binding) {
  std::string value = binding.read();
  const bool is_text = FieldOf(binding.key).kind == OptionKind::kText;
  return is_text && value == binding.shown ? binding.stored : value;
}

std::string OptionControls::Value(OptionKey key) const {
  const auto found = std::find_if(bindings_.begin(), bindings_.end(),
                                  [key](const Binding& binding) { return binding.key == key; });
  return found == bindings_.end() ? std::string() : Value(*found);
}

void OptionControls::ReadInto(OptionDraft& draft) const {
  for (const Binding& binding : bindings_) {
    draft.Put(binding.key, Value(binding));
  }
}

QWidget* OptionControls::ControlOf(OptionKey key) const {
  const auto found = std::find_if(bindings_.begin(), bindings_.end(),
                                  [key](const Binding& binding) { return binding.key == key; });
  return found == bindings_.end() ? nullptr : found->control;
}

}  // namespace ledrix
