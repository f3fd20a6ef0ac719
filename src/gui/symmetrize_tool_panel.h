#pragma once
// The symmetrization panel: the hint, the shift buttons that move the diagonal by a quarter F2
// point (held: again after 500 ms, then every 50 ms), the shift, and the commands.
#include <QWidget>

#include "operations/symmetrize_tool.h"

class QLabel;
class QPushButton;

namespace velk::gui {

class OperationTools;

class SymmetrizeToolPanel final : public QWidget {
  Q_OBJECT

 public:
  SymmetrizeToolPanel(OperationTools& tools, operations::SymmetrizeTool& tool, QWidget* parent = nullptr);

 private:
  void Show();

  OperationTools& tools_;
  operations::SymmetrizeTool& tool_;
  QLabel* shift_ = nullptr;
  QPushButton* fix_ = nullptr;
};

}  // namespace velk::gui
