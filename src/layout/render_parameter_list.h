#pragma once
// The parameter block of the page: each line of the list drawn as its label and value, the values
// lined up on their decimal points.
#include "layout/draw_coded_text.h"
#include "layout/parameter_macros.h"

namespace velk::layout {

inline constexpr int kDefaultDecimalColumn = 25;

struct ParameterBlockPlacement {
  double x = 0, y = 0;        // top-left corner, device units
  double scale = 1;           // device units per point
  double width = kNoWidthLimit;  // long text values wrap inside it
  int decimalColumn = kDefaultDecimalColumn;  // "Position of Decimal point", in characters
};

// Draws the list (or, with draw false, only measures it) and returns the extent of the block.
platform::Extent RenderParameterList(platform::Surface& surface, const ParameterList& list, const TextFont& font,
                                     platform::Color color, const ParameterBlockPlacement& where,
                                     const ParameterSource& source, bool draw = true);

}  // namespace velk::layout
