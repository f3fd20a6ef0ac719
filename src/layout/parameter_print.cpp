#include "layout/parameter_print.h"

#include <algorithm>
#include <sstream>

#include "core/text.h"
#include "layout/parameter_macros.h"

namespace velk::layout {
namespace {

constexpr std::string_view kFileKey = "PARAMETER TABLE";
constexpr std::string_view kListKey = "PARA TABLE";
constexpr std::string_view kFolderKey = "PRINT TABLE DIR";
constexpr std::string_view kFontName = "PARAMETER FONT NAME", kFontSize = "PARAMETER FONT SIZE",
                           kFontBold = "PARAMETER FONT BOLD", kFontItalic = "PARAMETER FONT ITAL";

constexpr std::pair<ParameterListSource, std::string_view> kSourceWords[] = {
    {ParameterListSource::Default, "DEFAULT"}, {ParameterListSource::List, "LIST"}, {ParameterListSource::File, "FILE"}};

// The first entry of "PARA TABLE": the source and the decimal column ("LIST 25").
void ReadHead(std::string_view head, ParameterPrint& choice) {
  std::istringstream in{std::string(head)};
  std::string word;
  int column = 0;
  in >> word >> column;
  word = core::ToUpper(word);
  for (const auto& [source, name] : kSourceWords)
    if (word == name) choice.source = source;
  if (column >= kSmallestDecimalColumn && column <= kLargestDecimalColumn) choice.decimalColumn = column;
}

std::string_view WordOf(ParameterListSource source) {
  for (const auto& [s, name] : kSourceWords)
    if (s == source) return name;
  return "DEFAULT";
}

}  // namespace

ParameterPrint ParameterPrintFromSettings(const core::Settings& settings) {
  ParameterPrint choice;
  choice.file = core::Text(settings, kFileKey);
  const std::vector<std::string>& lines = core::List(settings, kListKey);
  if (!lines.empty()) ReadHead(lines.front(), choice);
  for (std::size_t i = 1; i < lines.size(); ++i)
    if (auto line = ParseParameterLine(lines[i])) choice.list.push_back(*line);
  if (!core::Text(settings, kFontName).empty()) choice.font.name = core::Text(settings, kFontName);
  if (const double size = core::Number(settings, kFontSize); size > 0) choice.font.points = size;
  choice.font.bold = core::Number(settings, kFontBold) != 0;
  choice.font.italic = core::Number(settings, kFontItalic) != 0;
  // A file choice without a file prints the default list.
  if (choice.source == ParameterListSource::File && choice.file.empty()) choice.source = ParameterListSource::Default;
  return choice;
}

void StoreParameterPrint(const ParameterPrint& choice, core::Settings& settings) {
  core::Set(settings, kFileKey, choice.file.string());
  std::vector<std::string>& lines = settings.lists[std::string(kListKey)];
  lines = {std::string(WordOf(choice.source)) + " " + std::to_string(choice.decimalColumn)};
  for (const ParameterLine& line : choice.list) lines.push_back(FormatParameterLine(line));
  core::Set(settings, kFontName, choice.font.name);
  core::SetNumber(settings, kFontSize, choice.font.points);
  core::SetNumber(settings, kFontBold, choice.font.bold ? 1 : 0);
  core::SetNumber(settings, kFontItalic, choice.font.italic ? 1 : 0);
}

std::filesystem::path ParameterFolder(const core::Settings& settings, const std::filesystem::path& fallback) {
  const std::string& folder = core::Text(settings, kFolderKey);
  return folder.empty() ? fallback : std::filesystem::path(folder);
}

platform::Outcome ApplyParameterPrint(const ParameterPrint& choice, const std::filesystem::path& parameterFolder,
                                      PrintedParameters& printed) {
  ParameterList list;
  switch (choice.source) {
    case ParameterListSource::Default: list = DefaultParameterList(); break;
    case ParameterListSource::List: list = choice.list; break;
    case ParameterListSource::File: {
      const platform::Outcome read = ReadParaFile(choice.file, parameterFolder, list);
      if (!read.ok()) return read;
      break;
    }
  }
  printed = {choice, std::move(list)};
  return {};
}

PrintedParameters PrintedParametersFromSettings(const core::Settings& settings,
                                                const std::filesystem::path& parameterFolder,
                                                platform::Outcome* failure) {
  PrintedParameters printed;
  const ParameterPrint choice = ParameterPrintFromSettings(settings);
  platform::Outcome read = ApplyParameterPrint(choice, parameterFolder, printed);
  if (!read.ok()) {
    // The default list stays; the rest of the choice (font, column, the edited list) still holds.
    ParameterPrint kept = choice;
    kept.source = ParameterListSource::Default;
    ApplyParameterPrint(kept, parameterFolder, printed);
  }
  if (failure) *failure = std::move(read);
  return printed;
}

ParameterList OfferedParameters(std::initializer_list<std::filesystem::path> folders) {
  ParameterList list;
  for (const std::filesystem::path& folder : folders) {
    if (folder.empty() || !ReadAllParameters(folder, list).ok()) continue;
    // The file's own comments are notes about it, not entries to print.
    std::erase_if(list, [](const ParameterLine& line) { return line.Kind == ";"; });
    return list;
  }
  return MacroParameterList();
}

ParameterPrintPage ParameterPrintPageOf(const PrintedParameters& printed, const EditedPage& page,
                                        const model::Spectrum2D& spectrum) {
  return {printed, page.frames[FrameKind::Parameter], spectrum.texts.sampleId, spectrum.comment, spectrum.commentRtf};
}

void ParameterPrintCommand::Undo(EditedPage& page) const {
  target_ = before_.printed;
  StoreParameterPrint(before_.printed.choice, settings_);
  page.frames[FrameKind::Parameter] = before_.frame;
  spectrum_.texts.sampleId = before_.sampleId;
  spectrum_.comment = before_.comment;
  spectrum_.commentRtf = before_.commentRtf;
}

}  // namespace velk::layout
