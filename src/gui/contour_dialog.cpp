#include "gui/contour_dialog.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "display/levels.h"
#include "display/messages.h"

namespace velk::gui {
namespace {

constexpr int kStepChoices[4] = {4, 8, 16, 32};

QButtonGroup* Choice(QWidget* parent, QLayout* into, std::initializer_list<std::pair<const char*, int>> options) {
  auto* group = new QButtonGroup(parent);
  for (const auto& [text, id] : options) {
    auto* b = new QRadioButton(text, parent);
    group->addButton(b, id);
    into->addWidget(b);
  }
  return group;
}

}  // namespace

ContourDialog::ContourDialog(const display::ContourSetting& setting, bool powerAllowed,
                             std::function<display::LevelTable(const display::ContourSetting&)> altitudes,
                             QWidget* parent)
    : QDialog(parent), opening_(setting), altitudes_(std::move(altitudes)) {
  setWindowTitle("Change Contour");
  auto* columns = new QHBoxLayout(this);
  auto* left = new QVBoxLayout;
  columns->addLayout(left);

  auto* modeBox = new QGroupBox("Display", this);
  mode_ = Choice(modeBox, new QVBoxLayout(modeBox), {{"Contour Lines", display::kLines}, {"Filled Contours", display::kFilled}});
  left->addWidget(modeBox);

  auto* form = new QFormLayout;
  steps_ = new QComboBox(this);
  for (int steps : kStepChoices) steps_->addItem(steps == 32 ? "32 Steps(16 Color)" : QString("%1 Steps").arg(steps), steps);
  spacing_ = new QComboBox(this);
  for (std::string_view option : display::messages::kSpacingOptions)
    spacing_->addItem(QString::fromUtf8(option.data(), static_cast<int>(option.size())), spacing_->count());
  // A free base of the settings is offered beside the presets, "##.00".
  const int free = display::FreeSpacingCode(setting.Interval / 100.0);
  if (setting.Interval >= 100 && setting.Interval <= 300 && free == setting.Interval)
    spacing_->addItem(QString("%1 %2").arg(display::messages::kFreeSpacing.data()).arg(free / 100.0, 0, 'f', 2), free);
  form->addRow("Steps", steps_);
  form->addRow("Interval", spacing_);
  left->addLayout(form);

  auto* powerBox = new QGroupBox("Spectrum", this);
  power_ = Choice(powerBox, new QVBoxLayout(powerBox), {{"Normal(Phase Sensitive)", 0}, {"Power(Absolute) Spectrum", 1}});
  powerBox->setEnabled(powerAllowed);
  left->addWidget(powerBox);
  left->addStretch(1);

  auto* right = new QVBoxLayout;
  right->addWidget(new QLabel(QString::fromUtf8(display::messages::kAltitudesTitle.data()), this));
  list_ = new QListWidget(this);
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));  // aligned on the point
  list_->setMinimumWidth(180);
  right->addWidget(list_);
  columns->addLayout(right);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Vertical, this);
  QPushButton* previewButton = buttons->addButton("Preview", QDialogButtonBox::ApplyRole);
  QPushButton* reset = buttons->addButton("Reset", QDialogButtonBox::ResetRole);
  columns->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(previewButton, &QPushButton::clicked, this, [this] { emit preview(Setting()); });
  connect(reset, &QPushButton::clicked, this, [this] {
    Show(opening_);
    emit preview(opening_);
  });

  Show(setting);
  connect(mode_, &QButtonGroup::idClicked, this, &ContourDialog::ListAltitudes);
  connect(power_, &QButtonGroup::idClicked, this, &ContourDialog::ListAltitudes);
  connect(steps_, &QComboBox::currentIndexChanged, this, &ContourDialog::ListAltitudes);
  connect(spacing_, &QComboBox::currentIndexChanged, this, &ContourDialog::ListAltitudes);
}

void ContourDialog::reject() {
  emit preview(opening_);  // "Cancel", Escape or the close box take a preview back
  QDialog::reject();
}

void ContourDialog::Show(const display::ContourSetting& s) {
  const QSignalBlocker a(steps_), b(spacing_);
  mode_->button(s.DisplayMode == display::kFilled ? display::kFilled : display::kLines)->setChecked(true);
  power_->button(s.PowerSpectrum ? 1 : 0)->setChecked(true);
  steps_->setCurrentIndex(std::max(0, steps_->findData(display::NormalizeSteps(s.Steps))));
  const int interval = s.Interval >= 100 ? display::FreeSpacingCode(s.Interval / 100.0) : s.Interval;
  spacing_->setCurrentIndex(std::max(0, spacing_->findData(interval)));
  ListAltitudes();
}

display::ContourSetting ContourDialog::Setting() const {
  display::ContourSetting s = opening_;
  s.DisplayMode = mode_->checkedId();
  s.PowerSpectrum = power_->checkedId();
  s.Steps = steps_->currentData().toInt();
  s.Interval = spacing_->currentData().toInt();
  return s;
}

void ContourDialog::ListAltitudes() {
  const display::ContourSetting s = Setting();
  list_->clear();
  for (const std::string& line : display::LevelListText(altitudes_(s), s.Steps)) list_->addItem(QString::fromStdString(line));
}

}  // namespace velk::gui
