// Helpers shared by the Bruker routines: dates, sizes, sibling files, the title file.
#include <cstdio>
#include <ctime>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/bruker/routines.h"

namespace velk::formats::bruker {
namespace {

std::string FormatDate(const std::tm& t) {
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  char text[32];
  std::snprintf(text, sizeof text, "%02d/%s/%04d  %02d:%02d:%02d", t.tm_mday, kMonths[t.tm_mon % 12],
                t.tm_year + 1900, t.tm_hour, t.tm_min, t.tm_sec);
  return text;
}

constexpr std::uint64_t kTitleLimit = 1u << 20;

}  // namespace

std::string DateFromSeconds(std::int64_t seconds) {
  if (seconds <= 0) return {};
  const std::time_t utc = static_cast<std::time_t>(seconds);
  std::tm local{};
  // On failure the time stays as it was, in UTC.
  if (localtime_r(&utc, &local) == nullptr && gmtime_r(&utc, &local) == nullptr) return {};
  return FormatDate(local);
}

std::string DateFromComment(const std::string& comment) {
  std::tm t{};
  if (std::sscanf(comment.c_str(), "%4d-%2d-%2d %2d:%2d:%2d", &t.tm_year, &t.tm_mon, &t.tm_mday, &t.tm_hour,
                  &t.tm_min, &t.tm_sec) != 6)
    return {};
  if (t.tm_mon < 1 || t.tm_mon > 12 || t.tm_mday < 1 || t.tm_mday > 31) return {};
  t.tm_year -= 1900;
  t.tm_mon -= 1;
  return FormatDate(t);
}

std::int32_t PaddedSize(std::int32_t n) {
  std::int32_t size = 1;
  do size *= 2;
  while (size < n && size <= model::kMaxAxisPoints);
  return size;
}

int FailParameterRoutine(LoadState& state, const char* tag, bool twoD) {
  state.logTag = std::string(tag) + (twoD ? "/RW2D (" : "/RW1D (") + "-1)";
  return -1;
}

bool HasLength(const fs::path& file) {
  std::error_code error;
  const auto size = fs::file_size(file, error);
  return !error && size > 0;
}

fs::path Sibling(const fs::path& folder, const std::string& name) {
  const fs::path lower = folder / name;
  std::error_code error;
  if (fs::exists(lower, error)) return lower;
  const fs::path upper = folder / core::ToUpper(name);
  return fs::exists(upper, error) ? upper : lower;
}

std::string ReadTitleFile(const fs::path& title) {
  const auto bytes = core::ReadWholeFile(title.string(), kTitleLimit);
  if (!bytes) return {};
  std::string text;
  for (std::size_t i = 0; i < bytes->size(); ++i) {
    const char c = static_cast<char>((*bytes)[i]);
    if (c == '\r' || c == '\n') {
      const std::size_t next = i + 1;
      // CR LF and LF CR are one line end, as are lone CR and lone LF.
      if (next < bytes->size() && ((*bytes)[next] == '\r' || (*bytes)[next] == '\n') && (*bytes)[next] != (*bytes)[i])
        ++i;
      text += "\r\n";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace velk::formats::bruker
