#include "gui/trace_reference_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "gui/operation_tools.h"

namespace velk::gui {

TraceReferencePanel::TraceReferencePanel(OperationTools& tools, operations::TraceReferenceTool& tool, QWidget* parent)
    : QWidget(parent), tools_(tools), tool_(tool) {
  const bool f1 = tool.Axis() == model::F1;
  setObjectName(f1 ? "Ref_1DToolbar1" : "Ref_1DToolbar2");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(new QLabel(f1 ? "Click on the F1 trace, and type the shift of that point:"
                               : "Click on the F2 trace, and type the shift of that point:",
                            this));
  shift_ = new QLineEdit(this);
  shift_->setObjectName("RefText1D");
  shift_->setFixedWidth(90);
  connect(shift_, &QLineEdit::editingFinished, this, [this] {
    if (tool_.SetShift(shift_->text().toStdString())) tools_.MarksChanged();
    else Show();
  });
  row->addWidget(new QLabel("ppm", this));
  row->insertWidget(1, shift_);
  auto* centre = new QPushButton(f1 ? "Set Center Frequency of F1" : "Set Center Frequency of F2", this);
  centre->setObjectName("SetCenter");
  centre->setEnabled(tool.CanSetCenter());
  connect(centre, &QPushButton::clicked, this, [this] {
    if (tool_.SetCenter()) tools_.MarksChanged();
  });
  row->addWidget(centre);
  row->addStretch(1);
  auto* fix = new QPushButton("Fix", this);
  fix->setObjectName("Fix");
  fix->setToolTip("Set Reference, and Exit");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Cancel");
  cancel->setToolTip("Discard Reference Setting, and Exit");
  connect(fix, &QPushButton::clicked, &tools_, &OperationTools::Fix);
  connect(cancel, &QPushButton::clicked, &tools_, &OperationTools::Cancel);
  row->addWidget(fix);
  row->addWidget(cancel);
  connect(&tools_, &OperationTools::changed, this, &TraceReferencePanel::Show);
  Show();
}

void TraceReferencePanel::Show() { shift_->setText(QString::fromStdString(tool_.ShiftText())); }

}  // namespace velk::gui
