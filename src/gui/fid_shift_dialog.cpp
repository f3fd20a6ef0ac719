#include "gui/fid_shift_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "processing/fid_corrections.h"
#include "processing/ft_controls.h"

namespace velk::gui {

FidShiftDialog::FidShiftDialog(document::FtWindow& state, std::function<void()> changed, QWidget* parent, Clock clock)
    : QDialog(parent), state_(state), changed_(std::move(changed)), entry_(state.FidShift()) {
  setWindowTitle("FID Shift");
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  auto* name = new QLabel("FID Shift", this);
  name->setToolTip("Note for FID shift");
  row->addWidget(name);
  for (int direction : {-1, +1}) {
    auto* step = new StepLabel(direction < 0 ? "Left" : "Right", clock, this);
    step->setObjectName(direction < 0 ? "Left" : "Right");
    step->setToolTip(direction < 0 ? "shift FID Start Position Left" : "Shift FID Start Position Right");
    connect(step, &StepLabel::pressed, this, [this] { pressStart_ = state_.FidShift(); });
    connect(step, &StepLabel::stepped, this, [this, direction](int count) {
      std::int32_t shift = state_.FidShift();
      for (int i = 0; i < count; ++i)
        shift = processing::StepFidShift(shift, direction, pressStart_, state_.DataPoints(model::F2));
      Set(shift);
    });
    if (direction < 0) row->addWidget(step);
    else {
      value_ = new QLineEdit(this);
      value_->setObjectName("shift");
      value_->setMaximumWidth(70);
      value_->setAlignment(Qt::AlignRight);
      connect(value_, &QLineEdit::editingFinished, this, [this] {
        bool ok = false;
        const int typed = value_->text().toInt(&ok);
        const std::int32_t n = state_.DataPoints(model::F2);
        Set(ok ? std::clamp<std::int32_t>(typed, std::min(0, 1 - n), std::max(0, n - 1)) : state_.FidShift());
      });
      row->addWidget(value_);
      row->addWidget(step);
    }
  }
  row->addWidget(new QLabel("points", this));
  layout->addLayout(row);
  layout->addWidget(new QLabel("Positive drops leading points, negative inserts zeros.", this));

  auto* buttons = new QHBoxLayout;
  auto* automatic = new QPushButton("Auto", this);
  automatic->setToolTip("The first point of row 0 that reaches 20% of its largest modulus");
  connect(automatic, &QPushButton::clicked, this, [this] {
    const model::Spectrum2D& s = state_.document().spectrum;
    if (s.RR.rows < 1) return;
    const std::int32_t n = std::min(state_.DataPoints(model::F2), s.RR.stride);
    Set(processing::AutoFidShift(s.RR.row(0).data(), s.IR.row(0).data(), n));
  });
  auto* ok = new QPushButton("OK", this);
  auto* cancel = new QPushButton("Cancel", this);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &FidShiftDialog::reject);
  buttons->addWidget(automatic);
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  value_->setText(QString::number(entry_));
}

void FidShiftDialog::Set(std::int32_t shift) {
  if (shift != state_.FidShift()) {
    state_.SetFidShift(shift);
    if (changed_) changed_();
  }
  value_->setText(QString::number(shift));
}

void FidShiftDialog::reject() {
  Set(entry_);
  QDialog::reject();
}

}  // namespace velk::gui
