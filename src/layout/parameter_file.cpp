#include "layout/parameter_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

#include "core/atomic_write.h"
#include "core/text.h"

namespace velk::layout {
namespace {

constexpr std::string_view kReadTag = "ReadParaFile/Fm17";
constexpr std::string_view kWriteTag = "WriteParaFile/Fm17";

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t' || s.front() == '\r')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

// Where the macro ends: the first "{", else the first blank, else the first tab, each only when it
// is not in the first column; npos when the whole line is the macro.
std::size_t MacroEnd(std::string_view line) {
  for (char stop : {'{', ' ', '\t'}) {
    const std::size_t at = line.find(stop);
    if (at != std::string_view::npos && at > 0) return at;
  }
  return std::string_view::npos;
}

platform::Outcome Failure(std::string_view tag, const std::filesystem::path& file) {
  return {-1, {std::string(tag), std::string(std::strerror(errno)) + " (" + file.string() + ")",
               platform::Buttons::Ok, platform::Icon::Warning, false}};
}

// A failed read leaves the list as it was.
platform::Outcome ReadListFile(const std::filesystem::path& file, ParameterList& list) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return Failure(kReadTag, file);
  std::stringstream text;
  text << in.rdbuf();
  if (in.bad()) return Failure(kReadTag, file);
  list = ParseParameterText(text.str());
  return {};
}

}  // namespace

std::optional<ParameterLine> ParseParameterLine(std::string_view raw) {
  const std::string_view line = TrimBlanks(raw);
  if (line.empty()) return std::nullopt;
  if (line.front() == ';' || line.front() == '$') return ParameterLine{std::string(1, line.front()), {}, std::string(line.substr(1))};
  const std::size_t end = MacroEnd(line);
  if (end == std::string_view::npos) return ParameterLine{std::string(line), {}, {}};
  ParameterLine result{std::string(TrimBlanks(line.substr(0, end))), {}, {}};
  std::string_view rest = line.substr(end);
  while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) rest.remove_prefix(1);
  if (rest.empty() || rest.front() != '{') {
    result.Text = std::string(rest);
    return result;
  }
  std::size_t close = rest.find('}');
  const bool closed = close != std::string_view::npos;
  if (!closed) close = std::min(rest.find(' '), rest.find('\t'));  // an open label ends at a blank or tab
  result.Label = std::string(rest.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
  if (close != std::string_view::npos) result.Text = std::string(rest.substr(close + (closed ? 1 : 0)));
  return result;
}

std::string FormatParameterLine(const ParameterLine& line) {
  if (line.Kind == ";" || line.Kind == "$") return line.Kind + line.Text;
  std::string out = line.Kind;
  if (line.Label.empty() && line.Text.empty()) return out;
  out.resize(std::max(out.size() + 1, kMacroColumn), ' ');
  if (!line.Label.empty()) out += "{" + line.Label + "}";
  return out + line.Text;
}

ParameterList ParseParameterText(std::string_view text) {
  ParameterList list;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    if (auto line = ParseParameterLine(core::Cp932ToUtf8(text.substr(start, end - start)))) list.push_back(*line);
    start = end + 1;
  }
  return list;
}

std::string FormatParameterText(const ParameterList& list) {
  std::string out;
  for (const ParameterLine& line : list) out += core::Utf8ToCp932(FormatParameterLine(line)) + "\r\n";
  return out;
}

std::filesystem::path ParameterFilePath(const std::filesystem::path& name, const std::filesystem::path& parameterFolder) {
  std::filesystem::path file = name;
  file.replace_extension(kParameterFileExtension);
  if (!file.has_parent_path()) file = parameterFolder / file;
  return file;
}

platform::Outcome ReadParaFile(const std::filesystem::path& name, const std::filesystem::path& parameterFolder,
                               ParameterList& list) {
  return ReadListFile(ParameterFilePath(name, parameterFolder), list);
}

platform::Outcome ReadAllParameters(const std::filesystem::path& dataFolder, ParameterList& list) {
  return ReadListFile(dataFolder / kAllParametersFile, list);
}

platform::Outcome WriteParaFile(const std::filesystem::path& name, const std::filesystem::path& parameterFolder,
                                const ParameterList& list) {
  const std::filesystem::path file = ParameterFilePath(name, parameterFolder);
  const std::string text = FormatParameterText(list);
  platform::Outcome outcome = core::WriteAtomically(file, [&](std::ostream& out) {
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    return bool(out);
  });
  if (!outcome.ok()) outcome.message.title = std::string(kWriteTag);
  return outcome;
}

ParameterList DefaultParameterList() {
  static constexpr std::string_view kDefault[] = {
      "DFILE     {File Name}", "DATIM     {Date}", "COMNT     {Comment}", "EXMOD     {Pulse Mode}",
      "$---F2 Parameter----", "F2NUC     {F2-Nucleus}", "F2FRQ     {F2-ObsFreq}", "F2PNT     {F2-Point}",
      "F2RES     {F2-Resol}", "F2REF     {F2-Ref.}", "WINDOWF2  {Window(F2)}", "F21DSPC   {1D Spec.(F2)}",
      "$---F1 Parameter----", "F1NUC     {F1-Nucleus}", "F1FRQ     {F1-ObsFreq}", "F1PNT     {F1-Point}",
      "F1RES     {F1-Resol}", "F1REF     {F1-Ref.}", "WINDOWF1  {Window(F1)}", "F11DSPC   {1D Spec.(F1)}",
      "$----Aquisition Parameter--------", "SCANS     {Scan}", "ACQTM     {AcqTime}", "PD        {Interval}",
      "PW1       {PulseWidth1}", "PW2       {PulseWidth2}", "PI1       {Pulse Interval 1}",
      "PI2       {Pulse Interval 2}", "RGAIN     {ReceiverGain}", "CTEMP     {Temperature}", "SLVNT     {Solvent}",
      "OPERT     {Operator}"};
  ParameterList list;
  for (std::string_view line : kDefault) list.push_back(*ParseParameterLine(line));
  return list;
}

}  // namespace velk::layout
