// Judges which of six character codes some bytes are written in.
//
// Six scorers rate the first 10,000 bytes. Text that fully matches a code scores about 100, plain
// ASCII 50 with every byte-oriented scorer; a signature makes three of them certain. The highest
// score wins; ties go to Shift_JIS, then UTF-16, JIS, UTF-7, UTF-8, EUC.
#pragma once

#include <cstddef>
#include <string_view>

namespace ledrix::modJudgeCode {

enum class CodeName { kSjis, kUnicode, kJis, kUtf7, kUtf8, kEuc };

// "SJIS", "UNICODE", "JIS", "UTF7", "UTF8", "EUC".
std::string_view ToText(CodeName code);

// Bytes that are examined.
inline constexpr size_t kExaminedBytes = 10000;
// Bytes that can decide the judgement: a sequence may reach five bytes past the examined ones.
inline constexpr size_t kDecidingBytes = kExaminedBytes + 5;

// What a scorer returns at its signature; this much or more counts as certain.
inline constexpr double kCertain = 9999.0;

// `bytes` is the whole file, or its first kDecidingBytes. No bytes at all are judged Shift_JIS:
// they need no conversion.
CodeName JudgeCode(std::string_view bytes);

// The scorers. REQUIRES: at least one byte.
double ScoreJIS(std::string_view bytes);
double ScoreUnicode(std::string_view bytes);  // UTF-16, little-endian
double ScoreUTF8(std::string_view bytes);
double ScoreUTF7(std::string_view bytes);
double ScoreSJIS(std::string_view bytes);
double ScoreEUC(std::string_view bytes);

}  // namespace ledrix::modJudgeCode
