// Which judgement of a file's code is followed: JudgeCode's, unless the bytes refute it.
//
// A judgement goes by scores and can name a code in which the bytes make no sense. The rated bytes
// are looked at once more; a sequence that their end cuts while the file goes on counts neither
// way. They refute
//
//   UNICODE  when they do not begin with its mark and either are valid UTF-8 without a byte 00 or
//            have their zero bytes where big-endian text has them: at the first byte of at least
//            one unit and of no fewer units than at the second, the little-endian units 3000 and
//            0030 aside (the space and the "0" of one order are each other's in the other);
//   EUC and UTF8  when more than one in ten sequences from a byte of 80 or above on is invalid;
//   UTF7     by a byte of 80 or above, a run with bits left over or half a surrogate pair, a "+"
//            before anything but a run or "-", or when no run holds a character of 80 or above;
//   JIS      by a byte of 80 or above;
//   SJIS     never.
//
// Then the best by score of SJIS, UTF8 and EUC, in this order at a tie, holds among those in which
// no sequence is invalid. When there is none UNICODE gives way to SJIS, and any other stays.
#pragma once

#include <string_view>

#include "charset/judge_code.h"

namespace ledrix::modJudgeCode {

// `head` is the whole file, or its first kDecidingBytes when it is longer.
CodeName FollowedVerdict(std::string_view head);

}  // namespace ledrix::modJudgeCode
