#pragma once
// "Linear Prediction Parameter" ("FFT LP Parameter Set" on the way to "Execute 2D-FFT(Use LP)"):
// order, points, start, backward points and the Execute boxes of both axes. The rules live in
// processing::LpForm; this dialog shows them. Accepted, it has put its values into the settings.
#include <QDialog>

#include "platform/prompt.h"
#include "processing/lp_form.h"

class QCheckBox;
class QLineEdit;

namespace velk::gui {

class LpDialog final : public QDialog {
  Q_OBJECT

 public:
  // goFft: opened by "Execute 2D-FFT(Use LP)"; its button is "Go FFT".
  LpDialog(processing::SequenceSettings& settings, const std::array<std::int32_t, 2>& dataPoints, bool goFft,
           platform::Prompt& prompt, QWidget* parent);

 private:
  QWidget* BuildAxis(model::Axis a);
  void Go();
  void Show();

  processing::SequenceSettings& settings_;
  processing::LpForm form_;
  platform::Prompt& prompt_;
  struct AxisFields {
    QLineEdit* field[4] = {};  // order, points, start, backward points
    QCheckBox* stability = nullptr;
    QCheckBox* forward = nullptr;
    QCheckBox* backward = nullptr;
  };
  AxisFields axes_[2];
};

}  // namespace velk::gui
