#include "core/user_extensions.h"

#include <array>

#include "core/settings.h"
#include "core/text.h"

namespace velk::core {
namespace {

// The extension word the detector gives each settings data type code, &H2000 to &H2006.
constexpr std::array<const char*, 7> kWordOfCode{".ALS", ".GXD", ".LAM", ".ECP", ".BRUF", ".ALP", ".VARF"};

std::vector<std::string> Fields(const std::string& entry) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t end; (end = entry.find(';', start)) != std::string::npos; start = end + 1)
    fields.push_back(Trim(entry.substr(start, end - start)));
  fields.push_back(Trim(entry.substr(start)));
  return fields;
}

}  // namespace

std::vector<model::UserExtension> ParseUserExtensions(const std::vector<std::string>& entries) {
  std::vector<model::UserExtension> extensions;
  for (const std::string& entry : entries) {
    const std::vector<std::string> f = Fields(entry);
    if (f.size() != 3 || extensions.size() == kUserExtensionSlots) continue;
    const std::optional<double> code = ParseSettingNumber(f[2]);
    const int type = code ? static_cast<int>(*code) & 0xFF : -1;
    if (type < 0 || type >= static_cast<int>(kWordOfCode.size())) continue;
    const std::size_t dot = f[1].rfind('.');
    if (dot == std::string::npos) continue;
    extensions.push_back({f[0], f[1].substr(dot), kWordOfCode[static_cast<std::size_t>(type)]});
  }
  return extensions;
}

std::vector<platform::FileFilter> UserExtensionFilters(const std::vector<model::UserExtension>& extensions) {
  std::vector<platform::FileFilter> filters;
  for (const model::UserExtension& e : extensions) {
    const std::string pattern = "*" + e.extension;
    filters.push_back({e.label + "(" + pattern + ")", pattern});
  }
  return filters;
}

}  // namespace velk::core
