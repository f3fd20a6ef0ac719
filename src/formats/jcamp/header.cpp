#include "formats/jcamp/header.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/text.h"
#include "formats/text_lines.h"
#include "model/nucleus.h"

namespace velk::formats::jcamp {
namespace {

// "SIMULTANEOUS", and the misspelling "SIMULATANEOUS" that this program's own writer and others
// have produced, mean class 0; "SINGLE" 1 and "SEQUENTIAL" 2. The order of the last two is the
// one the processing expects, and is kept.
int AcquisitionClassOf(const std::string& mode) {
  if (mode.starts_with("SINGLE")) return 1;
  if (mode.starts_with("SEQUENTIAL")) return 2;
  return 0;
}

}  // namespace

std::string DateOfLongDate(const std::string& original) {
  // ISO dates ("2021-06-10T02:22:36") are read like "2021/06/10 02:22:36".
  std::string text = original;
  for (std::size_t i = 0; i < text.size() && i < 19; ++i) {
    if (text[i] == '-' && i < 10) text[i] = '/';
    if (text[i] == 'T' && i == 10) text[i] = ' ';
  }
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  if (std::sscanf(text.c_str(), "%d/%d/%d %d:%d:%d", &year, &month, &day, &hour, &minute, &second) < 3 ||
      month < 1 || month > 12 || day < 1 || day > 31)
    return original;
  static constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  char out[40];
  std::snprintf(out, sizeof out, "%02d/%s/%04d %02d:%02d:%02d", day, kMonths[month - 1], year % 10000, hour % 100,
                minute % 100, second % 100);
  return out;
}

bool TakeHeaderLabel(const std::string& key, const JcampLabel& label, const std::string& line, JcampHeader& h) {
  const std::string first = label.values.empty() ? std::string() : label.values[0];
  if (key == "##JCAMPDX") {
    h.labelSeen = true;
    h.version = static_cast<float>(JcampNumber(label, 0));
  } else if (key == "##TITLE") {
    h.title = JcampLabelText(line);
  } else if (key == "##DATATYPE") {
    h.dataType = CompactJcampText(JcampLabelText(line));
  } else if (key == "##DATACLASS") {
    h.dataClass = CompactJcampText(JcampLabelText(line));
  } else if (key == "##.OBSERVEFREQUENCY") {
    h.observeMHz = JcampNumber(label, 0);
    h.observeSeen = true;
  } else if (key == "##.OBSERVENUCLEUS") {
    std::string nucleus = JcampLabelText(line);
    if (!nucleus.empty() && nucleus.front() == '^') nucleus.erase(0, 1);
    h.nucleus = model::NormalizeNucleus(nucleus);
  } else if (key == "##.AVERAGES") {
    h.averages = static_cast<std::int32_t>(std::clamp(JcampNumber(label, 0), 0.0, 2147483647.0));
  } else if (key.starts_with("##.DIGITISER")) {
    h.digitiser = static_cast<float>(static_cast<int>(std::clamp(JcampNumber(label, 0), -1e6, 1e6)));
  } else if (key == "##SPECTROMETERDATASYSTEM") {
    h.instrument = JcampLabelText(line);
  } else if (key == "##.ACQUISITIONMODE") {
    h.acquisitionClass = AcquisitionClassOf(CompactJcampText(first));
  } else if (key == "##.ACQUISITIONSCHEME") {
    h.acquisitionScheme = CompactJcampText(JcampLabelText(line));
  } else if (key == "##DATE" || key == "##LONGDATE") {
    h.date = DateOfLongDate(JcampLabelText(line));
  } else if (key == "##.PULSESEQUENCE") {
    h.pulseSequence = JcampLabelText(line);
  } else if (key == "##.SOLVENTNAME") {
    h.solvent = JcampLabelText(line);
  } else if (key == "##.SHIFTREFERENCE") {
    // "INTERNAL, CDCl3, 1, 15.47866": the data point and its shift are the last two values.
    const std::size_t n = label.values.size();
    if (n >= 2) {
      const auto point = ParseNumber(label.values[n - 2]);
      const auto ppm = ParseNumber(label.values[n - 1]);
      if (point && ppm && *point >= 1) h.shiftReference = std::pair{*point, *ppm};
    }
  } else {
    return false;
  }
  return true;
}

}  // namespace velk::formats::jcamp
