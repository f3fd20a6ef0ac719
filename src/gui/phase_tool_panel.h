#pragma once
// The phase panel at the foot of the main window: for the zero and the first order a scroll bar
// in tenths of a degree, a text field and a row of held step labels; "Pivot" (a click on the
// contour then sets the pivot), "Zero", "Auto", and the commands.
#include <QWidget>

#include "gui/step_label.h"
#include "operations/phase_tool.h"

class QLineEdit;
class QPushButton;
class QScrollBar;

namespace velk::gui {

class OperationTools;

class PhaseToolPanel final : public QWidget {
  Q_OBJECT

 public:
  PhaseToolPanel(OperationTools& tools, operations::PhaseTool& tool, Clock clock = SteadyClock(),
                 QWidget* parent = nullptr);

 private:
  void Show();
  void Changed();

  OperationTools& tools_;
  operations::PhaseTool& tool_;
  QScrollBar* bar0_ = nullptr;
  QScrollBar* bar1_ = nullptr;
  QLineEdit* text0_ = nullptr;
  QLineEdit* text1_ = nullptr;
  QPushButton* fix_ = nullptr;
  QPushButton* pivot_ = nullptr;
  bool showing_ = false;  // the bars' own updates are not taken as input
};

}  // namespace velk::gui
