// Lengths of windows as the settings keep them: decimal text in twips, 15 of which are one
// device-independent pixel.
#pragma once

#include <string_view>

#include "settings/settings_store.h"

namespace ledrix {

inline constexpr int kTwipsPerPixel = 15;

// The pixels of a length in the section "Settings", at most 100,000 either way; the default when
// the key is missing or its text is no number.
int ReadPixels(const SettingsStore& store, std::string_view key, int default_pixels);
void WritePixels(SettingsStore& store, std::string_view key, int pixels);

}  // namespace ledrix
