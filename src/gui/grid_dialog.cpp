#include "gui/grid_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace velk::gui {

GridDialog::GridDialog(const display::GridSetting& grid, QWidget* parent) : QDialog(parent), grid_(grid) {
  setWindowTitle("Set up Grid");
  auto* layout = new QVBoxLayout(this);
  shown_ = new QCheckBox("Draw Grid", this);
  shown_->setChecked(grid.shown);
  shown_->setObjectName("drawGrid");
  layout->addWidget(shown_);

  auto* interval = new QGroupBox("Grid Interval", this);
  auto* form = new QFormLayout(interval);
  auto* automatic = new QRadioButton("Auto", interval);
  manual_ = new QRadioButton("Manual", interval);
  (grid.automatic ? automatic : manual_)->setChecked(true);
  form->addRow(automatic);
  form->addRow(manual_);
  const auto step = [&](double value) {
    auto* box = new QDoubleSpinBox(interval);
    box->setDecimals(3);
    box->setRange(0.001, 1000.0);
    box->setValue(value);
    box->setSuffix(" ppm");
    box->setEnabled(!grid.automatic);
    connect(manual_, &QRadioButton::toggled, box, &QWidget::setEnabled);
    return box;
  };
  stepF2_ = step(grid.stepF2);
  stepF1_ = step(grid.stepF1);
  form->addRow("F2", stepF2_);
  form->addRow("F1", stepF1_);
  layout->addWidget(interval);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

display::GridSetting GridDialog::Grid() const {
  display::GridSetting g = grid_;
  g.shown = shown_->isChecked();
  g.automatic = !manual_->isChecked();
  g.stepF2 = stepF2_->value();
  g.stepF1 = stepF1_->value();
  return g;
}

}  // namespace velk::gui
