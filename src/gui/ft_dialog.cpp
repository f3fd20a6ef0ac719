#include "gui/ft_dialog.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QGroupBox>
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

#include "gui/corrections_dialog.h"
#include "gui/fid_image_panel.h"
#include "gui/fid_shift_dialog.h"
#include "gui/lp_dialog.h"
#include "gui/trace_panel.h"
#include "gui/window_dialog.h"
#include "processing/ft_controls.h"
#include "processing/lp_form.h"

namespace velk::gui {

namespace {

// "####0.0#": one decimal at least, two at most.
QString PhaseText(double degrees) {
  QString text = QString::number(degrees, 'f', 2);
  if (text.endsWith('0')) text.chop(1);
  return text;
}

// The rows of commands above the traces take no more room than their words need.
constexpr const char* kCompactButtons = "QPushButton { padding: 3px 7px; }";

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
  QMenu* file = menus->addMenu("File");
  byHand_.push_back(file->addAction("Read Phase Correction Data(DQF)", this, &FtDialog::ReadPhaseReference));
  file->addAction("Close (Discard Present Data)", this, &QDialog::close);
  QMenu* display = menus->addMenu("Display");
  for (model::Axis a : {model::F2, model::F1}) {
    showImage_[a] = display->addAction(a == model::F2 ? "Display Image Data (F2)" : "Display Image Data (F1)");
    showImage_[a]->setCheckable(true);
    connect(showImage_[a], &QAction::toggled, this, &FtDialog::Redraw);
  }
  display->addAction("Change Color", this, [this] {
    const QColor chosen = QColorDialog::getColor(image_->color(), this, "Change Color");
    if (chosen.isValid()) image_->SetColor(chosen);
  });
  QMenu* fft = menus->addMenu("FFT");
  fft->addAction("Execute 2D-FFT(No LP)", this, &FtDialog::Execute);
  byHand_.push_back(fft->addAction("Execute 2D-FFT with Linear Prediction", this, &FtDialog::ExecuteWithPrediction));
  fft->addSeparator();
  byHand_.push_back(fft->addAction("Set Window Function", this, [this] { EditWindow(); }));
  byHand_.push_back(fft->addAction("LP Parameter Set Up", this, [this] { SetUpPrediction(); }));
  byHand_.push_back(fft->addAction("Set up Corrections on FFT", this, [this] { SetUpCorrections(); }));
  byHand_.push_back(fft->addAction("FID Shift", this, [this] { ShiftFid(); }));
  layout->setMenuBar(menus);

  controls_ = new QWidget(this);
  controls_->setStyleSheet(kCompactButtons);
  auto* top = new QHBoxLayout(controls_);
  top->setContentsMargins(0, 0, 0, 0);
  auto* execute = Button("Execute 2D-FFT(No LP)", "", controls_);
  connect(execute, &QPushButton::clicked, this, &FtDialog::Execute);
  useLp_ = Button("Execute 2D-FFT(Use LP)", "", controls_);
  useLp_->setStyleSheet("QPushButton:enabled { background-color: #d0ffd0; }");
  connect(useLp_, &QPushButton::clicked, this, &FtDialog::ExecuteWithPrediction);
  auto* f2 = Button("F2", "Row of the FID (F2)", controls_);
  auto* f1 = Button("F1", "Column of the FID (F1)", controls_);
  connect(f2, &QPushButton::clicked, this, [this] { state_->ShowF2(); Redraw(); });
  connect(f1, &QPushButton::clicked, this, [this] { state_->ShowF1(); Redraw(); });
  auto* all = Button("All", "Display whole FID data", controls_);
  auto* expand = Button("Exp.", "Expand FID time scale by 2.", controls_);
  connect(all, &QPushButton::clicked, this, [this] { state_->ShowWholeFid(); Redraw(); });
  connect(expand, &QPushButton::clicked, this, [this] { state_->ExpandFid(); Redraw(); });
  auto* window = Button("Window Function", "Set Window Function", controls_);
  byHand_.push_back(window);
  connect(window, &QPushButton::clicked, this, [this] { EditWindow(); });
  for (QWidget* w : {static_cast<QWidget*>(execute), static_cast<QWidget*>(useLp_), static_cast<QWidget*>(f2), static_cast<QWidget*>(f1),
                     static_cast<QWidget*>(all), static_cast<QWidget*>(expand), static_cast<QWidget*>(window)})
    top->addWidget(w);
  top->addWidget(BuildSteps());
  top->addStretch();
  layout->addWidget(controls_);
  layout->addWidget(BuildSizes());

  panel_ = new TracePanel(*state_, this);
  connect(panel_, &TracePanel::picked, this, [this](int point) {
    state_->SetPivot(point);
    Redraw();
  });
  image_ = new FidImagePanel(*state_, this);
  image_->setVisible(false);
  auto* pictures = new QHBoxLayout;
  pictures->addWidget(panel_, 3);
  pictures->addWidget(image_, 1);
  layout->addLayout(pictures, 1);

  auto* phases = new QWidget(this);
  auto* phaseLayout = new QVBoxLayout(phases);
  phaseLayout->setContentsMargins(0, 0, 0, 0);
  phaseLayout->addWidget(BuildPhase(true));
  phaseLayout->addWidget(BuildPhase(false));
  layout->addWidget(phases);
  phases->setObjectName("phases");
  byHand_.push_back(phases);

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

void FtDialog::UseSettings(core::Settings& settings) {
  kept_ = &settings;
  state_->UseSettings(settings);
  Redraw();
}

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

// The second row: the processing method, the size of each axis with its zero fill or prediction,
// and "Execute 2D-FFT(Use LP)", open once a prediction was asked for.
QWidget* FtDialog::BuildSizes() {
  auto* box = new QWidget(controls_);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  auto* method = new QComboBox(box);
  method->setObjectName("method");
  method->addItems({"PHA", "ABS"});
  method->setToolTip("Processing method: phase sensitive (PHA) or absolute value (ABS)");
  method->setCurrentIndex(state_->PhaseSensitive() ? 0 : 1);
  connect(method, &QComboBox::currentIndexChanged, this, [this](int index) {
    state_->SetPhaseSensitive(index == 0);
    Redraw();
  });
  method_ = method;
  // With a vendor's recipe the transform follows it: what this window sets by hand waits until
  // the program's recipe is chosen.
  recipe_ = new QComboBox(box);
  recipe_->setObjectName("recipe");
  recipe_->addItems({"Vendor's recipe", "Program's recipe"});
  recipe_->setToolTip("Transform as the spectrometer's stored processing says, or as set here");
  recipe_->setVisible(state_->HasVendorRecipe());
  connect(recipe_, &QComboBox::currentIndexChanged, this, [this](int index) {
    const platform::Outcome out = state_->SetRecipeSource(index == 0 ? processing::RecipeSource::kVendorWhenPresent
                                                                     : processing::RecipeSource::kProgram);
    Redraw();
    Said(out);
  });
  row->addWidget(recipe_);
  row->addWidget(method);
  for (model::Axis a : {model::F2, model::F1}) {
    QWidget* size = BuildAxisSize(a);
    byHand_.push_back(size);
    row->addWidget(size);
  }
  row->addStretch();
  box->setObjectName("sizes");
  return box;
}

QWidget* FtDialog::BuildAxisSize(model::Axis a) {
  const bool f1 = a == model::F1;
  const QString fid = f1 ? "F1" : "F2";
  auto* box = new QGroupBox(f1 ? "F1 (Column)" : "F2 (Row)", this);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(6, 2, 6, 2);
  const auto command = [this, a, row, fid](const QString& text, const QString& tip,
                                             platform::Outcome (document::FtWindow::*act)(model::Axis)) {
    auto* b = Button(text, tip, row->parentWidget());
    b->setObjectName(fid + " " + text);
    connect(b, &QPushButton::clicked, this, [this, a, act] {
      const platform::Outcome out = ((*state_).*act)(a);
      Redraw();
      Said(out);
    });
    row->addWidget(b);
  };
  command("ZeroFill", "Zero Filling(X 2) for " + fid + " FID", &document::FtWindow::ZeroFill);
  command("Cancel ZeroFill", "Reset " + fid + " Zero Filling", &document::FtWindow::CancelZeroFill);
  command("LP Fill", "Zero Filling(X 2) for " + fid + " FID by Linear Prediction", &document::FtWindow::LpFill);
  command("LP Back", "Replace the first points of the " + fid + " FID by Linear Prediction", &document::FtWindow::LpBack);
  size_[a] = new QLabel(box);
  size_[a]->setObjectName(fid + " size");
  size_[a]->setMinimumWidth(fontMetrics().horizontalAdvance("16384 (LP x16)"));
  row->addWidget(size_[a]);
  return box;
}

void FtDialog::ReadPhaseReference() {
  const int format = model::FormatOf(state_->document().words.dataTypeCode);
  std::optional<document::PhaseReference> reference =
      document::AskPhaseReference(prompt_, format, state_->WorkingLength());
  if (!reference) return;
  state_->SetPhaseReference(std::move(*reference));
  ySpan_->setText("1.0");
  Redraw();
}

void FtDialog::Said(const platform::Outcome& out) {
  if (!out.ok() && !out.message.empty()) prompt_.Ask(out.message);
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

QDialog* FtDialog::SetUpPrediction(bool goFft) {
  auto* dialog = new LpDialog(state_->settings(), {state_->DataPoints(model::F1), state_->DataPoints(model::F2)}, goFft,
                              prompt_, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, this, [this, goFft] {
    if (kept_) state_->KeepSettings(*kept_);
    state_->Refresh();
    Redraw();
    if (goFft) Run(true);
  });
  dialog->open();
  return dialog;
}

QDialog* FtDialog::SetUpCorrections() {
  auto* dialog = new CorrectionsDialog(*state_, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, this, [this] {
    if (kept_) state_->KeepSettings(*kept_);
    image_->Invalidate();  // the baseline may have been subtracted in place
    Redraw();
  });
  dialog->open();
  return dialog;
}

QDialog* FtDialog::ShiftFid() {
  auto* dialog = new FidShiftDialog(*state_, [this] { Redraw(); }, this, clock_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
  return dialog;
}

WindowDialog* FtDialog::EditWindow() {
  auto* editor = new WindowDialog(*state_, [this] { Redraw(); }, this, clock_);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  editor->open();
  return editor;
}

void FtDialog::Redraw() {
  const bool f2 = state_->view() == model::F2;
  where_->setText(QString("%1 view\nRow %2 / %3   Colm %4 / %5")
                      .arg(f2 ? (state_->HasPhaseReference() ? "F2 (phase data)" : "F2") : "F1")
                      .arg(state_->row() + 1)
                      .arg(state_->Rows())
                      .arg(state_->column() + 1)
                      .arg(state_->Columns()));
  ShowPhases();
  for (model::Axis a : {model::F1, model::F2}) {
    QString text = QString::number(processing::CurrentSize(state_->settings().axis[a]));
    QStringList how;
    if (state_->Extension(a) > 1) how << QString("%1 x%2").arg(state_->Predicted(a) ? "LP" : "ZF").arg(state_->Extension(a));
    if (state_->BackPredicted(a)) how << "Back";
    if (!how.isEmpty()) text += " (" + how.join(", ") + ")";
    size_[a]->setText(text);
  }
  const bool byHand = !state_->FollowsVendor();
  useLp_->setEnabled(byHand && state_->PredictionAsked());
  for (QObject* o : byHand_) {
    if (auto* widget = qobject_cast<QWidget*>(o)) widget->setEnabled(byHand);
    else if (auto* action = qobject_cast<QAction*>(o)) action->setEnabled(byHand);
  }
  {
    const QSignalBlocker quiet(method_), quietToo(recipe_);
    method_->setCurrentIndex(state_->PhaseSensitive() ? 0 : 1);
    recipe_->setCurrentIndex(byHand ? 1 : 0);
  }
  image_->setVisible(showImage_[state_->view()]->isChecked());
  image_->update();
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
  findChild<QWidget*>("sizes")->setEnabled(!running);
  layout()->menuBar()->setEnabled(!running);
  progress_->setVisible(running);
  caption_->setVisible(running);
  quit_->setVisible(running);
  progress_->setValue(0);
}

void FtDialog::Execute() { Run(false); }

void FtDialog::ExecuteWithPrediction() {
  if (worker_.Busy()) return;
  if (const platform::Message unasked = processing::PredictionAsked(state_->settings()); !unasked.empty()) {
    QApplication::beep();
    prompt_.Ask(unasked);
    return;
  }
  SetUpPrediction(true);
}

void FtDialog::Run(bool withPrediction) {
  if (worker_.Busy()) return;
  SetRunning(true);
  auto result = std::make_shared<document::Transformed>();
  worker_.Start(
      [this, result, withPrediction](platform::Progress& progress) {
        *result = state_->Execute(
            progress, workFile_,
            [this](std::string_view caption) {
              QMetaObject::invokeMethod(caption_, [label = caption_, text = QString::fromUtf8(caption.data(), caption.size())] {
                label->setText(text);
              });
            },
            withPrediction);
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
