#include "gui/lp_dialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velk::gui {

namespace {

using processing::LpField;

constexpr LpField kFields[] = {LpField::Order, LpField::Points, LpField::Start, LpField::BackPoints};
constexpr const char* kLabels[] = {"Prediction Order", "Points for Calculation", "Start Point", "Prediction Points"};

std::int32_t Value(const processing::LpSetting& s, LpField f) {
  switch (f) {
    case LpField::Order: return s.Order;
    case LpField::Points: return s.Points;
    case LpField::Start: return s.Start;
    case LpField::BackPoints: return s.BackPoints;
  }
  return 0;
}

}  // namespace

LpDialog::LpDialog(processing::SequenceSettings& settings, const std::array<std::int32_t, 2>& dataPoints, bool goFft,
                   platform::Prompt& prompt, QWidget* parent)
    : QDialog(parent), settings_(settings), form_(settings, dataPoints), prompt_(prompt) {
  setWindowTitle(goFft ? "FFT LP Parameter Set" : "Linear Prediction Parameter");
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  auto* axes = new QHBoxLayout;
  axes->addWidget(BuildAxis(model::F1));
  axes->addWidget(BuildAxis(model::F2));
  layout->addLayout(axes);
  auto* notice = new QLabel("Prediction Order<Points for Calculation", this);
  layout->addWidget(notice);
  auto* buttons = new QHBoxLayout;
  auto* go = new QPushButton(goFft ? "Go FFT" : "OK", this);
  go->setObjectName("go");
  go->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  connect(go, &QPushButton::clicked, this, &LpDialog::Go);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  buttons->addStretch();
  buttons->addWidget(go);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  Show();
}

QWidget* LpDialog::BuildAxis(model::Axis a) {
  auto* box = new QGroupBox(a == model::F1 ? "F1 (Column)" : "F2 (Row)", this);
  auto* form = new QFormLayout(box);
  AxisFields& fields = axes_[a];
  const QString prefix = a == model::F1 ? "F1 " : "F2 ";
  for (int k = 0; k < 4; ++k) {
    auto* edit = new QLineEdit(box);
    edit->setObjectName(prefix + kLabels[k]);
    edit->setMaximumWidth(80);
    connect(edit, &QLineEdit::editingFinished, this, [this, a, k, edit] {
      bool ok = false;
      const int typed = edit->text().toInt(&ok);
      form_.Leave(a, kFields[k], ok ? typed : Value(form_.Axis(a), kFields[k]));
      Show();
    });
    fields.field[k] = edit;
    form->addRow(kLabels[k], edit);
    if (kFields[k] == LpField::BackPoints)
      edit->setToolTip("Replace data form 0 sec by this points with calcd. data.");
  }
  fields.forward = new QCheckBox("Execute Forward", box);
  fields.backward = new QCheckBox("Execute Backward", box);
  fields.stability = new QCheckBox("Stability Check", box);
  for (QCheckBox* c : {fields.forward, fields.backward, fields.stability}) c->setObjectName(prefix + c->text());
  connect(fields.forward, &QCheckBox::toggled, this, [this, a](bool on) { form_.SetForward(a, on); });
  connect(fields.backward, &QCheckBox::toggled, this, [this, a](bool on) { form_.SetBackward(a, on); });
  connect(fields.stability, &QCheckBox::toggled, this, [this, a](bool on) { form_.SetStabilityCheck(a, on); });
  form->addRow(fields.forward);
  auto* backward = new QGroupBox("Backward", box);
  auto* inner = new QVBoxLayout(backward);
  inner->addWidget(fields.backward);
  inner->addWidget(fields.stability);
  form->addRow(backward);
  return box;
}

void LpDialog::Show() {
  for (model::Axis a : {model::F1, model::F2}) {
    const processing::LpSetting& s = form_.Axis(a);
    for (int k = 0; k < 4; ++k) axes_[a].field[k]->setText(QString::number(Value(s, kFields[k])));
    const QSignalBlocker q1(axes_[a].forward), q2(axes_[a].backward), q3(axes_[a].stability);
    axes_[a].forward->setChecked(s.ForwardOn != 0);
    axes_[a].backward->setChecked(s.BackwardOn != 0);
    axes_[a].stability->setChecked(s.StabilityCheck != 0);
  }
}

void LpDialog::Go() {
  // A field still being typed in counts as left.
  for (model::Axis a : {model::F1, model::F2})
    for (int k = 0; k < 4; ++k)
      if (axes_[a].field[k]->hasFocus()) emit axes_[a].field[k]->editingFinished();
  const platform::Message said = form_.GoFft();
  Show();
  if (!said.empty()) {
    const platform::Answer a = prompt_.Ask(said);
    if (said.buttons != platform::Buttons::OkCancel || a != platform::Answer::Ok) return;
  }
  form_.Apply(settings_);
  accept();
}

}  // namespace velk::gui
