#pragma once
// The parameter list of the printed page: one line a macro (a value of the data set), a heading
// ("$") or a comment (";"). Lists are kept in ".prt" files, one line a ParameterLine:
//   DFILE     {File Name}
//   $---F2 Parameter----
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/message.h"

namespace velk::layout {

struct ParameterLine {
  std::string Kind;   // the macro, or ";" for a comment, or "$" for a heading
  std::string Label;  // replaces the macro's own label when given; empty for ";" and "$"
  std::string Text;   // text behind the macro; for ";" and "$" the line's text
  friend bool operator==(const ParameterLine&, const ParameterLine&) = default;
};
using ParameterList = std::vector<ParameterLine>;

inline constexpr std::string_view kParameterFileExtension = ".prt";
inline constexpr std::size_t kMacroColumn = 10;

// One line of a parameter file; nothing for an empty line.
std::optional<ParameterLine> ParseParameterLine(std::string_view line);
// The line as the writer puts it: the macro in a column of 10 characters.
std::string FormatParameterLine(const ParameterLine& line);

// The name with the ".prt" extension in place of its own; a bare name lies in the parameter folder.
std::filesystem::path ParameterFilePath(const std::filesystem::path& name, const std::filesystem::path& parameterFolder);

// Reads a list; on failure the list is left as it was and the outcome carries "ReadParaFile/Fm17"
// as the title of its message, for the log.
platform::Outcome ReadParaFile(const std::filesystem::path& name, const std::filesystem::path& parameterFolder,
                               ParameterList& list);
platform::Outcome WriteParaFile(const std::filesystem::path& name, const std::filesystem::path& parameterFolder,
                                const ParameterList& list);
// The list of all parameters and labels offered for editing, "NMRAllParE.lst" in the program's
// data folder, in the same form as a ".prt" file but under its own name.
inline constexpr std::string_view kAllParametersFile = "NMRAllParE.lst";
platform::Outcome ReadAllParameters(const std::filesystem::path& dataFolder, ParameterList& list);

// The list of a file's text (Shift-JIS), and the text of a list.
ParameterList ParseParameterText(std::string_view text);
std::string FormatParameterText(const ParameterList& list);

// The list used when no file is chosen.
ParameterList DefaultParameterList();

}  // namespace velk::layout
