#include "gui/environment_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QVBoxLayout>

namespace velk::gui {
namespace {

constexpr int kDefaultSteps = 16;  // as the window starts a spectrum when the setting is empty

QComboBox* Numbers(QWidget* parent, std::initializer_list<std::pair<const char*, int>> items, double current) {
  auto* box = new QComboBox(parent);
  for (const auto& [text, value] : items) box->addItem(text, value);
  box->setCurrentIndex(std::max(0, box->findData(static_cast<int>(current))));
  return box;
}

}  // namespace

EnvironmentDialog::EnvironmentDialog(const core::Settings& s, QWidget* parent) : QDialog(parent) {
  setWindowTitle("Set Environment");
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  displayPoints_ = Numbers(this, {{"256", 256}, {"512", 512}, {"1024", 1024}, {"2048", 2048}},
                           core::Number(s, "DISP DIMENSION_X"));
  interpolation_ = Numbers(this, {{"Cubic Function", 0}, {"5th Order Function", 1}},
                           core::Number(s, "INTERPOLATION FUNC.") != 0 ? 1 : 0);
  const double steps = core::Number(s, "INITIAL TH DIVIDE");
  steps_ = Numbers(this, {{"4", 4}, {"8", 8}, {"16", 16}, {"32", 32}}, steps > 0 ? steps : kDefaultSteps);
  backup_ = new QCheckBox("Keep the previous file as \".$\" on saving", this);
  backup_->setChecked(core::Number(s, "MAKE FILE BACKUP") != 0);
  form->addRow("Minimum Disply Point", displayPoints_);
  form->addRow("Interpolation", interpolation_);
  form->addRow("Contour steps of a new spectrum", steps_);
  form->addRow(backup_);
  layout->addLayout(form);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

void EnvironmentDialog::Store(core::Settings& s) const {
  core::SetNumber(s, "DISP DIMENSION_X", displayPoints_->currentData().toInt());
  core::SetNumber(s, "INTERPOLATION FUNC.", interpolation_->currentData().toInt());
  core::SetNumber(s, "INITIAL TH DIVIDE", steps_->currentData().toInt());
  core::SetNumber(s, "MAKE FILE BACKUP", backup_->isChecked() ? 1 : 0);
}

}  // namespace velk::gui
