#pragma once
// The macros of the parameter list: each names a value of the data set and turns it into a label
// and a value text in the text codes, with the unit and number format that belong to it.
#include <array>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "layout/parameter_file.h"
#include "model/spectrum.h"

namespace velk::layout {

// The prediction values of one axis as the transform used them.
struct LpValues {
  std::int32_t backward = 0, order = 0, points = 0, start = 0;
  bool used = false;  // the fill word of the window line says "LP Fill" instead of "ZeroFill"
};

// Everything the macros read besides the record itself.
struct ParameterSource {
  const model::Spectrum2D& s;
  bool greekUnits = true;  // false when the print font option "Japanese Font in English Font" is on
  std::tm printTime{};     // "PRNT_DATE"
  std::string f2TraceName{}, f1TraceName{};  // the 1D sets shown beside the contour; empty when none
  bool f1Exchanged = false;              // "2DXCHG"
  bool fidArranged = false;              // "2DEDIT"
  std::array<LpValues, 2> lp{};          // F1 first, F2 second, as the axes
};

struct RenderedParameter {
  std::string label;
  std::string value;  // coded text; empty when the data set has no such value
  bool heading = false;
};

// The label and value of a line; nothing for a comment line. An unknown macro yields the line as
// it stands: its label (or the macro) and its text.
std::optional<RenderedParameter> RenderParameter(const ParameterLine& line, const ParameterSource& source);
bool IsKnownMacro(std::string_view macro);
// Every macro the program knows, in alphabetical order, each with its own label: what "Edit
// Parameters" offers when no list of all parameters is installed.
ParameterList MacroParameterList();

}  // namespace velk::layout
