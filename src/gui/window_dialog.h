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
  // "Edit Function Expression": the formula of the type in a text editor; kept unless cancelled.
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
  QLabel* expression_ = nullptr;
};

}  // namespace velk::gui
