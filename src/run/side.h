// The two sides of a compare.
#pragma once

#include <array>
#include <cstddef>

namespace ledrix {

enum class Side { kOld = 0, kNew = 1 };

inline constexpr std::array<Side, 2> kBothSides = {Side::kOld, Side::kNew};

constexpr Side OtherSide(Side side) {
  return side == Side::kOld ? Side::kNew : Side::kOld;
}

// One value for each side.
template <class T>
class PerSide {
 public:
  PerSide() = default;
  PerSide(T old_value, T new_value) : values_{std::move(old_value), std::move(new_value)} {}

  T& operator[](Side side) { return values_[static_cast<size_t>(side)]; }
  const T& operator[](Side side) const { return values_[static_cast<size_t>(side)]; }

 private:
  std::array<T, 2> values_{};
};

}  // namespace ledrix
