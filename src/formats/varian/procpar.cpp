#include "formats/varian/procpar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/text_lines.h"
#include "formats/varian/messages.h"
#include "formats/varian/recipe.h"
#include "model/nucleus.h"

namespace velk::formats::varian {
namespace {

namespace msg = messages;

// procpar files hold a few thousand parameters; anything far larger is no parameter file.
constexpr std::uint64_t kMaxParameterBytes = 64 * 1024 * 1024;

std::vector<std::string> Words(const std::string& line) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while ((at = line.find_first_not_of(" \t", at)) != std::string::npos) {
    const std::size_t end = std::min(line.find_first_of(" \t", at), line.size());
    words.push_back(line.substr(at, end - at));
    at = end;
  }
  return words;
}

// The text between the first pair of double quotes from position on; position moves past it.
std::optional<std::string> QuotedFrom(const std::string& line, std::size_t& position) {
  const std::size_t open = line.find('"', position);
  if (open == std::string::npos) return std::nullopt;
  std::size_t close = open + 1;
  while (close < line.size() && line[close] != '"') close += line[close] == '\\' ? 2 : 1;
  position = std::min(close + 1, line.size());
  return line.substr(open + 1, std::min(close, line.size()) - open - 1);
}

// One parameter's value lines: reals all on the count's line, strings one a line.
std::optional<std::vector<std::string>> ReadValues(TextCursor& cursor, bool isString) {
  const std::string line = ReadTextLine(cursor);
  std::size_t position = 0;
  int count = 0;
  if (std::sscanf(line.c_str(), "%d", &count) != 1 || count < 0) return std::nullopt;
  std::vector<std::string> values;
  if (!isString) {
    std::vector<std::string> words = Words(line);
    words.erase(words.begin());
    return words;
  }
  for (int i = 0; i < count && !cursor.AtEnd(); ++i) {
    const std::string text = i == 0 ? line : ReadTextLine(cursor);
    position = 0;
    const auto value = QuotedFrom(text, position);
    if (!value) return std::nullopt;
    values.push_back(*value);
  }
  return values;
}

std::string DateOfStamp(const std::string& stamp) {
  std::string digits;
  for (char c : stamp)
    if (c >= '0' && c <= '9') digits += c;
  if (digits.size() < 14) return {};
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const int month = std::stoi(digits.substr(4, 2));
  if (month < 1 || month > 12) return {};
  return digits.substr(6, 2) + "/" + kMonths[month - 1] + "/" + digits.substr(0, 4) + " " + digits.substr(8, 2) + ":" +
         digits.substr(10, 2) + ":" + digits.substr(12, 2);
}

template <class T>
T Clamped(double value) {
  if (!std::isfinite(value)) return T{};
  return static_cast<T>(std::clamp<double>(value, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
}

}  // namespace

std::optional<VarianParameters> ReadVarianParameters(const std::filesystem::path& file) {
  const auto bytes = core::ReadWholeFile(file.string(), kMaxParameterBytes);
  if (!bytes) return std::nullopt;
  TextCursor cursor{*bytes, 0};
  VarianParameters parameters;
  while (!cursor.AtEnd()) {
    const std::vector<std::string> head = Words(ReadTextLine(cursor));
    if (head.empty()) break;
    if (head.size() < 3) break;  // not a name line: the rest of the file is not ours to guess
    const bool isString = head[2] == "2";
    auto values = ReadValues(cursor, isString);
    if (!values) break;
    // A number switched off (its active flag 0) reads as 'n', as the vendor's software shows it.
    if (!isString && head.size() > 9 && head[9] == "0") *values = {"n"};
    ReadTextLine(cursor);  // the enumeration line
    parameters[core::ToUpper(head[0])] = std::move(*values);
  }
  return parameters;
}

std::optional<std::filesystem::path> FindVarianParameterFile(const std::filesystem::path& dataFile) {
  std::error_code error;
  const std::filesystem::path folder = dataFile.parent_path();
  for (const auto& place : {folder, folder.parent_path()})
    for (const char* name : {"procpar", "curpar", "PROCPAR", "CURPAR"})
      if (std::filesystem::is_regular_file(place / name, error)) return place / name;
  return std::nullopt;
}

std::string VarianText(const VarianParameters& p, const std::string& name) {
  const auto found = p.find(name);
  return found == p.end() || found->second.empty() ? std::string() : core::Trim(found->second[0]);
}

double VarianNumber(const VarianParameters& p, const std::string& name, double fallback) {
  return ParseNumber(VarianText(p, name)).value_or(fallback);
}

model::ModeResult RMV(const std::filesystem::path& parameterFile, platform::Prompt& prompt) {
  model::ModeResult result;
  const auto p = ReadVarianParameters(parameterFile);
  if (!p) {
    result.reason = msg::kCannotRead;
    return result;
  }
  const std::string array = core::ToUpper(VarianText(*p, "ARRAY"));
  const double arrayDim = VarianNumber(*p, "ARRAYDIM", 1);
  const double sfrq = VarianNumber(*p, "SFRQ");
  std::string sequence = VarianText(*p, "SEQFIL");
  if (sequence.empty()) sequence = VarianText(*p, "PSLABEL");
  result.code = 0;
  result.modeText = "1D:" + sequence;
  const bool phase = array == "PHASE";
  const bool maybeArray = (!array.empty() && !phase) ? arrayDim > 1 : arrayDim >= 2 && arrayDim <= 32;
  if (arrayDim <= 1) return result;
  if (maybeArray) {
    const platform::Message question{msg::kQuestionTitle, msg::kQuestion, platform::Buttons::YesNo,
                                     platform::Icon::Question, true};
    if (prompt.Ask(question) == platform::Answer::No) return result;
  }
  const F1Channel f1 = F1ChannelOf(*p);
  if (!f1.heteronuclear && sfrq == 0) {
    result = {};
    result.code = -1;
    result.reason = msg::kNoFrequency;
    return result;
  }
  result.modeText = std::string(phase ? "VPH_" : "V_") + (f1.heteronuclear ? "HETERO" : "HOMO") + ":" + sequence;
  if (sfrq != 0 && f1.mhz != 0) result.kind = std::fabs(sfrq - f1.mhz) / sfrq < 0.01 ? "HOMO" : "HETERO";
  return result;
}

int VarianClassOf(const std::string& modeText) {
  if (modeText.starts_with("VPH_HOMO")) return model::VPH_HOMO;
  if (modeText.starts_with("V_HOMO")) return model::V_HOMO;
  if (modeText.starts_with("VPH_HETERO")) return model::VPH_HETERO;
  if (modeText.starts_with("V_HETERO")) return model::V_HETERO;
  return model::kUnknownClass;
}

namespace {

// The keys that both record kinds take.
void ReadCommon(const VarianParameters& p, model::NmrParameters& n, model::DescriptiveTexts& texts) {
  n.CSPED = static_cast<float>(VarianNumber(p, "SPIN"));
  n.OFR = static_cast<float>(VarianNumber(p, "SFRQ"));
  n.FREQU = static_cast<float>(VarianNumber(p, "SW"));
  n.PD = static_cast<float>(VarianNumber(p, "D1"));
  n.POINT = Clamped<std::int32_t>(VarianNumber(p, "NP"));
  // The sequence name is seqfil, else pslabel; an experiment list stands in for neither.
  n.EXMOD = VarianText(p, "SEQFIL");
  if (n.EXMOD.empty()) n.EXMOD = VarianText(p, "PSLABEL");
  if (n.EXMOD.empty()) n.EXMOD = VarianText(p, "EXPLIST");
  n.OBNUC = model::NormalizeNucleus(VarianText(p, "TN"));
  n.PW[0] = static_cast<float>(VarianNumber(p, "PW"));
  n.SLVNT = VarianText(p, "SOLVENT");
  n.IRNUC = model::NormalizeNucleus(VarianText(p, "DN"));
  n.RGAIN = Clamped<std::int32_t>(VarianNumber(p, "GAIN"));
  n.SCANS = Clamped<std::int32_t>(VarianNumber(p, "CT"));
  n.TIMES = Clamped<std::int32_t>(VarianNumber(p, "NT"));
  n.CTEMP = static_cast<float>(VarianNumber(p, "TEMP"));
  n.DATIM = DateOfStamp(VarianText(p, "TIME_SUBMITTED"));
  if (n.DATIM.empty()) n.DATIM = VarianText(p, "DATE");
  texts.instrument = "Varian UNITY";
  texts.dataTypeText = "VARIAN UNITY";
}

}  // namespace

void ReadParaVarian(const VarianParameters& p, model::Spectrum1D& s) {
  ReadCommon(p, s.params, s.texts);
  const std::string array = VarianText(p, "ARRAY");
  const double arrayDim = VarianNumber(p, "ARRAYDIM", 1);
  const auto values = p.find(core::ToUpper(array));
  if (arrayDim >= 2 && values != p.end()) s.arrayCount = static_cast<std::int32_t>(values->second.size());
}

void ReadParaVarian2D(const VarianParameters& p, model::Spectrum2D& s) {
  ReadCommon(p, s.params, s.texts);
  s.extras[model::F2].absFreqCenter = s.params.OFR;
  s.extras[model::F2].nucleus = s.params.OBNUC;
  s.axis[model::F2].Frequency = s.params.FREQU;
  const F1Channel f1 = F1ChannelOf(p);
  s.extras[model::F1].absFreqCenter = f1.mhz;
  s.extras[model::F1].absFreq0ppm = f1.zeroPpmMhz;
  s.extras[model::F1].nucleus = f1.nucleus;
  s.axis[model::F1].Frequency = static_cast<float>(VarianNumber(p, "SW1"));
  s.extras[model::F1].fidPoints = Clamped<std::int32_t>(VarianNumber(p, "NI"));
}

}  // namespace velk::formats::varian
