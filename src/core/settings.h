#pragma once
// The settings files: "key ; value" lines under a header line. The 2D settings file (per user),
// the common file "2DCommon.ini" and the 1D file "NMRCOL.INI" share the format; each has its own
// key table, in the order the writer emits the keys.
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velk::core {

enum class KeyKind { Number, Text, List };

struct SettingKey {
  std::string_view key;
  KeyKind kind;
  std::string_view defaultValue;
};

struct SettingsSchema {
  std::string_view header;        // the first line the writer emits; empty: any first line is taken
  std::string_view oldHeader;     // also accepted (case folded), read as version 1
  std::span<const SettingKey> keys;
};

struct Settings {
  const SettingsSchema* schema = nullptr;
  int version = 0;  // 0 until a file was read
  std::map<std::string, std::string, std::less<>> values;
  std::map<std::string, std::vector<std::string>, std::less<>> lists;
};

const SettingsSchema& Schema2D();
const SettingsSchema& SchemaCommon();
const SettingsSchema& Schema1D();

// The defaults of the start-up table.
Settings DefaultSettings(const SettingsSchema& schema);

double Number(const Settings& settings, std::string_view key);
const std::string& Text(const Settings& settings, std::string_view key);
const std::vector<std::string>& List(const Settings& settings, std::string_view key);
void Set(Settings& settings, std::string_view key, std::string value);
void SetNumber(Settings& settings, std::string_view key, double value);

// The line-width scale factors ("DRAW WIDTH ...", "DISP ... WIDTH"): 0 or less is read as 1.
bool IsLineWidthScale(std::string_view key);

// The number parser of settings values: decimal, or "&H" hexadecimal ("&H2004").
std::optional<double> ParseSettingNumber(std::string_view text);

// Reads the file over the settings: lines split at the first ";", keys trimmed and folded to upper
// case, old spellings mapped, unknown keys and lines without ";" skipped, a bad number keeps the
// value there was. A missing file, or one with another first line, changes nothing. Returns
// whether the file was taken.
bool ReadSettings(const std::filesystem::path& file, Settings& settings);
// Rewrites the file whole: the header, then every key in the table's order, padded to a column.
bool WriteSettings(const std::filesystem::path& file, const Settings& settings);
bool WriteSettings(std::ostream& out, const Settings& settings);

// The 2D settings at start: read, count the access, correct the values, and write back at once so
// that the run leaves its "LATEST ACCESS". now is the short date and time of the system.
bool ReadSettings2D(const std::filesystem::path& file, Settings& settings, const std::string& now);
// The recent files list of the menu.
std::vector<std::string> MakeRecentFileList(const Settings& settings);

}  // namespace velk::core
