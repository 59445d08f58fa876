// Tool tips, and names for screen readers.
#pragma once

#include <QString>

#include "settings/option_key.h"

class QWidget;

namespace ledrix {

// Gives every named control of a window what is said of it: a tool tip, below the hint that it may
// have, and a name and a description for screen readers. Once its controls are made.
void Explain(QWidget& window);

// The same for a control that edits an option.
void ExplainOption(QWidget& control, OptionKey key);

// A control's tool tip below a hint that changes.
QString TipBelow(const QString& hint, const QWidget& window, const QString& control);

}  // namespace ledrix
