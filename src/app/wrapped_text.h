// Texts for a terminal, in lines of a width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ledrix {

// How wide a UTF-8 text is in columns.
size_t ColumnsOf(std::string_view text);

// A text cut into lines of at most `width` columns, each ended by a line feed and all but the first
// behind `indent` spaces, which count; the first begins at column `indent`, counted from 0. Words
// of ASCII stay whole, and so does a full-width character with the mark that closes behind it. A
// line end in the text stands for nothing behind a Japanese character, else for a space.
std::string WrapText(std::string_view text, size_t indent, size_t width);

}  // namespace ledrix
