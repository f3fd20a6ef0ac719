#pragma once
// The baseline panel: "Add Point" and "Delete Point" (a click on the contour then sets or removes
// the point of the axis nearest to it), "Delete All Points", "Ave.Point", and the commands.
#include <QWidget>

#include "operations/baseline_tool.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace velk::gui {

class OperationTools;

class BaselineToolPanel final : public QWidget {
  Q_OBJECT

 public:
  BaselineToolPanel(OperationTools& tools, operations::BaselineTool& tool, QWidget* parent = nullptr);

 private:
  void Show();
  void Choose(int toolCode);

  OperationTools& tools_;
  operations::BaselineTool& tool_;
  QPushButton* add_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* removeAll_ = nullptr;
  QPushButton* fix_ = nullptr;
  QLineEdit* ave_ = nullptr;
  QLabel* count_ = nullptr;
};

}  // namespace velk::gui
