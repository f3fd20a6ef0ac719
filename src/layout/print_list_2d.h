#pragma once
// The peak list on paper: the heading, the column captions and the rows, page after page, each
// page with the heading again.
#include <cstddef>

#include "layout/draw_coded_text.h"
#include "layout/render_page.h"
#include "operations/peak_print_list.h"
#include "platform/surface.h"

namespace velk::layout {

// Draws one page of the list from row `first` on a sheet of the paper at the resolution, and
// returns the row after the last one that fitted (the list's size when it is done). At least one
// row goes on every page, so that a caller looping over pages always ends.
std::size_t PrintList2D(platform::Surface& surface, const operations::PrintList& list, const TextFont& font,
                        const Paper& paper, double dotsPerInch, std::size_t first);

}  // namespace velk::layout
