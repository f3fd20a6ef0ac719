#pragma once
// The dialog "Set Window Function": the window of the axis the FT window shows, its fields by type
// with step buttons that repeat while held, the trapezoid, and the curve; every change redraws the
// FT window's trace. "Fix" keeps the change, "Cancel" puts back the window as it was on entry.
#include <QDialog>
#include <functional>
#include <vector>

#include "document/ft_window.h"
#include "gui/step_label.h"
#include "processing/ft_controls.h"
#include "processing/window_expressions.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace velk::gui {

class WindowDialog final : public QDialog {
  Q_OBJECT

 public:
  WindowDialog(document::FtWindow& state, std::function<void()> changed, QWidget* parent, Clock clock = SteadyClock());

  // Sets a field as if typed and left.
  void Type(processing::WindowField field, const QString& text);
  // Shows the function expression of the window's type with "Set Initial Expression" and "Edit
  // Function Expression" (the text editor, titled with the type's name).
  void SetExpressions(processing::WindowExpressions& expressions);
  void SetInitialExpression();
  void EditExpression();

 protected:
  void reject() override;

 private:
  struct Field {
    processing::WindowField field;
    QLineEdit* edit;
    QWidget* row;
  };
  QWidget* AddField(processing::WindowField f, const QString& label, Clock clock);
  void Changed();
  void ShowValues();

  document::FtWindow& state_;
  processing::WindowEditor editor_;
  std::function<void()> changed_;
  std::vector<Field> fields_;
  QComboBox* type_ = nullptr;
  QCheckBox* multiply_ = nullptr;
  QWidget* curve_ = nullptr;
  processing::WindowExpressions* expressions_ = nullptr;
  QLabel* expression_ = nullptr;
  QWidget* expressionRow_ = nullptr;
};

}  // namespace velk::gui
