#include "model/nucleus.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace velk::model {
namespace {

struct Alias {
  std::string_view spelling;
  std::string_view canonical;
};

// "TRITIIUM" is spelt as the stored files spell it.
constexpr std::array<Alias, 40> kAliases{{
    {"PROTON", "1H"}, {"1H", "1H"}, {"H1", "1H"}, {"H", "1H"},
    {"D", "2H"}, {"2D", "2H"}, {"DEUTERIUM", "2H"}, {"2H", "2H"}, {"H2", "2H"},
    {"T", "3H"}, {"3T", "3H"}, {"TRITIIUM", "3H"}, {"3H", "3H"}, {"H3", "3H"},
    {"LITHIUM6", "6LI"}, {"6LI", "6LI"}, {"LI6", "6LI"},
    {"LITHIUM", "7LI"}, {"LITHIUM7", "7LI"}, {"7LI", "7LI"}, {"LI7", "7LI"},
    {"CARBON", "13C"}, {"13C", "13C"}, {"C13", "13C"}, {"C", "13C"},
    {"NITROGEN", "14N"}, {"NITROGEN14", "14N"}, {"14N", "14N"}, {"N14", "14N"},
    {"NITROGEN15", "15N"}, {"15N", "15N"}, {"N15", "15N"},
    {"FLUORINE", "19F"}, {"19F", "19F"}, {"F19", "19F"}, {"F", "19F"},
    {"PHOSPHORUS", "31P"}, {"31P", "31P"}, {"P31", "31P"}, {"P", "31P"},
}};

std::string UpperTrimmed(std::string_view text) {
  std::string s;
  for (char c : text) s += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  const auto first = s.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::string NormalizeNucleus(std::string_view text) {
  const std::string name = UpperTrimmed(text);
  if (name == "NUL" || name == "OFF") return name;
  for (const Alias& alias : kAliases)
    if (alias.spelling == name) return std::string(alias.canonical);
  std::string digits, letters;
  for (char c : name) {
    if (std::isdigit(static_cast<unsigned char>(c))) digits += c;
    else if (std::isalpha(static_cast<unsigned char>(c))) letters += c;
  }
  if (digits.empty() && letters.empty()) return "??";
  return digits + letters;
}

bool IsCommonNucleus(std::string_view name) {
  return name == "1H" || name == "H1" || name == "NUL" || name == "13C" || name == "C13";
}

}  // namespace velk::model
