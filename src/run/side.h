// The two sides of a compare.
#pragma once

#include <array>
#include <cstddef>
#include <utility>

namespace ledrix {

enum class Side { kOld = 0, kNew = 1 };

inline constexpr std::array<Side, 2> kBothSides = {Side::kOld, Side::kNew};

// 0 for the old side, 1 for the new one.
constexpr size_t IndexOf(Side side) {
  return static_cast<size_t>(side);
}

constexpr Side OtherSide(Side side) {
  return side == Side::kOld ? Side::kNew : Side::kOld;
}

// One value for each side.
template <class T>
class PerSide {
 public:
  PerSide() = default;
  PerSide(T old_value, T new_value) : values_{std::move(old_value), std::move(new_value)} {}

  T& operator[](Side side) { return values_[IndexOf(side)]; }
  const T& operator[](Side side) const { return values_[IndexOf(side)]; }
  auto begin() { return values_.begin(); }
  auto end() { return values_.end(); }
  auto begin() const { return values_.begin(); }
  auto end() const { return values_.end(); }

 private:
  std::array<T, 2> values_{};
};

}  // namespace ledrix
