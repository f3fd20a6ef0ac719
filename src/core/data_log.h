#pragma once
// The data log: one line per successful read or write, in a file per month or per day.
#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/message.h"

namespace velk::core {

struct DataLog {
  int mode = 0;  // "LOG MODE": 0 one file a month, 1 one a day, anything else no log
  std::filesystem::path folder;  // "LOG DIR"
};

// The log file for the given local time: "2D" + "yyyy_mm" (or "yyyy_mm_dd") + ".log".
std::filesystem::path LogFileName(const DataLog& log, const std::tm& localTime);
// Appends "dd/mmm/yyyy, hh:nn:ss, action, file". Returns "Invalid Folder Name(WL)" when the log
// folder is not a folder; any other failure is swallowed: the log never stops its caller.
platform::Message WriteLog(const DataLog& log, std::string_view action, std::string_view fileName);
platform::Message WriteLog(const DataLog& log, std::string_view action, std::string_view fileName,
                           const std::tm& localTime);

}  // namespace velk::core
