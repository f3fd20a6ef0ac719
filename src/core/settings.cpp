#include "core/settings.h"

#include "core/atomic_write.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "core/text.h"

namespace velk::core {
namespace {

// The writer pads every key with blanks to this column, then "; " and the value.
constexpr std::size_t kValueColumn = 22;

const SettingKey* FindKey(const SettingsSchema& schema, std::string_view key) {
  for (const SettingKey& k : schema.keys)
    if (k.key == key) return &k;
  return nullptr;
}

// Old spellings stay readable on purpose, so that old files keep working.
std::string CurrentSpelling(const std::string& key) {
  if (key.starts_with("CURSOL COLOR ")) return "CURSOR COLOR " + key.substr(13);
  if (key == "FID REAL COL") return "FID_REAL COL";
  return key;
}

bool HeaderMatches(const SettingsSchema& schema, const std::string& firstLine, int& version) {
  const std::string line = ToUpper(Trim(firstLine));
  if (schema.header.empty()) {
    version = 4;
    return true;
  }
  if (line == ToUpper(schema.header)) version = 4;
  else if (line == schema.oldHeader) version = 1;
  else return false;
  return true;
}

void Assign(Settings& settings, const SettingKey& key, const std::string& value) {
  switch (key.kind) {
    case KeyKind::List: settings.lists[std::string(key.key)].push_back(value); break;
    case KeyKind::Text: settings.values[std::string(key.key)] = value; break;
    case KeyKind::Number:
      if (ParseSettingNumber(value)) settings.values[std::string(key.key)] = value;
      break;
  }
}

std::string FormatNumber(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", value);
  return text;
}

}  // namespace

Settings DefaultSettings(const SettingsSchema& schema) {
  Settings settings{&schema, 0, {}, {}};
  for (const SettingKey& key : schema.keys) {
    if (key.kind == KeyKind::List) settings.lists[std::string(key.key)];
    else settings.values[std::string(key.key)] = std::string(key.defaultValue);
  }
  return settings;
}

std::optional<double> ParseSettingNumber(std::string_view text) {
  const std::string trimmed = Trim(text);
  if (trimmed.empty()) return std::nullopt;
  const bool hex = StartsWithNoCase(trimmed, "&H");
  const char* begin = trimmed.c_str() + (hex ? 2 : 0);
  char* end = nullptr;
  const double value = hex ? static_cast<double>(std::strtol(begin, &end, 16)) : std::strtod(begin, &end);
  if (end == begin || *end != '\0') return std::nullopt;
  return value;
}

double Number(const Settings& settings, std::string_view key) {
  const auto it = settings.values.find(key);
  return it == settings.values.end() ? 0.0 : ParseSettingNumber(it->second).value_or(0.0);
}

const std::string& Text(const Settings& settings, std::string_view key) {
  static const std::string kEmpty;
  const auto it = settings.values.find(key);
  return it == settings.values.end() ? kEmpty : it->second;
}

const std::vector<std::string>& List(const Settings& settings, std::string_view key) {
  static const std::vector<std::string> kEmpty;
  const auto it = settings.lists.find(key);
  return it == settings.lists.end() ? kEmpty : it->second;
}

void Set(Settings& settings, std::string_view key, std::string value) { settings.values[std::string(key)] = std::move(value); }

void SetNumber(Settings& settings, std::string_view key, double value) { Set(settings, key, FormatNumber(value)); }

bool ReadSettings(const std::filesystem::path& file, Settings& settings) {
  std::ifstream in(file, std::ios::binary);
  std::string line;
  int version = 0;
  if (!in || !std::getline(in, line) || !HeaderMatches(*settings.schema, line, version)) return false;
  settings.version = version;
  // A file that is read replaces the lists it holds, entry by entry.
  for (auto& [key, entries] : settings.lists) entries.clear();
  while (std::getline(in, line)) {
    const std::size_t split = line.find(';');
    if (split == std::string::npos) continue;
    const std::string key = CurrentSpelling(ToUpper(Trim(line.substr(0, split))));
    if (const SettingKey* k = FindKey(*settings.schema, key)) Assign(settings, *k, Cp932ToUtf8(Trim(line.substr(split + 1))));
  }
  return true;
}

bool WriteSettings(const std::filesystem::path& file, const Settings& settings) {
  return WriteAtomically(file, [&](std::ostream& out) { return WriteSettings(out, settings); }).ok();
}

bool WriteSettings(std::ostream& out, const Settings& settings) {
  out << settings.schema->header << "\r\n";
  const auto writeLine = [&](std::string_view key, const std::string& value) {
    std::string padded(key);
    padded.resize(std::max(kValueColumn, key.size() + 1), ' ');
    out << padded << "; " << Utf8ToCp932(value) << "\r\n";
  };
  for (const SettingKey& key : settings.schema->keys) {
    if (key.kind == KeyKind::List) {
      for (const std::string& entry : List(settings, key.key)) writeLine(key.key, entry);
    } else {
      writeLine(key.key, Text(settings, key.key));
    }
  }
  return static_cast<bool>(out);
}

bool ReadSettings2D(const std::filesystem::path& file, Settings& settings, const std::string& now) {
  const bool taken = ReadSettings(file, settings);
  SetNumber(settings, "ACCESS COUNT", Number(settings, "ACCESS COUNT") + 1);
  Set(settings, "LATEST ACCESS", now);
  for (const SettingKey& key : settings.schema->keys)
    if (IsLineWidthScale(key.key) && Number(settings, key.key) <= 0) SetNumber(settings, key.key, 1.0);
  const double resolution = Number(settings, "DISP DIMENSION_X");
  SetNumber(settings, "DISP DIMENSION_X", std::clamp(resolution, 256.0, 8192.0));
  WriteSettings(file, settings);
  return taken;
}

std::vector<std::string> MakeRecentFileList(const Settings& settings) { return List(settings, "RECENT FILE"); }

}  // namespace velk::core
