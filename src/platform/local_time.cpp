#include "platform/local_time.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace ledrix {
namespace {

template <class... Numbers>
std::string Format(const char* form, Numbers... numbers) {
  char text[64];
  const int size = std::snprintf(text, sizeof text, form, numbers...);
  return std::string(text, static_cast<size_t>(size));
}

constexpr int64_t kSecondsPerDay = 86400;
constexpr int kFirstYear = 1;
constexpr int kLastYear = 9999;

// Reads digits up to `most` and what must stand behind them (nothing for 0). Returns false when
// the text is different.
bool TakeNumber(std::string_view& text, size_t most, char behind, int& number) {
  size_t digits = 0;
  int value = 0;
  for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits) {
    if (digits == most) return false;
    value = value * 10 + (text[digits] - '0');
  }
  if (digits == 0) return false;
  number = value;
  text.remove_prefix(digits);
  if (behind == 0) return true;
  if (text.empty() || text.front() != behind) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

int64_t DayNumber(const LocalTime& time) {
  const std::chrono::year_month_day date(std::chrono::year(time.year),
                                         std::chrono::month(static_cast<unsigned>(time.month)),
                                         std::chrono::day(static_cast<unsigned>(time.day)));
  return std::chrono::sys_days(date).time_since_epoch().count();
}

int64_t CivilSeconds(const LocalTime& time) {
  const int second_of_day = time.hour * 3600 + time.minute * 60 + time.second;
  return DayNumber(time) * kSecondsPerDay + second_of_day;
}

LocalTime FromCivilSeconds(int64_t seconds) {
  const int64_t days = (seconds >= 0 ? seconds : seconds - (kSecondsPerDay - 1)) / kSecondsPerDay;
  const auto rest = static_cast<int>(seconds - days * kSecondsPerDay);
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(days))};
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          rest / 3600,
          rest / 60 % 60,
          rest % 60,
          0};
}

std::optional<LocalTime> ParseDateTime(std::string_view text) {
  LocalTime time;
  if (!TakeNumber(text, 4, '/', time.year) || !TakeNumber(text, 2, '/', time.month) ||
      !TakeNumber(text, 2, 0, time.day)) {
    return std::nullopt;
  }
  const std::chrono::year_month_day date(std::chrono::year(time.year),
                                         std::chrono::month(static_cast<unsigned>(time.month)),
                                         std::chrono::day(static_cast<unsigned>(time.day)));
  if (time.year < kFirstYear || !date.ok()) return std::nullopt;
  if (text.empty()) return time;
  if (text.front() != ' ') return std::nullopt;
  text.remove_prefix(1);
  const bool read = TakeNumber(text, 2, ':', time.hour) && TakeNumber(text, 2, ':', time.minute) &&
                    TakeNumber(text, 2, 0, time.second) && text.empty();
  if (!read || time.hour > 23 || time.minute > 59 || time.second > 59) return std::nullopt;
  return time;
}

std::string FormatGeneral(const LocalTime& t) {
  if (t.hour == 0 && t.minute == 0 && t.second == 0) return FormatDate(t);
  return FormatDate(t) + Format(" %d:%02d:%02d", t.hour, t.minute, t.second);
}

LocalTime ToLocalTime(const timespec& time) {
  tm parts{};
  constexpr int kYearOfZero = 1900;
  const bool has_date = localtime_r(&time.tv_sec, &parts) != nullptr &&
                        parts.tm_year >= kFirstYear - kYearOfZero &&
                        parts.tm_year <= kLastYear - kYearOfZero;
  if (!has_date) return {kLastYear, 12, 31, 23, 59, 59, 0};
  return {parts.tm_year + kYearOfZero,
          parts.tm_mon + 1,
          parts.tm_mday,
          parts.tm_hour,
          parts.tm_min,
          parts.tm_sec,
          time.tv_nsec};
}

LocalTime SystemNow() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return ToLocalTime(now);
}

std::string FormatDate(const LocalTime& t) {
  return Format("%04d/%02d/%02d", t.year, t.month, t.day);
}

std::string FormatHourMinute(const LocalTime& t) {
  return Format("%02d:%02d", t.hour, t.minute);
}

std::string FormatTime(const LocalTime& t) {
  return Format("%02d:%02d:%02d", t.hour, t.minute, t.second);
}

std::string FormatStamp(const LocalTime& t) {
  return FormatDate(t) + " " + FormatHourMinute(t);
}

std::string FormatDateTime(const LocalTime& t) {
  return FormatDate(t) + " " + FormatTime(t);
}

}  // namespace ledrix
