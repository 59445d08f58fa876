// The tabs of the options dialog on the text compare's conditions and on its listing.
#pragma once

#include <QWidget>

#include "ui/option_controls.h"

namespace ledrix {

QWidget* MakeConditionsTab(OptionControls& controls);
QWidget* MakeListingTab(OptionControls& controls);

}  // namespace ledrix
