#include "formats/jeol/params.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string_view>

#include "core/text.h"
#include "formats/bytes_to_text.h"
#include "model/nucleus.h"

namespace velk::formats::jeol {
namespace {

constexpr std::uint64_t kRecordHead = 16;
constexpr std::uint64_t kRecordMinimum = 64;  // name at 36, 28 bytes

DeltaRecord ReadRecord(core::Bytes bytes, std::uint64_t at, core::ByteOrder order) {
  DeltaRecord r;
  r.unit = {bytes[at + 6], bytes[at + 7]};
  r.valueType = bytes[at + (order == core::ByteOrder::Little ? 32 : 35)];
  r.name = core::ToUpper(core::Trim(BytesToText(bytes, at + 36, 28)));
  if (r.valueType == 0) {
    r.text = core::Trim(BytesToText(bytes, at + 16, 16));
  } else if (r.valueType == 1) {
    r.integer = core::DecodeOr<std::int32_t>(bytes, at + 16, order, 0);
    r.real = r.integer;
  } else {
    r.real = core::DecodeOr<double>(bytes, at + 16, order, 0.0);
    if (std::fabs(r.real) < 2147483648.0) r.integer = static_cast<std::int32_t>(std::nearbyint(r.real));
  }
  return r;
}

bool IsIsotope(const std::string& name) {
  std::size_t digits = 0;
  while (digits < name.size() && std::isdigit(static_cast<unsigned char>(name[digits]))) ++digits;
  const std::size_t letters = name.size() - digits;
  return digits > 0 && letters >= 1 && letters <= 2;
}

bool NucleusUnset(const std::string& nucleus) { return nucleus.empty() || nucleus == "?" || nucleus == "??"; }

double OffsetPpm(double value, std::uint8_t prefix) {
  switch (prefix) {
    case kPrefixMilli: return value / 1000.0;
    case kPrefixMicro: return value / 1e6;
    case kPrefixMega: return value * 1e6;
    case kPrefixKilo: return value * 1000.0;
    default: return value;
  }
}

struct Target {
  DeltaSettings& settings;
  model::NmrParameters& p;
  std::array<double, 2> headerFrequency;
};

using Apply = std::function<void(const DeltaRecord&, Target&)>;

struct Name {
  std::string name;
  int unit;  // -1: any unit
  bool twoDOnly;
  Apply apply;
};

// The axis names, the same for X and Y.
void AddAxisNames(std::vector<Name>& names, int a, bool twoDOnly) {
  const auto name = [a](const char* rest) { return std::string(a == kX ? "X_" : "Y_") + rest; };
  names.push_back({name("DOMAIN"), -1, twoDOnly, [a](const DeltaRecord& r, Target& t) {
                     if (NucleusUnset(t.settings.axis[a].nucleus)) t.settings.axis[a].nucleus = DeltaNucleus(r.text);
                   }});
  names.push_back({name("FREQ"), -1, twoDOnly, [a](const DeltaRecord& r, Target& t) {
                     if (t.headerFrequency[a] <= 0 || t.headerFrequency[a] >= 2000)
                       t.settings.axis[a].frequencyMHz = ToMegahertz(r.real, r.unit.prefix);
                   }});
  names.push_back({name("OFFSET"), kUnitPpm, twoDOnly, [a](const DeltaRecord& r, Target& t) {
                     t.settings.axis[a].offsetPpm = OffsetPpm(r.real, r.unit.prefix);
                   }});
  names.push_back({name("RESOLUTION"), kUnitHertz, twoDOnly, [a](const DeltaRecord& r, Target& t) {
                     t.settings.axis[a].resolutionHz = ToHertz(r.real, r.unit.prefix);
                   }});
  names.push_back({name("SWEEP"), kUnitHertz, twoDOnly, [a](const DeltaRecord& r, Target& t) {
                     t.settings.axis[a].sweepHz = ToHertz(r.real, r.unit.prefix);
                   }});
  names.push_back({name("POINTS"), -1, twoDOnly,
                   [a](const DeltaRecord& r, Target& t) { t.settings.axis[a].points = r.integer; }});
}

const std::vector<Name>& Names() {
  static const std::vector<Name> names = [] {
    std::vector<Name> n;
    AddAxisNames(n, kX, false);
    AddAxisNames(n, kY, true);
    n.push_back({"EXPERIMENT", -1, false, [](const DeltaRecord& r, Target& t) { t.p.EXMOD = r.text; }});
    // Current instruments store the scan count without a unit; older ones as a counted value.
    n.push_back({"SCANS", kUnitCount, false, [](const DeltaRecord& r, Target& t) { t.p.SCANS = r.integer; }});
    n.push_back({"SCANS", kUnitNone, false, [](const DeltaRecord& r, Target& t) { t.p.SCANS = r.integer; }});
    n.push_back({"IRR_DOMAIN", -1, false, [](const DeltaRecord& r, Target& t) { t.p.IRNUC = DeltaNucleus(r.text); }});
    n.push_back({"IRR_FREQ", -1, false, [](const DeltaRecord& r, Target& t) {
                   t.p.IRFRQ = static_cast<float>(ToMegahertz(r.real, r.unit.prefix));
                 }});
    n.push_back({"IRR_PWIDTH", kUnitSeconds, false, [](const DeltaRecord& r, Target& t) {
                   t.p.IRRPW = static_cast<std::int16_t>(std::nearbyint(ToMicroseconds(r.real, r.unit.prefix)));
                 }});
    n.push_back({"X_PULSE", kUnitSeconds, false, [](const DeltaRecord& r, Target& t) {
                   t.p.PW[0] = static_cast<float>(ToMicroseconds(r.real, r.unit.prefix));
                 }});
    for (const char* ninety : {"X_90_WIDTH", "X90"})
      n.push_back({ninety, kUnitSeconds, false, [](const DeltaRecord& r, Target& t) {
                     t.settings.x90Microseconds = ToMicroseconds(r.real, r.unit.prefix);
                   }});
    n.push_back({"RELAXATION_DELAY", kUnitSeconds, false, [](const DeltaRecord& r, Target& t) {
                   t.p.PD = static_cast<float>(ToSeconds(r.real, r.unit.prefix));
                 }});
    n.push_back({"RECVR_GAIN", -1, false, [](const DeltaRecord& r, Target& t) { t.p.RGAIN = r.integer; }});
    n.push_back({"SOLVENT", -1, false, [](const DeltaRecord& r, Target& t) { t.p.SLVNT = r.text; }});
    n.push_back({"FILTER_MODE", -1, false, [](const DeltaRecord& r, Target& t) { t.settings.filterMode = r.text; }});
    n.push_back({"ADC_CARD", -1, false, [](const DeltaRecord& r, Target& t) { t.settings.adcCard = r.text; }});
    n.push_back({"TEMP_GET", kUnitCelsius, false,
                 [](const DeltaRecord& r, Target& t) { t.p.CTEMP = static_cast<float>(r.real); }});
    n.push_back({"SPIN_GET", kUnitHertz, false,
                 [](const DeltaRecord& r, Target& t) { t.p.CSPED = static_cast<float>(r.real); }});
    n.push_back({"X_PRESCANS", kUnitNone, false, [](const DeltaRecord& r, Target& t) { t.p.DUMMY = r.integer; }});
    n.push_back({"ACQ_DELAY", -1, false, [](const DeltaRecord& r, Target& t) {
                   t.p.DEADT = static_cast<float>(ToMicroseconds(r.real, r.unit.prefix));
                 }});
    for (const char* date : {"ACTUAL_START_TIME", "END_TIME"})
      n.push_back({date, -1, false, [](const DeltaRecord& r, Target& t) { t.settings.dateSeconds = r.integer; }});
    n.push_back({"FILTER_WIDTH", -1, true, [](const DeltaRecord& r, Target& t) {
                   t.p.FILTR = static_cast<float>(ToHertz(r.real, r.unit.prefix));
                 }});
    n.push_back({"Y_FREQ_FLIP", -1, true,
                 [](const DeltaRecord& r, Target& t) { t.settings.flipF1 = core::ToUpper(r.text) == "TRUE"; }});
    return n;
  }();
  return names;
}

}  // namespace

std::optional<std::vector<DeltaRecord>> ReadDeltaRecords(core::Bytes bytes, const DeltaHeader& h) {
  const core::ByteOrder order = h.dataOrder;
  if (!ParametersFit(h, bytes.size()) || h.parameterLength < kRecordHead) return std::nullopt;
  const std::int32_t recordSize = core::DecodeOr<std::int32_t>(bytes, h.parameterStart, order, 0);
  const std::int32_t highIndex = core::DecodeOr<std::int32_t>(bytes, h.parameterStart + 8, order, -2);
  if (recordSize < static_cast<std::int32_t>(kRecordMinimum) || highIndex < -1) return std::nullopt;
  const std::uint64_t count = static_cast<std::uint64_t>(highIndex) + 1;
  if (count > (h.parameterLength - kRecordHead) / static_cast<std::uint64_t>(recordSize)) return std::nullopt;
  std::vector<DeltaRecord> records;
  records.reserve(count);
  for (std::uint64_t i = 0; i < count; ++i)
    records.push_back(ReadRecord(bytes, h.parameterStart + kRecordHead + i * recordSize, order));
  return records;
}

void ApplyDeltaRecords(std::span<const DeltaRecord> records, bool twoD, DeltaSettings& settings,
                       model::NmrParameters& p) {
  Target target{settings, p, {settings.axis[kX].frequencyMHz, settings.axis[kY].frequencyMHz}};
  for (const DeltaRecord& r : records)
    for (const Name& name : Names())
      if (name.name == r.name && (twoD || !name.twoDOnly) && (name.unit < 0 || name.unit == r.unit.type))
        name.apply(r, target);
}

std::string DeltaNucleus(const std::string& name) {
  const std::string canonical = model::NormalizeNucleus(name);
  if (IsIsotope(canonical) || canonical == "NUL" || canonical == "OFF") return canonical;
  // "CARBON13": the element word gives the symbol, the digits the mass number.
  std::string word, mass;
  for (char c : core::ToUpper(core::Trim(name)))
    (std::isdigit(static_cast<unsigned char>(c)) ? mass : word) += c;
  const std::string element = model::NormalizeNucleus(word);
  if (mass.empty() || !IsIsotope(element)) return canonical;
  return mass + element.substr(element.find_first_not_of("0123456789"));
}

std::string DeltaDateText(std::int64_t seconds) {
  static constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::int64_t days = seconds >= 0 ? seconds / 86400 : (seconds - 86399) / 86400;
  const std::int64_t ofDay = seconds - days * 86400;
  // Civil date of a day count (days from 1970-01-01), shifted to the epoch 1990-01-01.
  const std::int64_t z = days + 7305 + 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t doe = z - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  const std::int64_t day = doy - (153 * mp + 2) / 5 + 1;
  const std::int64_t month = mp < 10 ? mp + 3 : mp - 9;
  const std::int64_t year = yoe + era * 400 + (month <= 2 ? 1 : 0);
  char text[48];
  std::snprintf(text, sizeof text, "%02d/%s/%04d  %02d:%02d:%02d", static_cast<int>(day), kMonths[month - 1],
                static_cast<int>(year), static_cast<int>(ofDay / 3600), static_cast<int>(ofDay / 60 % 60),
                static_cast<int>(ofDay % 60));
  return text;
}

double ToMicroseconds(double value, std::uint8_t prefix) {
  if (prefix == kPrefixNone) return value * 1e6;
  if (prefix == kPrefixMilli) return value * 1000.0;
  return value;
}

double ToSeconds(double value, std::uint8_t prefix) {
  if (prefix == kPrefixMilli) return value / 1000.0;
  if (prefix == kPrefixMicro) return value / 1e6;
  return value;
}

double ToHertz(double value, std::uint8_t prefix) {
  if (prefix == kPrefixMega) return value * 1e6;
  if (prefix == kPrefixKilo) return value * 1000.0;
  return value;
}

double ToMegahertz(double value, std::uint8_t prefix) {
  if (prefix == kPrefixMega) return value;
  if (prefix == kPrefixKilo) return value / 1000.0;
  return value / 1e6;
}

}  // namespace velk::formats::jeol
