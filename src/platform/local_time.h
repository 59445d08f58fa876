// Points in time as the local clock shows them, and the fixed forms in which they are written.
#pragma once

#include <ctime>
#include <string>

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

// In the time zone of the process.
LocalTime ToLocalTime(const timespec& time);

LocalTime SystemNow();

std::string FormatDate(const LocalTime& time);        // "yyyy/mm/dd"
std::string FormatHourMinute(const LocalTime& time);  // "hh:mm"
std::string FormatTime(const LocalTime& time);        // "hh:mm:ss"
std::string FormatStamp(const LocalTime& time);       // "yyyy/mm/dd hh:mm", 16 characters
std::string FormatDateTime(const LocalTime& time);    // "yyyy/mm/dd hh:mm:ss"

}  // namespace ledrix
