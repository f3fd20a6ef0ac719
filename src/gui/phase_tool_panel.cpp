#include "gui/phase_tool_panel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include "gui/operation_tools.h"
#include "operations/phase_panel.h"

namespace velk::gui {

PhaseToolPanel::PhaseToolPanel(OperationTools& tools, operations::PhaseTool& tool, Clock clock, QWidget* parent)
    : QWidget(parent), tools_(tools), tool_(tool) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(8, 4, 8, 4);
  grid->setHorizontalSpacing(6);
  const auto order = [&](int row, const char* name, bool zero) {
    grid->addWidget(new QLabel(name, this), row, 0);
    auto* bar = new QScrollBar(Qt::Horizontal, this);
    bar->setObjectName(zero ? "phase0Bar" : "phase1Bar");
    // The zero order runs one step past each end so that the bar wraps.
    const int limit = zero ? operations::kPhase0ScrollLimit + 1 : static_cast<int>(operations::kPhase1Limit * 10);
    bar->setRange(-limit, limit);
    bar->setSingleStep(1);
    bar->setPageStep(zero ? 100 : 1000);
    bar->setMinimumWidth(220);
    connect(bar, &QScrollBar::valueChanged, this, [this, zero](int tenths) {
      if (showing_) return;
      zero ? tool_.ScrollPhase0(tenths) : tool_.ScrollPhase1(tenths);
      Changed();
    });
    grid->addWidget(bar, row, 1);
    auto* text = new QLineEdit(this);
    text->setObjectName(zero ? "phase0Text" : "phase1Text");
    text->setMaximumWidth(80);
    connect(text, &QLineEdit::editingFinished, this, [this, text, zero] {
      const auto value = zero ? operations::ParsePhase0(text->text().toStdString())
                              : operations::ParsePhase1(text->text().toStdString());
      const operations::PhaseValues now = tool_.Values();
      if (value && *value != (zero ? now.Phase0 : now.Phase1)) {
        zero ? tool_.SetPhase0(*value) : tool_.SetPhase1(*value);
        Changed();
      } else {
        Show();
      }
    });
    grid->addWidget(text, row, 2);
    auto* steps = new QHBoxLayout;
    steps->setSpacing(2);
    for (int label = 0; label < static_cast<int>(operations::kPhaseStepLabels.size()); ++label) {
      auto* step = new StepLabel(QString::fromUtf8(operations::kPhaseStepLabels[label].data(),
                                                   static_cast<int>(operations::kPhaseStepLabels[label].size())),
                                 clock, this);
      step->setObjectName(QString(zero ? "step0_" : "step1_") + QString::number(label));
      connect(step, &StepLabel::stepped, this, [this, zero, label](int count) {
        for (int i = 0; i < count; ++i) zero ? tool_.StepPhase0(label) : tool_.StepPhase1(label);
        Changed();
      });
      steps->addWidget(step);
    }
    grid->addLayout(steps, row, 3);
    return std::pair{bar, text};
  };
  std::tie(bar0_, text0_) = order(0, "Phase0", true);
  std::tie(bar1_, text1_) = order(1, "Phase1", false);

  auto* commands = new QHBoxLayout;
  pivot_ = new QPushButton("Pivot", this);
  pivot_->setCheckable(true);
  pivot_->setToolTip("A click on the contour sets the pivot");
  connect(pivot_, &QPushButton::toggled, this, [this](bool on) { tools_.State().ToolCode = on ? 2 : 0; });
  auto* zero = new QPushButton("Zero", this);
  connect(zero, &QPushButton::clicked, this, [this] {
    tool_.ZeroPhases();
    Changed();
  });
  auto* automatic = new QPushButton("Auto", this);
  automatic->setToolTip("Zero and first order found from the spectrum; Preview applies them");
  connect(automatic, &QPushButton::clicked, this, [this] {
    if (tool_.Auto()) Changed();
  });
  for (QPushButton* b : {pivot_, zero, automatic}) {
    b->setObjectName(b->text());
    commands->addWidget(b);
  }
  commands->addStretch(1);
  const auto command = [&](const char* text, void (OperationTools::*run)()) {
    auto* b = new QPushButton(text, this);
    b->setObjectName(text);
    connect(b, &QPushButton::clicked, &tools_, run);
    commands->addWidget(b);
    return b;
  };
  command("Preview", &OperationTools::Preview);
  command("Reset", &OperationTools::Reset);
  fix_ = command("Fix", &OperationTools::Fix);
  command("Cancel", &OperationTools::Cancel);
  grid->addLayout(commands, 2, 0, 1, 4);
  connect(&tools_, &OperationTools::changed, this, &PhaseToolPanel::Show);
  Show();
}

void PhaseToolPanel::Changed() {
  Show();
  tools_.MarksChanged();
}

void PhaseToolPanel::Show() {
  showing_ = true;
  const operations::PhaseValues v = tool_.Values();
  bar0_->setValue(operations::PhaseScrollValue(v.Phase0));
  bar1_->setValue(operations::PhaseScrollValue(v.Phase1));
  text0_->setText(QString::fromStdString(operations::FormatPhase(v.Phase0)));
  text1_->setText(QString::fromStdString(operations::FormatPhase(v.Phase1)));
  fix_->setEnabled(tool_.FixEnabled());
  showing_ = false;
}

}  // namespace velk::gui
