#pragma once
// The page document in the sections of a Ver.4 file. Every section opens with its tag and, at
// +16, the count of its records; the records begin at +32:
//   "## LINE DATA"    64-byte line records (PackLineRecord)
//   "## CIRCLE", "## RECTANGLE"  64-byte records, nine fields at 0 to 32
//   "## PICTURE"      32 bytes a slot: index, left, top, right, bottom, and at 20 the offset and
//                     length of the picture's own bytes, which follow the records
//   "## PICTUREEX"    48 bytes a slot: index, kind, and the four extended values at 16 to 31
//   "##DRAW ORDER"    kind and index, a long each
//   "## TEXT DATA"    a table of offsets (one long a text, from the section's start), then the
//                     texts: an 80-byte head, the coded text, the rich text
// Bytes that no field covers (the rest of a record, a section's tail) are kept as they were read,
// so that a file read and written again is unchanged.
#include <string_view>
#include <vector>

#include "layout/layout_document.h"
#include "model/carried.h"

namespace velk::layout {

// The three pages a file can hold.
enum class LayoutPage { Page2D, Page1D, Simulation };

struct LayoutTags {
  std::string_view line, text, picture, pictureEx, circle, rectangle, drawOrder;
};
LayoutTags TagsOf(LayoutPage page);

// The document of a page from the sections carried with a data set; absent or damaged sections
// give empty tables, never a read outside a section.
LayoutDocument ReadLayoutSections(const std::vector<model::CarriedSection>& sections, LayoutPage page);
// Puts the page's sections into the list, in place of those it held; a section that has nothing
// to store and was not there before is left out.
void WriteLayoutSections(const LayoutDocument& doc, LayoutPage page, std::vector<model::CarriedSection>& sections);

}  // namespace velk::layout
