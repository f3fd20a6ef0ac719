#include "formats/jcamp/params.h"

#include <algorithm>
#include <array>
#include <limits>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <variant>

#include "core/text.h"
#include "model/nucleus.h"

namespace velk::formats::jcamp {
namespace {

using model::NmrParameters;
using FloatArray = std::array<float, 5> NmrParameters::*;
using LongArray = std::array<std::int32_t, 5> NmrParameters::*;

// A field of the parameter block: a plain member or one element of a member array.
using Field = std::variant<float NmrParameters::*, double NmrParameters::*, std::int32_t NmrParameters::*,
                          std::int16_t NmrParameters::*, std::string NmrParameters::*,
                          std::pair<FloatArray, int>, std::pair<LongArray, int>>;

struct JeolKey {
  const char* key;
  Field field;
};

// The keys in the writer's order. "##$DFILE=" and "##$DTYPE=" stand outside this table.
const std::vector<JeolKey>& JeolKeys() {
  using P = NmrParameters;
  static const std::vector<JeolKey> keys = [] {
    std::vector<JeolKey> k{
        {"##$ADBIT", &P::ADBIT}, {"##$COMNT", &P::COMNT}, {"##$CSPED", &P::CSPED}, {"##$CTEMP", &P::CTEMP},
        {"##$DELAY", &P::DELAY}, {"##$DEADT", &P::DEADT}, {"##$DUMMY", &P::DUMMY}, {"##$EXMOD", &P::EXMOD},
        {"##$EXPCM", &P::EXPCM}, {"##$FILTR", &P::FILTR}, {"##$FREQU", &P::FREQU}, {"##$IRFRQ", &P::IRFRQ},
        {"##$INTVL", &P::INTVL}, {"##$IRATN", &P::IRATN}, {"##$IRFIN", &P::IRFIN}, {"##$IRNUC", &P::IRNUC},
        {"##$IRPHS", &P::IRPHS}, {"##$IRRPW", &P::IRRPW}, {"##$IRSET", &P::IRSET}, {"##$INIWT", &P::IWT}};
    for (int i = 0; i < 5; ++i) k.push_back({nullptr, std::pair{&P::LOOP, i}});
    for (JeolKey e : std::initializer_list<JeolKey>{{"##$OBATN", &P::OBATN}, {"##$OBFIN", &P::OBFIN},
                                                    {"##$OBNUC", &P::OBNUC}, {"##$OBSET", &P::OBSET},
                                                    {"##$OBFRQ", &P::OFR}, {"##$PD", &P::PD}})
      k.push_back(e);
    for (int i = 0; i < 5; ++i) k.push_back({nullptr, std::pair{&P::PI, i}});
    k.push_back({"##$POINT", &P::POINT});
    for (int i = 0; i < 5; ++i) k.push_back({nullptr, std::pair{&P::PS, i}});
    for (int i = 0; i < 5; ++i) k.push_back({nullptr, std::pair{&P::PW, i}});
    for (JeolKey e : std::initializer_list<JeolKey>{
             {"##$RESOL", &P::RESOL}, {"##$RGAIN", &P::RGAIN}, {"##$SCANS", &P::SCANS}, {"##$SLVNT", &P::SLVNT},
             {"##$SMEXR", &P::SMEXR}, {"##$SMODE", &P::SMODE}, {"##$SMTMS", &P::SMTMS}, {"##$TIMES", &P::TIMES},
             {"##$TOSCN", &P::TOSCN}, {"##$TR", &P::TR}, {"##$TRATN", &P::TRATN}, {"##$TRFIN", &P::TRFIN},
             {"##$TRFRQ", &P::TRFRQ}, {"##$TRNUC", &P::TRNUC}, {"##$TRRPW", &P::TRRPW}, {"##$TRSET", &P::TRSET}})
      k.push_back(e);
    return k;
  }();
  return keys;
}

// Array elements are named by their array and number: "##$LOOP1", "##$PW3".
std::string KeyOf(const JeolKey& k) {
  if (k.key) return k.key;
  using P = NmrParameters;
  if (const auto* e = std::get_if<std::pair<LongArray, int>>(&k.field)) return "##$LOOP" + std::to_string(e->second + 1);
  const auto& [array, index] = std::get<std::pair<FloatArray, int>>(k.field);
  const char* name = array == &P::PI ? "##$PI" : array == &P::PS ? "##$PS" : "##$PW";
  return name + std::to_string(index + 1);
}

std::string Number(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.10g", value);
  return text;
}

std::string ValueText(const NmrParameters& p, const Field& field) {
  return std::visit(
      [&](const auto& f) -> std::string {
        using F = std::decay_t<decltype(f)>;
        if constexpr (std::is_same_v<F, std::string NmrParameters::*>) return p.*f;
        else if constexpr (std::is_same_v<F, std::pair<FloatArray, int>> || std::is_same_v<F, std::pair<LongArray, int>>)
          return Number((p.*(f.first))[f.second]);
        else return Number(p.*f);
      },
      field);
}

template <class T>
T Clamped(double value) {
  if (!std::isfinite(value)) return T{};
  return static_cast<T>(std::clamp<double>(value, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
}

void SetValue(NmrParameters& p, const Field& field, const std::string& text) {
  const double number = ParseNumber(text).value_or(0);
  std::visit(
      [&](const auto& f) {
        using F = std::decay_t<decltype(f)>;
        if constexpr (std::is_same_v<F, std::string NmrParameters::*>) p.*f = text;
        else if constexpr (std::is_same_v<F, std::pair<FloatArray, int>>) (p.*(f.first))[f.second] = Clamped<float>(number);
        else if constexpr (std::is_same_v<F, std::pair<LongArray, int>>) (p.*(f.first))[f.second] = Clamped<std::int32_t>(number);
        else p.*f = Clamped<std::remove_reference_t<decltype(p.*f)>>(number);
      },
      field);
}

// "##$KEY= value": the key upper-cased and the value text, "<...>" brackets removed.
std::pair<std::string, std::string> KeyAndText(const std::string& line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) return {};
  std::string text = core::Trim(line.substr(equals + 1));
  if (text.size() >= 2 && text.front() == '<' && text.back() == '>') text = text.substr(1, text.size() - 2);
  return {core::ToUpper(core::Trim(line.substr(0, equals))), text};
}

// Bruker stores the date as seconds since 1970 (UTC).
std::string DateFromSeconds(double seconds) {
  if (!(seconds > 0 && seconds < 4e9)) return {};
  const std::time_t t = static_cast<std::time_t>(seconds);
  std::tm utc{};
  gmtime_r(&t, &utc);
  char text[32];
  std::strftime(text, sizeof text, "%d/%b/%Y %H:%M:%S", &utc);
  return text;
}

}  // namespace

std::vector<std::pair<std::string, std::string>> JeolParameterLines(const model::Spectrum1D& s) {
  std::vector<std::pair<std::string, std::string>> lines{{"##$DFILE", s.texts.fileName}};
  for (const JeolKey& k : JeolKeys()) {
    lines.emplace_back(KeyOf(k), ValueText(s.params, k.field));
    // The order of the list puts DTYPE (always 0) after DEADT.
    if (lines.back().first == "##$DEADT") lines.emplace_back("##$DTYPE", "0");
  }
  return lines;
}

void ReadParaJeolJcamp(const std::string& line, model::Spectrum1D& s) {
  const auto [key, text] = KeyAndText(line);
  if (key == "##$DFILE") {
    s.texts.fileName = text;
    return;
  }
  for (const JeolKey& k : JeolKeys()) {
    if (KeyOf(k) != key) continue;
    SetValue(s.params, k.field, text);
    if (key == "##$OBNUC" || key == "##$IRNUC" || key == "##$TRNUC") SetValue(s.params, k.field, model::NormalizeNucleus(text));
    return;
  }
}

void ReadParaBruJcamp(const std::string& line, TextCursor& cursor, model::Spectrum1D& s) {
  std::string key;
  ParameterValues values;
  SplitParameterLine(line, cursor, key, values);
  key = core::ToUpper(key);
  key.erase(key.find_last_not_of('=') + 1);
  const std::string& text = values[0];
  const auto number = [&](std::size_t i = 0) { return ParseNumber(values[i]).value_or(0); };
  model::NmrParameters& p = s.params;
  if (key == "##$PULPROG") p.EXMOD = text;
  else if (key == "##$PROBHD") s.texts.probeHead = text;
  else if (key == "##$GRDPROG") s.texts.gradientProgram = text;
  else if (key == "##$INSTRUM") s.texts.instrument = text;
  else if (key == "##$DE") p.DELAY = static_cast<float>(number());
  else if (key == "##$BF1" && p.OFR == 0) p.OFR = static_cast<float>(number());
  else if (key == "##$DS") p.DUMMY = Clamped<std::int32_t>(number());
  else if (key == "##$FW") p.FILTR = static_cast<float>(number());
  else if (key == "##$RO") p.CSPED = static_cast<float>(number());
  else if (key == "##$SFO1") p.OFR = static_cast<float>(number());
  else if (key == "##$SW_H") p.FREQU = static_cast<float>(number());
  else if (key == "##$P") for (int i = 0; i < 5; ++i) p.PW[i] = static_cast<float>(number(i + 1));
  else if (key == "##$D") p.PD = static_cast<float>(number(1));
  else if (key == "##$SOLVENT") p.SLVNT = text;
  else if (key == "##$DECNUC") p.IRNUC = model::NormalizeNucleus(text);
  else if (key == "##$RG") p.RGAIN = Clamped<std::int32_t>(number());
  else if (key == "##$NS") p.SCANS = Clamped<std::int32_t>(number());
  else if (key == "##$TE") p.CTEMP = static_cast<float>(number());
  else if (key == "##$DATE" && p.DATIM.empty()) p.DATIM = DateFromSeconds(number());
  // The digital filter of the receiver, which the transform of a FID needs.
  else if (key == "##$GRPDLY") s.vendor.groupDelay = number();
  else if (key == "##$DECIM") s.vendor.decimation = Clamped<std::int32_t>(number());
  else if (key == "##$DSPFVS") s.vendor.filterVersion = Clamped<std::int32_t>(number());
  // "##$CNST" is read past (its array lines belong to it) and kept nowhere.
}

}  // namespace velk::formats::jcamp
