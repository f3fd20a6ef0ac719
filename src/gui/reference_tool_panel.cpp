#include "gui/reference_tool_panel.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <memory>

#include "gui/operation_tools.h"
#include "model/frequency_table.h"

namespace velk::gui {

using model::F1;
using model::F2;

namespace {

// One form of the instrument reference: the instruments with their 0 ppm frequency for one axis.
// Nothing when cancelled; the instrument's frequency field as it stands otherwise (empty when the
// table gives none, which the command then refuses).
std::optional<std::optional<double>> ChooseInstrument(QWidget* parent, const model::InstrumentFrequencyTable& table,
                                                      model::Axis axis) {
  QDialog dialog(parent);
  dialog.setObjectName(axis == F1 ? "InstrumentF1" : "InstrumentF2");
  dialog.setWindowTitle(axis == F1 ? "Set Reference of 2D(F1 direction) using Instrumental Data"
                                   : "Set Reference of 2D(F2 direction) using Instrumental Data");
  auto* form = new QFormLayout(&dialog);
  auto* instrument = new QComboBox(&dialog);
  instrument->setObjectName("Instrument");
  for (const model::InstrumentFrequency& line : table) instrument->addItem(QString::fromStdString(line.fields[0]));
  auto* frequency = new QLineEdit(&dialog);
  frequency->setObjectName("InstrumentFrequency");
  frequency->setReadOnly(true);
  const auto show = [&] {
    const std::optional<double> zero =
        model::ZeroPpmFrequency(table, instrument->currentText().toStdString());
    frequency->setText(zero ? QString::fromStdString(model::FormatFrequency(*zero)) : QString());
  };
  QObject::connect(instrument, &QComboBox::currentIndexChanged, &dialog, show);
  show();
  form->addRow("Instrument", instrument);
  form->addRow("Instrument Frequency(MHz)", frequency);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  form->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return model::ZeroPpmFrequency(table, instrument->currentText().toStdString());
}

}  // namespace

ReferenceToolPanel::ReferenceToolPanel(OperationTools& tools, operations::ReferenceTool& tool, QWidget* parent)
    : QWidget(parent), tools_(tools), tool_(tool) {
  // The cross on the first row; the commands that set the axes otherwise, and the end, on the second.
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(8, 4, 8, 4);
  auto* row = new QHBoxLayout;
  auto* commands = new QHBoxLayout;
  rows->addLayout(row);
  rows->addLayout(commands);
  row->addWidget(new QLabel("Click on the contour, or move the cross with the arrows, and type its shifts:", this));
  const auto field = [&](const char* label, model::Axis axis) {
    row->addWidget(new QLabel(label, this));
    auto* text = new QLineEdit(this);
    text->setObjectName(axis == F1 ? "RefText1" : "RefText2");
    text->setFixedWidth(90);
    connect(text, &QLineEdit::editingFinished, this, [this, text, axis] {
      tools_.StopDrawing();
      if (tool_.SetShift(axis, text->text().toStdString())) tools_.ScaleChanged();
      else Show();
    });
    row->addWidget(text);
    return text;
  };
  textF2_ = field("F2 (ppm)", F2);
  textF1_ = field("F1 (ppm)", F1);
  // Up, down, left and right on the screen, whichever way the axes run there.
  const struct {
    const char* name;
    Qt::ArrowType arrow;
    int dx, dy;
  } arrows[] = {{"RefCommandUP", Qt::UpArrow, 0, -1},
                {"RefCommandDN", Qt::DownArrow, 0, 1},
                {"RefCommandLeft", Qt::LeftArrow, -1, 0},
                {"RefCommandRight", Qt::RightArrow, 1, 0}};
  for (const auto& a : arrows) {
    auto* b = new QToolButton(this);
    b->setObjectName(a.name);
    b->setArrowType(a.arrow);
    b->setAutoRepeat(true);
    b->setAutoRepeatDelay(500);
    b->setAutoRepeatInterval(50);
    // Held, the button repeats as released, clicked (with isDown() still true) and pressed again;
    // let go, it clicks once more. A press that follows a repeat's click continues the same
    // press of the person, which leaves one undo record however long it is held.
    auto repeat = std::make_shared<std::pair<bool, bool>>();  // {held, clicked while down}
    connect(b, &QToolButton::pressed, this, [repeat] { *repeat = {repeat->second, false}; });
    connect(b, &QToolButton::clicked, this, [this, b, repeat, dx = a.dx, dy = a.dy] {
      const display::DisplayState& v = tools_.State();
      const int dc = v.ViewF2Start < v.ViewF2End ? dx : -dx;
      const int dr = v.ViewF1Start < v.ViewF1End ? -dy : dy;
      tools_.StopDrawing();
      tool_.MoveCross(dc, dr, repeat->first);
      repeat->second = b->isDown();
      tools_.ScaleChanged();
    });
    row->addWidget(b);
  }
  row->addStretch(1);
  auto* instrument = new QPushButton("Instrument...", this);
  instrument->setObjectName("ByInstrument");
  instrument->setToolTip("Set Reference of 2D using Instrumental Data");
  connect(instrument, &QPushButton::clicked, this, &ReferenceToolPanel::ByInstrument);
  commands->addWidget(instrument);
  for (model::Axis axis : {F2, F1}) {
    auto* centre = new QPushButton(axis == F1 ? "Set Center(F1)" : "Set Center(F2)", this);
    centre->setObjectName(axis == F1 ? "SetCenterF1" : "SetCenterF2");
    centre->setToolTip(axis == F1 ? "Set Reference by F1 Center Frequency" : "Set Reference by F2 Center Frequency");
    centre->setEnabled(tool_.CanSetCenter(axis));
    connect(centre, &QPushButton::clicked, this, [this, axis] {
      tools_.StopDrawing();
      if (tool_.SetCenter(axis)) tools_.ScaleChanged();
    });
    commands->addWidget(centre);
  }
  commands->addStretch(1);
  auto* fix = new QPushButton("Fix", this);
  fix->setObjectName("Fix");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Cancel");
  connect(fix, &QPushButton::clicked, &tools_, &OperationTools::Fix);
  connect(cancel, &QPushButton::clicked, &tools_, &OperationTools::Cancel);
  commands->addWidget(fix);
  commands->addWidget(cancel);
  connect(&tools_, &OperationTools::changed, this, &ReferenceToolPanel::Show);
  Show();
}

void ReferenceToolPanel::ByInstrument() {
  const auto f1 = ChooseInstrument(this, tools_.Instruments(), F1);
  if (!f1) return;
  const auto f2 = ChooseInstrument(this, tools_.Instruments(), F2);
  if (!f2) return;
  tools_.StopDrawing();
  const platform::Outcome done = tool_.SetByInstrument(*f2, *f1);
  if (!done.ok()) tools_.Prompt().Ask(done.message);
  tools_.ScaleChanged();
}

void ReferenceToolPanel::Show() {
  textF2_->setText(QString::fromStdString(tool_.ShiftText(F2)));
  textF1_->setText(QString::fromStdString(tool_.ShiftText(F1)));
}

}  // namespace velk::gui
