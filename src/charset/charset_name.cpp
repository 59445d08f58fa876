#include "charset/charset_name.h"

#include <algorithm>
#include <array>
#include <string>

#include "text/ascii.h"

namespace ledrix {
namespace {

struct FamilyName {
  std::string_view name;  // lower case, without "-", "_" and spaces
  CharsetFamily family;
};

using enum CharsetFamily;

constexpr std::array kNames = std::to_array<FamilyName>({
    {"shiftjis", kShiftJis},
    {"sjis", kShiftJis},
    {"xshiftjis", kShiftJis},
    {"xsjis", kShiftJis},
    {"csshiftjis", kShiftJis},
    {"mskanji", kShiftJis},
    {"windows31j", kShiftJis},
    {"cswindows31j", kShiftJis},
    {"windows932", kShiftJis},
    {"cp932", kShiftJis},
    {"ms932", kShiftJis},
    {"xmscp932", kShiftJis},
    {"sjiswin", kShiftJis},
    {"sjisopen", kShiftJis},
    {"ibm943", kShiftJis},
    {"cp943", kShiftJis},
    {"ibm943c", kShiftJis},
    {"cp943c", kShiftJis},
    {"eucjp", kEucJp},
    {"xeucjp", kEucJp},
    {"xeuc", kEucJp},
    {"ujis", kEucJp},
    {"eucjpms", kEucJp},
    {"eucjpwin", kEucJp},
    {"eucjpopen", kEucJp},
    {"cp51932", kEucJp},
    {"ms51932", kEucJp},
    {"cp20932", kEucJp},
    {"windows51932", kEucJp},
    {"cseucpkdfmtjapanese", kEucJp},
    {"iso2022jp", kIso2022Jp},
    {"iso2022jp1", kIso2022Jp},
    {"iso2022jpms", kIso2022Jp},
    {"csiso2022jp", kIso2022Jp},
    {"jis", kIso2022Jp},
    {"cp50220", kIso2022Jp},
    {"cp50221", kIso2022Jp},
    {"utf8", kUtf8},
    {"csutf8", kUtf8},
    {"cp65001", kUtf8},
    {"utf7", kUtf7},
    {"csutf7", kUtf7},
    {"unicode11utf7", kUtf7},
    {"cp65000", kUtf7},
    {"unicode", kUtf16},
    {"csunicode", kUtf16},
    {"utf16", kUtf16},
    {"csutf16", kUtf16},
    {"ucs2", kUtf16},
    {"utf16le", kUtf16Le},
    {"csutf16le", kUtf16Le},
    {"ucs2le", kUtf16Le},
    {"unicodelittle", kUtf16Le},
    {"utf16be", kUtf16Be},
    {"csutf16be", kUtf16Be},
    {"ucs2be", kUtf16Be},
    {"unicodebig", kUtf16Be},
    {"unicodefffe", kUtf16Be},
});

}  // namespace

CharsetFamily FamilyOf(std::string_view name) {
  std::string key = AsciiLowered(name);
  if (key == "_autodetect") return kAutodetect;
  const auto is_filling = [](char c) { return c == '-' || c == '_' || c == ' '; };
  key.erase(std::remove_if(key.begin(), key.end(), is_filling), key.end());
  const auto* const found = std::find_if(kNames.begin(), kNames.end(),
                                         [&key](const FamilyName& n) { return n.name == key; });
  return found == kNames.end() ? kForeign : found->family;
}

}  // namespace ledrix
