#include "gui/ft_dialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <cmath>
#include <functional>

#include "gui/trace_panel.h"
#include "gui/window_dialog.h"
#include "processing/ft_controls.h"

namespace velk::gui {

namespace {

// "####0.0#": one decimal at least, two at most.
QString PhaseText(double degrees) {
  QString text = QString::number(degrees, 'f', 2);
  if (text.endsWith('0')) text.chop(1);
  return text;
}

QString StepText(double step) { return (step > 0 ? "+" : "") + QString::number(step); }

QPushButton* Button(const QString& text, const QString& tip, QWidget* parent) {
  auto* b = new QPushButton(text, parent);
  b->setObjectName(text);
  if (!tip.isEmpty()) b->setToolTip(tip);
  return b;
}

}  // namespace

FtDialog::FtDialog(document::Document& d, std::filesystem::path workFile, platform::Prompt& prompt, QWidget* parent,
                   Clock clock)
    : QDialog(parent),
      state_(std::make_unique<document::FtWindow>(d)),
      workFile_(std::move(workFile)),
      prompt_(prompt),
      clock_(std::move(clock)) {
  setWindowTitle("FT-Phase");
  setWindowModality(Qt::WindowModal);
  auto* layout = new QVBoxLayout(this);
  auto* menus = new QMenuBar(this);
  menus->addMenu("File")->addAction("Close (Discard Present Data)", this, &QDialog::close);
  layout->setMenuBar(menus);

  controls_ = new QWidget(this);
  auto* top = new QHBoxLayout(controls_);
  top->setContentsMargins(0, 0, 0, 0);
  auto* execute = Button("Execute 2D-FFT(No LP)", "", controls_);
  connect(execute, &QPushButton::clicked, this, &FtDialog::Execute);
  auto* f2 = Button("F2", "Row of the FID (F2)", controls_);
  auto* f1 = Button("F1", "Column of the FID (F1)", controls_);
  connect(f2, &QPushButton::clicked, this, [this] { state_->ShowF2(); Redraw(); });
  connect(f1, &QPushButton::clicked, this, [this] { state_->ShowF1(); Redraw(); });
  auto* all = Button("All", "Display whole FID data", controls_);
  auto* expand = Button("Exp.", "Expand FID time scale by 2.", controls_);
  connect(all, &QPushButton::clicked, this, [this] { state_->ShowWholeFid(); Redraw(); });
  connect(expand, &QPushButton::clicked, this, [this] { state_->ExpandFid(); Redraw(); });
  auto* window = Button("Window Function", "Set Window Function", controls_);
  connect(window, &QPushButton::clicked, this, [this] { EditWindow(); });
  for (QWidget* w : {static_cast<QWidget*>(execute), static_cast<QWidget*>(f2), static_cast<QWidget*>(f1),
                     static_cast<QWidget*>(all), static_cast<QWidget*>(expand), static_cast<QWidget*>(window)})
    top->addWidget(w);
  top->addWidget(BuildSteps());
  top->addStretch();
  layout->addWidget(controls_);

  panel_ = new TracePanel(*state_, this);
  connect(panel_, &TracePanel::picked, this, [this](int point) {
    state_->SetPivot(point);
    Redraw();
  });
  layout->addWidget(panel_, 1);

  auto* phases = new QWidget(this);
  auto* phaseLayout = new QVBoxLayout(phases);
  phaseLayout->setContentsMargins(0, 0, 0, 0);
  phaseLayout->addWidget(BuildPhase(true));
  phaseLayout->addWidget(BuildPhase(false));
  layout->addWidget(phases);
  phases->setObjectName("phases");

  auto* running = new QHBoxLayout;
  caption_ = new QLabel(this);
  progress_ = new QProgressBar(this);
  quit_ = Button("Quit FFT", "Quit Fourie Transformation", this);
  connect(quit_, &QPushButton::clicked, this, [this] { worker_.Quit(); });
  connect(&worker_, &Worker::progressed, progress_, &QProgressBar::setValue);
  running->addWidget(caption_);
  running->addWidget(progress_, 1);
  running->addWidget(quit_);
  layout->addLayout(running);
  SetRunning(false);
  Redraw();
}

FtDialog::~FtDialog() { worker_.Stop(); }

QWidget* FtDialog::BuildSteps() {
  auto* box = new QWidget(controls_);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(12, 0, 0, 0);
  where_ = new QLabel(box);
  where_->setObjectName("where");
  where_->setMinimumWidth(fontMetrics().horizontalAdvance("Row 16384 / 16384   Colm 16384 / 16384"));
  grid->addWidget(where_, 0, 0, 2, 1);
  int column = 1;
  for (const char* name : {"Row", "Colm"}) {
    const bool row = std::string_view(name) == "Row";
    grid->addWidget(new QLabel(name, box), 0, column, 1, 2, Qt::AlignCenter);
    for (int direction : {-1, +1}) {
      auto* step = new StepLabel(direction < 0 ? "Down" : "Up", clock_, box);
      step->setObjectName(QString(name) + (direction < 0 ? " down" : " up"));
      connect(step, &StepLabel::stepped, this, [this, row, direction](int count) {
        if (row) state_->StepRow(direction * count);
        else state_->StepColumn(direction * count);
        Redraw();
      });
      grid->addWidget(step, 1, column++);
    }
  }
  grid->addWidget(new QLabel("Y-Span", box), 0, column);
  grid->addWidget(new QLabel("Y-Level", box), 0, column + 1);
  ySpan_ = new QLineEdit("1.0", box);
  yLevel_ = new QLineEdit("0.0", box);
  ySpan_->setObjectName("Y-Span");
  yLevel_->setObjectName("Y-Level");
  for (QLineEdit* e : {ySpan_, yLevel_}) e->setMaximumWidth(70);
  // A typed value goes through the window's own rule; the field then shows what was kept.
  const auto field = [this](QLineEdit* edit, std::function<void(float)> set, std::function<float()> kept) {
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, set, kept] {
      bool ok = false;
      const float v = edit->text().toFloat(&ok);
      if (ok) set(v);
      edit->setText(QString::number(kept(), 'f', 1));
      Redraw();
    });
  };
  field(ySpan_, [this](float v) { state_->SetYSpan(v); }, [this] { return state_->ySpan(); });
  field(yLevel_, [this](float v) { state_->SetYLevel(v); }, [this] { return state_->yLevel(); });
  grid->addWidget(ySpan_, 1, column);
  grid->addWidget(yLevel_, 1, column + 1);
  return box;
}

QWidget* FtDialog::BuildPhase(bool first) {
  const int k = first ? 0 : 1;
  auto* box = new QWidget(this);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  auto* name = new QLabel(first ? "Phase-0" : "Phase-1", box);
  name->setMinimumWidth(56);
  row->addWidget(name);
  for (double step : processing::kPhaseSteps) {
    auto* label = new StepLabel(StepText(step), clock_, box);
    label->setObjectName(QString(first ? "Phase-0 " : "Phase-1 ") + StepText(step));
    connect(label, &StepLabel::stepped, this, [this, first, step](int count) {
      for (int i = 0; i < count; ++i) first ? state_->AddPhase0(step) : state_->AddPhase1(step);
      Redraw();
    });
    row->addWidget(label);
  }
  phaseBar_[k] = new QScrollBar(Qt::Horizontal, box);
  phaseBar_[k]->setObjectName(first ? "Phase-0" : "Phase-1");
  phaseBar_[k]->setRange(first ? -1800 : -18000, first ? 1800 : 18000);  // tenths of a degree
  phaseBar_[k]->setMinimumWidth(160);
  connect(phaseBar_[k], &QScrollBar::valueChanged, this, [this, first](int tenths) {
    const double degrees = tenths / 10.0;
    if (std::abs(degrees - (first ? state_->Phase0() : state_->Phase1())) < 0.05) return;
    first ? state_->SetPhase0(degrees) : state_->SetPhase1(degrees);
    Redraw();
  });
  row->addWidget(phaseBar_[k], 1);
  phaseEdit_[k] = new QLineEdit(box);
  phaseEdit_[k]->setObjectName(first ? "0-Order Phase Correction(degree)" : "1st-Order Phase Correction(degree)");
  phaseEdit_[k]->setToolTip(phaseEdit_[k]->objectName());
  phaseEdit_[k]->setMaximumWidth(80);
  connect(phaseEdit_[k], &QLineEdit::editingFinished, this, [this, first, k] {
    bool ok = false;
    const double degrees = phaseEdit_[k]->text().toDouble(&ok);
    if (ok) first ? state_->SetPhase0(degrees) : state_->SetPhase1(degrees);
    Redraw();
  });
  row->addWidget(phaseEdit_[k]);
  return box;
}

WindowDialog* FtDialog::EditWindow() {
  auto* editor = new WindowDialog(*state_, [this] { Redraw(); }, this, clock_);
  if (expressions_) editor->SetExpressions(*expressions_);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  editor->open();
  return editor;
}

void FtDialog::Redraw() {
  const bool f2 = state_->view() == model::F2;
  where_->setText(QString("%1 view\nRow %2 / %3   Colm %4 / %5")
                      .arg(f2 ? "F2" : "F1")
                      .arg(state_->row() + 1)
                      .arg(state_->Rows())
                      .arg(state_->column() + 1)
                      .arg(state_->Columns()));
  ShowPhases();
  panel_->update();
}

void FtDialog::ShowPhases() {
  const double phase[2] = {state_->Phase0(), state_->Phase1()};
  for (int k = 0; k < 2; ++k) {
    const QSignalBlocker quiet(phaseBar_[k]);
    phaseBar_[k]->setValue(static_cast<int>(std::lround(phase[k] * 10)));
    phaseEdit_[k]->setText(PhaseText(phase[k]));
    phaseBar_[k]->setEnabled(state_->PhaseSensitive());
    phaseEdit_[k]->setEnabled(state_->PhaseSensitive());
  }
}

void FtDialog::SetRunning(bool running) {
  controls_->setEnabled(!running);
  findChild<QWidget*>("phases")->setEnabled(!running);
  progress_->setVisible(running);
  caption_->setVisible(running);
  quit_->setVisible(running);
  progress_->setValue(0);
}

void FtDialog::Execute() {
  if (worker_.Busy()) return;
  SetRunning(true);
  auto result = std::make_shared<document::Transformed>();
  worker_.Start(
      [this, result](platform::Progress& progress) {
        *result = state_->Execute(progress, workFile_, [this](std::string_view caption) {
          QMetaObject::invokeMethod(caption_, [label = caption_, text = QString::fromUtf8(caption.data(), caption.size())] {
            label->setText(text);
          });
        });
      },
      [this, result] {
        SetRunning(false);
        if (result->outcome.ok()) {
          done_ = true;
          emit ended(true);
          accept();
          return;
        }
        // A quit keeps the window on the FID as it was; a failure says why.
        if (!result->outcome.message.text.empty()) prompt_.Ask(result->outcome.message);
        state_->Refresh();
        Redraw();
      });
}

void FtDialog::closeEvent(QCloseEvent* event) {
  if (done_) return event->accept();
  if (worker_.Busy()) return event->ignore();
  QApplication::beep();
  const platform::Answer a = prompt_.Ask({"FT end", "Exit without FFT", platform::Buttons::OkCancel});
  if (a != platform::Answer::Ok) return event->ignore();
  done_ = true;
  event->accept();
  emit ended(false);
  QDialog::reject();
}

}  // namespace velk::gui
