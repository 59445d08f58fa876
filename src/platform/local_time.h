// Points in time as the local clock shows them, and the fixed forms in which they are written.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace ledrix {

// A local date and time.
struct LocalTime {
  int year = 1970;
  int month = 1;   // 1-12
  int day = 1;     // 1-31
  int hour = 0;    // 0-23
  int minute = 0;  // 0-59
  int second = 0;  // 0-60
  long nanosecond = 0;
};

// In the time zone of the process. A time outside the years 1 to 9999, which no written form holds,
// counts as the last second of 9999.
LocalTime ToLocalTime(const timespec& time);

LocalTime SystemNow();

// Days since 1970/01/01 of the date alone.
int64_t DayNumber(const LocalTime& time);
// Seconds since 1970/01/01 0:00:00 as if every day had 24 hours; the nanoseconds are cut off.
int64_t CivilSeconds(const LocalTime& time);
// The other way round.
LocalTime FromCivilSeconds(int64_t seconds);

// Reads "yyyy/mm/dd h:mm:ss" or "yyyy/mm/dd", fields with or without leading zeros; nothing when
// the text is none or names no date of the calendar.
std::optional<LocalTime> ParseDateTime(std::string_view text);

std::string FormatDate(const LocalTime& time);        // "yyyy/mm/dd"
std::string FormatHourMinute(const LocalTime& time);  // "hh:mm"
std::string FormatTime(const LocalTime& time);        // "hh:mm:ss"
std::string FormatStamp(const LocalTime& time);       // "yyyy/mm/dd hh:mm", 16 characters
std::string FormatDateTime(const LocalTime& time);    // "yyyy/mm/dd hh:mm:ss"

// The general form: "yyyy/mm/dd h:mm:ss", and the date alone at midnight.
std::string FormatGeneral(const LocalTime& time);

}  // namespace ledrix
