#include "core/data_log.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <fstream>

namespace velk::core {
namespace {

std::string Format(const char* pattern, const std::tm& t) {
  char buffer[64];
  const std::size_t n = std::strftime(buffer, sizeof buffer, pattern, &t);
  return std::string(buffer, n);
}

}  // namespace

std::filesystem::path LogFileName(const DataLog& log, const std::tm& localTime) {
  const char* pattern = log.mode == 1 ? "2D%Y_%m_%d.log" : "2D%Y_%m.log";
  return log.folder / Format(pattern, localTime);
}

platform::Message WriteLog(const DataLog& log, std::string_view action, std::string_view fileName) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return WriteLog(log, action, fileName, local);
}

platform::Message WriteLog(const DataLog& log, std::string_view action, std::string_view fileName,
                           const std::tm& localTime) {
  if (log.mode != 0 && log.mode != 1) return {};
  std::error_code error;
  if (!std::filesystem::is_directory(log.folder, error))
    return {"Folder Error", "Invalid Folder Name(WL)", platform::Buttons::Ok, platform::Icon::Critical, true};
  // Month names in English whatever the locale, as the log has always been written.
  static constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  char date[32];
  std::snprintf(date, sizeof date, "%02d/%s/%04d", localTime.tm_mday, kMonths[localTime.tm_mon % 12],
                localTime.tm_year + 1900);
  std::ofstream out(LogFileName(log, localTime), std::ios::app);
  out << date << ", " << Format("%H:%M:%S", localTime) << ", " << action << ", " << fileName << "\r\n";
  return {};
}

}  // namespace velk::core
