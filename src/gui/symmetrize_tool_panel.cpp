#include "gui/symmetrize_tool_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include "gui/operation_tools.h"
#include "operations/messages.h"

namespace velk::gui {

SymmetrizeToolPanel::SymmetrizeToolPanel(OperationTools& tools, operations::SymmetrizeTool& tool, QWidget* parent)
    : QWidget(parent), tools_(tools), tool_(tool) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(new QLabel(QString::fromUtf8(operations::messages::kSymmetrizeHint.data()), this));
  row->addSpacing(12);
  for (int direction : {-1, 1}) {
    auto* b = new QToolButton(this);
    b->setArrowType(direction < 0 ? Qt::LeftArrow : Qt::RightArrow);
    b->setObjectName(direction < 0 ? "shiftLeft" : "shiftRight");
    b->setAutoRepeat(true);
    b->setAutoRepeatDelay(500);
    b->setAutoRepeatInterval(50);
    // The arrow moves the line the way it points on the screen.
    connect(b, &QToolButton::clicked, this, [this, direction] {
      const display::DisplayState& v = tools_.State();
      tool_.ShiftStep(direction, v.ViewF2Start < v.ViewF2End);
      tools_.MarksChanged();
    });
    row->addWidget(b);
  }
  shift_ = new QLabel(this);
  shift_->setObjectName("symShift");
  shift_->setMinimumWidth(110);
  row->addWidget(shift_);
  row->addStretch(1);
  const std::pair<const char*, void (OperationTools::*)()> commands[] = {
      {"Preview", &OperationTools::Preview},
      {"Rest Symmetrization", &OperationTools::Reset},
      {"Fix Symmetrization, and Exit", &OperationTools::Fix},
      {"Discard Symmetrization, and Exit", &OperationTools::Cancel}};
  for (const auto& [text, run] : commands) {
    auto* b = new QPushButton(text, this);
    b->setObjectName(text);
    connect(b, &QPushButton::clicked, &tools_, run);
    row->addWidget(b);
    if (run == &OperationTools::Fix) fix_ = b;
  }
  connect(&tools_, &OperationTools::changed, this, &SymmetrizeToolPanel::Show);
  Show();
}

void SymmetrizeToolPanel::Show() {
  shift_->setText(QString("Shift %1 points").arg(static_cast<double>(tool_.SymShift()), 0, 'f', 2));
  fix_->setEnabled(tool_.FixEnabled());
}

}  // namespace velk::gui
