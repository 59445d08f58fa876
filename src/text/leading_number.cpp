#include "text/leading_number.h"

#include <algorithm>
#include <cctype>
#include <cfenv>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace ledrix {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

size_t SkipDigits(const std::string& text, size_t position) {
  while (position < text.size() && IsDigit(text[position])) ++position;
  return position;
}

// Where the exponent that begins at `position` ends; `position` when none begins there.
size_t SkipExponent(const std::string& text, size_t position) {
  if (position >= text.size() || (text[position] != 'e' && text[position] != 'E')) return position;
  size_t digits = position + 1;
  if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
  const size_t end = SkipDigits(text, digits);
  return end > digits ? end : position;
}

// Of a number that a double cannot hold: true when it is too small rather than too large.
bool IsTiny(const std::string& number) {
  const size_t exponent = number.find_first_of("eE");
  if (exponent != std::string::npos) return number[exponent + 1] == '-';
  return number.find_first_not_of("0.") >= number.find('.');
}

}  // namespace

double LeadingNumber(std::string_view text) {
  std::string packed;
  std::copy_if(text.begin(), text.end(), std::back_inserter(packed),
               [](char c) { return c != ' ' && c != '\t' && c != '\n'; });
  const bool negative = !packed.empty() && packed[0] == '-';
  if (!packed.empty() && (packed[0] == '-' || packed[0] == '+')) packed.erase(0, 1);

  const size_t whole_end = SkipDigits(packed, 0);
  size_t end = whole_end;
  if (end < packed.size() && packed[end] == '.') end = SkipDigits(packed, end + 1);
  const bool has_digit = whole_end > 0 || end > whole_end + 1;
  if (!has_digit) return 0;
  end = SkipExponent(packed, end);

  double value = 0;
  const auto parsed = std::from_chars(packed.data(), packed.data() + end, value);
  if (parsed.ec == std::errc::result_out_of_range) {
    value = IsTiny(packed.substr(0, end)) ? 0 : std::numeric_limits<double>::max();
  }
  return negative ? -value : value;
}

int16_t LeadingInteger(std::string_view text) {
  constexpr double kLowest = std::numeric_limits<int16_t>::min();
  constexpr double kHighest = std::numeric_limits<int16_t>::max();
  const double whole = std::nearbyint(LeadingNumber(text));  // the default mode: halves to even
  return static_cast<int16_t>(std::clamp(whole, kLowest, kHighest));
}

}  // namespace ledrix
