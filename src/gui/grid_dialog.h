#pragma once
// "Set up Grid": whether a lattice of lines lies over the contour, and at which steps: "Auto" at
// the round steps of the axes, or "Manual" at the steps given in ppm.
#include <QDialog>

#include "display/axes.h"

class QCheckBox;
class QDoubleSpinBox;
class QRadioButton;

namespace velk::gui {

class GridDialog final : public QDialog {
  Q_OBJECT

 public:
  GridDialog(const display::GridSetting& grid, QWidget* parent);
  display::GridSetting Grid() const;

 private:
  display::GridSetting grid_;
  QCheckBox* shown_ = nullptr;
  QRadioButton* manual_ = nullptr;
  QDoubleSpinBox* stepF2_ = nullptr;
  QDoubleSpinBox* stepF1_ = nullptr;
};

}  // namespace velk::gui
