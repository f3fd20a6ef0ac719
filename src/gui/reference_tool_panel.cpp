#include "gui/reference_tool_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "gui/operation_tools.h"

namespace velk::gui {

using model::F1;
using model::F2;

ReferenceToolPanel::ReferenceToolPanel(OperationTools& tools, operations::ReferenceTool& tool, QWidget* parent)
    : QWidget(parent), tools_(tools), tool_(tool) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(new QLabel("Click on the contour, or move the cross with the arrows, and type its shifts:", this));
  const auto field = [&](const char* label, model::Axis axis) {
    row->addWidget(new QLabel(label, this));
    auto* text = new QLineEdit(this);
    text->setObjectName(axis == F1 ? "RefText1" : "RefText2");
    text->setMaximumWidth(90);
    connect(text, &QLineEdit::editingFinished, this, [this, text, axis] {
      tools_.StopDrawing();
      if (tool_.SetShift(axis, text->text().toStdString())) tools_.ScaleChanged();
      else Show();
    });
    row->addWidget(text);
    return text;
  };
  textF2_ = field("F2 (ppm)", F2);
  textF1_ = field("F1 (ppm)", F1);
  // Up, down, left and right on the screen, whichever way the axes run there.
  const struct {
    const char* name;
    Qt::ArrowType arrow;
    int dx, dy;
  } arrows[] = {{"RefCommandUP", Qt::UpArrow, 0, -1},
                {"RefCommandDN", Qt::DownArrow, 0, 1},
                {"RefCommandLeft", Qt::LeftArrow, -1, 0},
                {"RefCommandRight", Qt::RightArrow, 1, 0}};
  for (const auto& a : arrows) {
    auto* b = new QToolButton(this);
    b->setObjectName(a.name);
    b->setArrowType(a.arrow);
    b->setAutoRepeat(true);
    b->setAutoRepeatDelay(500);
    b->setAutoRepeatInterval(50);
    connect(b, &QToolButton::clicked, this, [this, dx = a.dx, dy = a.dy] {
      const display::DisplayState& v = tools_.State();
      const int dc = v.ViewF2Start < v.ViewF2End ? dx : -dx;
      const int dr = v.ViewF1Start < v.ViewF1End ? -dy : dy;
      tools_.StopDrawing();
      tool_.MoveCross(dc, dr);
      tools_.ScaleChanged();
    });
    row->addWidget(b);
  }
  row->addStretch(1);
  auto* fix = new QPushButton("Fix", this);
  fix->setObjectName("Fix");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Cancel");
  connect(fix, &QPushButton::clicked, &tools_, &OperationTools::Fix);
  connect(cancel, &QPushButton::clicked, &tools_, &OperationTools::Cancel);
  row->addWidget(fix);
  row->addWidget(cancel);
  connect(&tools_, &OperationTools::changed, this, &ReferenceToolPanel::Show);
  Show();
}

void ReferenceToolPanel::Show() {
  textF2_->setText(QString::fromStdString(tool_.ShiftText(F2)));
  textF1_->setText(QString::fromStdString(tool_.ShiftText(F1)));
}

}  // namespace velk::gui
