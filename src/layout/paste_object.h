#pragma once
// Copy and paste of one page object through the page editor's own clipboard.
#include <optional>
#include <variant>

#include "layout/layout_document.h"

namespace velk::layout {

struct CopiedObject {
  ObjectKind kind = ObjectKind::Text;
  std::variant<LayoutText, LayoutLine, LayoutShape, LayoutImage> object;
};

// The object as it stands, for the clipboard; nothing is copied from a slot that holds nothing.
std::optional<CopiedObject> CopyObject(const LayoutDocument& doc, DrawOrderEntry entry);

// Inserts a duplicate moved by the offset (centimetres); an object that would leave the page is
// pulled back inside it whole. An image goes to the first free slot. A full table refuses with
// its message, as an insertion does.
platform::Outcome PasteObject(LayoutDocument& doc, const CopiedObject& copied, double offsetCm, double pageWidthCm,
                              double pageHeightCm);

}  // namespace velk::layout
