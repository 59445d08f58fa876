// How the program reads a number out of a text field or a stored value.
#pragma once

#include <cstdint>
#include <string_view>

namespace ledrix {

// The number a text begins with: an optional sign, digits with one decimal point, an exponent, up
// to the first character that cannot continue it. Blanks, tabs and line feeds are skipped wherever
// they occur, so "80 1" is 801; a text without a leading number is 0.
double LeadingNumber(std::string_view text);

// The leading number rounded to a whole number, halves to the even neighbour, and clamped to 16
// bits signed.
int16_t LeadingInteger(std::string_view text);

}  // namespace ledrix
