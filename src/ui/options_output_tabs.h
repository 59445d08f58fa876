// The tabs of the options dialog on the outputs beside the listing, on the directory compare and
// on the other functions.
#pragma once

#include <QWidget>

#include "ui/option_controls.h"

namespace ledrix {

QWidget* MakeSideOutputsTab(OptionControls& controls);
QWidget* MakeDirectoryTab(OptionControls& controls);
QWidget* MakeOtherTab(OptionControls& controls);

}  // namespace ledrix
