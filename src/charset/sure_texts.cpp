// What a judgement tells its users.
#include <cstdio>

#include "charset/sure_judgement.h"

namespace ledrix::modJudgeCode {
namespace {

std::string HexOf(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    char hex[4];
    std::snprintf(hex, sizeof hex, "%02X ",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    text += hex;
  }
  if (!text.empty()) text.pop_back();
  return text;
}

}  // namespace

const char* ToText(std::optional<SureCode> code) {
  constexpr const char* kTexts[] = {"ASCII", "SJIS",    "EUC",     "JIS",
                                    "UTF8",  "UTF16LE", "UTF16BE", "UTF7"};
  return code ? kTexts[static_cast<size_t>(*code)] : "不明";
}

const char* ToText(FoundBy found_by) {
  constexpr const char* kTexts[] = {"印", "唯一", "重み", "相手", "不明"};
  return kTexts[static_cast<size_t>(found_by)];
}

const char* CharsetNameOf(SureCode code) {
  constexpr const char* kNames[] = {"ASCII", "Shift_JIS", "EUC-JP",   "ISO-2022-JP",
                                    "UTF-8", "UTF-16LE",  "UTF-16BE", "UTF-7"};
  return kNames[static_cast<size_t>(code)];
}

std::string WhyText(const SureVerdict& verdict) {
  const std::string place = "行 " + std::to_string(verdict.line) + ": " + HexOf(verdict.bytes);
  const std::string name = verdict.code ? CharsetNameOf(*verdict.code) : "";
  switch (verdict.found_by) {
    case FoundBy::kMark:
      return place + " は " + name + " の印です";
    case FoundBy::kOnly:
      if (verdict.code == SureCode::kAscii) return "ASCII の文字だけです";
      return place + " は " + name + " だけにあります";
    case FoundBy::kWeight:
      return "文字の並びは " + name + " が " + CharsetNameOf(*verdict.rival) + " より自然です";
    case FoundBy::kPartner:
      return "組の相手が " + name + " です";
    case FoundBy::kOpen:
      break;
  }
  return verdict.rival ? OpenText(verdict) : place + " はどの文字コードにもありません";
}

std::string OpenText(const SureVerdict& verdict) {
  if (!verdict.rival) return "どの文字コードとも判定できません";
  return std::string("どちらとも判定できません（") + CharsetNameOf(*verdict.likeliest) + " か " +
         CharsetNameOf(*verdict.rival) + "）";
}

}  // namespace ledrix::modJudgeCode
