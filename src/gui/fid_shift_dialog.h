#pragma once
// "FID Shift": where the F2 transform starts in each row, stepped a point at a time with held
// buttons (a press that starts on the other side of zero stops at 0), typed, or searched in the
// first row. The FT window's trace follows each step; "Cancel" puts back the entry value.
#include <QDialog>
#include <functional>

#include "document/ft_window.h"
#include "gui/step_label.h"

class QLineEdit;

namespace velk::gui {

class FidShiftDialog final : public QDialog {
  Q_OBJECT

 public:
  FidShiftDialog(document::FtWindow& state, std::function<void()> changed, QWidget* parent, Clock clock = SteadyClock());

  void reject() override;

 private:
  void Set(std::int32_t shift);

  document::FtWindow& state_;
  std::function<void()> changed_;
  std::int32_t entry_ = 0;
  std::int32_t pressStart_ = 0;
  QLineEdit* value_ = nullptr;
};

}  // namespace velk::gui
