#include "gui/corrections_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace velk::gui {

namespace {

QLabel* Note(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  QFont small = label->font();
  small.setPointSizeF(small.pointSizeF() * 0.9);
  label->setFont(small);
  return label;
}

}  // namespace

CorrectionsDialog::CorrectionsDialog(document::FtWindow& state, QWidget* parent) : QDialog(parent), state_(state) {
  setWindowTitle("Set up Corrections on FFT");
  setModal(true);
  const document::FtWindow::Corrections now = state.CurrentCorrections();
  auto* layout = new QVBoxLayout(this);

  // The converter: the reader has set it from the file; F2 was corrected as the file was read.
  auto* bruker = new QGroupBox("Bruker Correction", this);
  bruker->setObjectName("Bruker Correction");
  auto* grid = new QGridLayout(bruker);
  grid->addWidget(Note("When FID was measured by Single AD Converter, a special FFT is required. "
                       "The reader sets these from the file.", bruker), 0, 0, 1, 3);
  for (model::Axis a : {model::F1, model::F2}) {
    const int row = a == model::F1 ? 1 : 2;
    auto* group = new QButtonGroup(bruker);
    grid->addWidget(new QLabel(a == model::F1 ? "F1" : "F2", bruker), row, 0);
    single_[a] = new QRadioButton("Single AD-Converter", bruker);
    dual_[a] = new QRadioButton("Dual AD-Converter", bruker);
    single_[a]->setObjectName(QString(a == model::F1 ? "F1 " : "F2 ") + "Single AD-Converter");
    group->addButton(single_[a]);
    group->addButton(dual_[a]);
    const bool on = a == model::F1 ? now.f1SingleAd : now.f2SingleAd;
    (on ? single_[a] : dual_[a])->setChecked(true);
    grid->addWidget(single_[a], row, 1);
    grid->addWidget(dual_[a], row, 2);
  }
  // The row-wise correction happened on reading; only F1 is still to come.
  single_[model::F2]->setEnabled(false);
  dual_[model::F2]->setEnabled(false);
  bruker->setVisible(state.settings().brukerData);
  layout->addWidget(bruker);

  baseline_ = new QCheckBox("BaseLine Correction of FID", this);
  baseline_->setToolTip("Subtract Base Line Level from FID");
  baseline_->setChecked(now.fidBaseline);
  baseline_->setEnabled(!now.fidBaseline);  // once subtracted, the FID as read is gone
  layout->addWidget(baseline_);
  layout->addWidget(Note("Check this, when a Noise Peak appears on the center of Spectrum.", this));

  auto* first = new QGroupBox("First Point Correction", this);
  auto* firstLayout = new QGridLayout(first);
  t1Noise_ = new QCheckBox("t1 noise reduction", first);
  t1Noise_->setChecked(now.t1Noise);
  t1Factor_ = new QLineEdit(QString::number(now.t1Factor), first);
  t1Factor_->setObjectName("Multiple for First Row");
  t1Factor_->setMaximumWidth(70);
  firstLayout->addWidget(t1Noise_, 0, 0, 1, 2);
  firstLayout->addWidget(new QLabel("Multiple for First Row", first), 1, 0);
  firstLayout->addWidget(t1Factor_, 1, 1);
  firstLayout->addWidget(Note("Basically set 0.5. Reduce for Positive Noise, and Increase for Negative Noise.. "
                              "(0 - 2.0) 1.0 means no-correction.", first), 2, 0, 1, 2);
  firstLayout->addWidget(Note("Check \"t1 noise reduction\", when Noise appears on F1 Direction.", first), 3, 0, 1, 2);
  layout->addWidget(first);

  auto* reduction = new QGroupBox("Reduction of Data Points", this);
  auto* reductionLayout = new QHBoxLayout(reduction);
  auto* setUp = new QPushButton("Set up of Reduction", reduction);
  setUp->setEnabled(false);
  reductionLayout->addWidget(setUp);
  reductionLayout->addWidget(new QLabel("Not Available", reduction));
  reductionLayout->addStretch();
  layout->addWidget(reduction);

  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton("OK", this);
  auto* cancel = new QPushButton("Cancel", this);
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &CorrectionsDialog::Ok);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
}

void CorrectionsDialog::Ok() {
  document::FtWindow::Corrections c;
  c.f1SingleAd = single_[model::F1]->isChecked();
  c.f2SingleAd = single_[model::F2]->isChecked();
  c.fidBaseline = baseline_->isChecked();
  c.t1Noise = t1Noise_->isChecked();
  // A field that does not hold a number leaves the factor at 0; the clamp applies.
  c.t1Factor = t1Factor_->text().toFloat();
  state_.SetCorrections(c);
  accept();
}

}  // namespace velk::gui
