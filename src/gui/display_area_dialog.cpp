#include "gui/display_area_dialog.h"

#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace velk::gui {

DisplayAreaDialog::DisplayAreaDialog(const display::DisplayState& view, const model::Spectrum2D& s, QWidget* parent)
    : QDialog(parent), spectrum_(s) {
  setWindowTitle("Change Display Area");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel("Start", this), 0, 1);
  grid->addWidget(new QLabel("End", this), 0, 2);
  const char* names[4] = {"f2Start", "f2End", "f1Start", "f1End"};
  for (int axis = 0; axis < 2; ++axis) {
    const bool f1 = axis == 1;
    grid->addWidget(new QLabel(f1 ? "F1" : "F2", this), axis + 1, 0);
    for (int end = 0; end < 2; ++end) {
      QLineEdit*& e = edits_[2 * axis + end];
      e = new QLineEdit(this);
      auto* numbers = new QDoubleValidator(e);
      numbers->setLocale(QLocale::c());  // the numbers are written with a point
      e->setValidator(numbers);
      e->setObjectName(names[2 * axis + end]);
      grid->addWidget(e, axis + 1, end + 1);
    }
    auto* exchange = new QPushButton("Exchange", this);
    exchange->setObjectName(f1 ? "exchangeF1" : "exchangeF2");
    connect(exchange, &QPushButton::clicked, this, [this, f1] {
      display::DisplayArea a = Area();
      display::ExchangeEnds(a, f1);
      Show(a);
    });
    grid->addWidget(exchange, axis + 1, 3);
  }
  layout->addLayout(grid);

  auto* units = new QHBoxLayout;
  auto* ppm = new QRadioButton("ppm", this);
  kHz_ = new QRadioButton("kHz", this);
  ppm->setChecked(true);
  units->addWidget(ppm);
  units->addWidget(kHz_);
  units->addStretch(1);
  auto* setDefault = new QPushButton("Set Default", this);
  units->addWidget(setDefault);
  layout->addLayout(units);
  connect(kHz_, &QRadioButton::toggled, this, &DisplayAreaDialog::ChangeUnit);
  connect(setDefault, &QPushButton::clicked, this, [this] { Show(display::DefaultArea(spectrum_, shown_)); });

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  Show(display::AreaOfView(view, s, shown_));
}

void DisplayAreaDialog::Show(const display::DisplayArea& area) {
  const double values[4] = {area.f2Start, area.f2End, area.f1Start, area.f1End};
  for (int i = 0; i < 4; ++i) edits_[i]->setText(QString::number(values[i], 'f', area.unit == display::AreaUnit::Ppm ? 4 : 5));
}

display::DisplayArea DisplayAreaDialog::Area() const {
  return {shown_, edits_[0]->text().toDouble(), edits_[1]->text().toDouble(), edits_[2]->text().toDouble(),
          edits_[3]->text().toDouble()};
}

void DisplayAreaDialog::ChangeUnit() {
  const display::DisplayArea now = Area();
  shown_ = kHz_->isChecked() ? display::AreaUnit::KHz : display::AreaUnit::Ppm;
  Show(display::InUnit(now, spectrum_, shown_));
}

}  // namespace velk::gui
