#include "platform/local_time.h"

#include <cstdio>

namespace ledrix {
namespace {

template <class... Numbers>
std::string Format(const char* form, Numbers... numbers) {
  char text[64];
  const int size = std::snprintf(text, sizeof text, form, numbers...);
  return std::string(text, static_cast<size_t>(size));
}

}  // namespace

LocalTime ToLocalTime(const timespec& time) {
  tm parts{};
  localtime_r(&time.tv_sec, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
          parts.tm_min,         parts.tm_sec,     time.tv_nsec};
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
