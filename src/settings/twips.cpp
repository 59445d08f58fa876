#include "settings/twips.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "settings/option_draft.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr const char* kSection = "Settings";
constexpr double kMostPixels = 100000;

}  // namespace

int ReadPixels(const SettingsStore& store, std::string_view key, int default_pixels) {
  const std::string text(Trimmed(store.ReadSetting(kSection, key, "")));
  const char* const end = text.data() + text.size();
  double twips = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, twips);
  if (error != std::errc() || stop != end || !std::isfinite(twips)) return default_pixels;
  const double pixels = std::round(twips / kTwipsPerPixel);
  return static_cast<int>(std::clamp(pixels, -kMostPixels, kMostPixels));
}

void WritePixels(SettingsStore& store, std::string_view key, int pixels) {
  store.WriteSetting(kSection, key, std::to_string(pixels * kTwipsPerPixel));
}

}  // namespace ledrix
