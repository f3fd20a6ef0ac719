#pragma once
// The reference panel: the shifts that the cross's point reads on each axis, the four arrows that
// move the cross one point (held: again after 500 ms, then every 50 ms), "Fix" and "Cancel".
#include <QWidget>

#include "operations/reference_tool.h"

class QLineEdit;

namespace velk::gui {

class OperationTools;

class ReferenceToolPanel final : public QWidget {
  Q_OBJECT

 public:
  ReferenceToolPanel(OperationTools& tools, operations::ReferenceTool& tool, QWidget* parent = nullptr);

 private:
  void Show();
  // "Set Reference of 2D using Instrumental Data": an instrument for F1, then one for F2.
  void ByInstrument();

  OperationTools& tools_;
  operations::ReferenceTool& tool_;
  QLineEdit* textF1_ = nullptr;  // RefText1
  QLineEdit* textF2_ = nullptr;  // RefText2
};

}  // namespace velk::gui
