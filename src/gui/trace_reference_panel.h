#pragma once
// The panel of the 1D reference of a trace beside the contour: the shift that the picked point of
// the trace reads, "Set Center Frequency of F1" (F2), "Fix" and "Cancel". The point is picked by a
// click on the trace's panel.
#include <QWidget>

#include "operations/trace_reference.h"

class QLineEdit;

namespace velk::gui {

class OperationTools;

class TraceReferencePanel final : public QWidget {
  Q_OBJECT

 public:
  TraceReferencePanel(OperationTools& tools, operations::TraceReferenceTool& tool, QWidget* parent = nullptr);

 private:
  void Show();

  OperationTools& tools_;
  operations::TraceReferenceTool& tool_;
  QLineEdit* shift_ = nullptr;
};

}  // namespace velk::gui
