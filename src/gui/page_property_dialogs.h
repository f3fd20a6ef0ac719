#pragma once
// The property dialogs of the page's objects and frames: "Property of Arrows", "Property of
// Circle/Oval/Rectangle", and the background and frame line of a frame. Each edits a copy and
// answers whether it was accepted.
#include <QString>

#include "layout/layout_objects.h"
#include "layout/page_frames.h"

class QWidget;

namespace velk::gui {

bool EditArrowProperty(QWidget* parent, layout::LayoutLine& line);
bool EditShapeProperty(QWidget* parent, layout::LayoutShape& shape, bool circle);
bool EditFrameProperty(QWidget* parent, layout::PageFrame& frame, const QString& name);

}  // namespace velk::gui
