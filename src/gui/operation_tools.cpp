#include "gui/operation_tools.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "display/view_navigation.h"
#include "gui/baseline_tool_panel.h"
#include "gui/phase_tool_panel.h"
#include "gui/reference_tool_panel.h"
#include "gui/symmetrize_tool_panel.h"
#include "gui/trace_reference_panel.h"
#include "gui/tool_overlay.h"
#include "operations/baseline_tool.h"
#include "operations/messages.h"
#include "operations/rearrange.h"
#include "operations/reference_tool.h"
#include "operations/symmetrize_tool.h"
#include "operations/trace_reference.h"

namespace velk::gui {

using model::F1;
using model::F2;

namespace {

constexpr const char* kInvertNote =
    "\"Invert\" means to invert the chemical shift of 2D spectrum. To invert display direction only, use \"Change "
    "Display Area\" menu.";

// A busy pointer for the length of a whole-spectrum operation.
struct BusyPointer {
  BusyPointer() { QApplication::setOverrideCursor(Qt::BusyCursor); }
  ~BusyPointer() { QApplication::restoreOverrideCursor(); }
};

}  // namespace

OperationTools::OperationTools(document::Session& session, display::ToolBox& tools, SpectrumView& view,
                               platform::Prompt& prompt, QMainWindow& window)
    : QObject(&window), session_(session), tools_(tools), view_(view), prompt_(prompt), window_(window) {
  for (int mode : {display::kReference2D, display::kPhaseF1, display::kPhaseF2, display::kBaselineF1,
                   display::kBaselineF2, display::kSymmetrization, display::kReference1DF1, display::kReference1DF2})
    tools_.Add(mode, std::make_unique<ToolOverlay>(*this));
  connect(&view_, &SpectrumView::tracePressed, this, &OperationTools::PickOnTrace);
}

OperationTools::~OperationTools() = default;

void OperationTools::AddMenus(QMenuBar& bar) {
  QMenu* tools = bar.addMenu("&Tools");
  QAction* phaseF1 = tools->addAction("F1 Phase Corr.", this, [this] { BeginPhase(F1); });
  QAction* phaseF2 = tools->addAction("F2 Phase Corr.", this, [this] { BeginPhase(F2); });
  tools->addSeparator();
  tools->addAction("F1 BaseLine Cor.", this, [this] { BeginBaseline(F1); });
  tools->addAction("F2 BaseLine Cor.", this, [this] { BeginBaseline(F2); });
  tools->addSeparator();
  tools->addAction("Symmetrize", this, [this] { BeginSymmetrize(); });
  tools->addAction("Invert Spectrum...", this, [this] {
    if (!Ready() || !ResolveOthers()) return;
    QDialog dialog(&window_);
    dialog.setWindowTitle("Invert Spectrum");
    auto* layout = new QVBoxLayout(&dialog);
    auto* f1 = new QCheckBox("Invert F1 Axis", &dialog);
    auto* f2 = new QCheckBox("Invert F2 Axis", &dialog);
    auto* note = new QLabel(kInvertNote, &dialog);
    note->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(&dialog);
    buttons->addButton("Execute", QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    for (QWidget* w : {static_cast<QWidget*>(f1), static_cast<QWidget*>(f2), static_cast<QWidget*>(note),
                       static_cast<QWidget*>(buttons)})
      layout->addWidget(w);
    if (dialog.exec() == QDialog::Accepted) Invert(f1->isChecked(), f2->isChecked());
  });
  QAction* exchange = tools->addAction("Exchange F1 and F2 Data", this, [this] { Exchange(); });
  tools->addSeparator();
  tools->addAction("Reference Setting", this, [this] { BeginReference(); });
  QAction* centreF2 = tools->addAction("Set Center(F2)", this, [this] { SetCenter(F2); });
  QAction* centreF1 = tools->addAction("Set Center(F1)", this, [this] { SetCenter(F1); });
  centreF2->setToolTip("Set Reference by F2 Center Frequency");
  centreF1->setToolTip("Set Reference by F1 Center Frequency");
  QAction* traceF2 = tools->addAction("F2 1D Reference", this, [this] { BeginTraceReference(F2); });
  QAction* traceF1 = tools->addAction("F1 1D Reference", this, [this] { BeginTraceReference(F1); });
  // Phase needs the four quadrants of a phase-sensitive class, exchange a heteronuclear class or
  // HMBC, the centre commands a 1D trace with frequencies.
  connect(tools, &QMenu::aboutToShow, this, [this, exchange, centreF2, centreF1, traceF2, traceF1, phaseF1, phaseF2] {
    const document::Document& d = session_.document;
    const bool phasable = view_.Shown() && operations::CanPhase(d.spectrum, d.words.pulseModeClass);
    phaseF1->setEnabled(phasable);
    phaseF2->setEnabled(phasable);
    exchange->setEnabled(operations::CanExchange(d.words.pulseModeClass));
    centreF2->setEnabled(operations::HoldsCentreFrequency(d.companionF2));
    centreF1->setEnabled(operations::HoldsCentreFrequency(d.companionF1));
    traceF2->setEnabled(operations::CanReferenceTrace(d.companionF2));
    traceF1->setEnabled(operations::CanReferenceTrace(d.companionF1));
  });

}

bool OperationTools::Ready() const { return view_.Shown() && !session_.document.view.Painting; }

// The window's own resolver, which asks whatever tool is open (ours or another's).
bool OperationTools::ResolveOthers() { return tools_.Resolve(State()); }

operations::ToolHost& OperationTools::Host() {
  if (!active_.tool || !host_) {
    host_.reset();
    host_.emplace(document::MakeToolHost(session_.document, Files(), prompt_));
    host_->dataFixed = [this] { DataChanged(); };
  }
  return *host_;
}

bool OperationTools::MayBegin(std::int16_t mode) {
  if (!Ready() || State().ToolMode == mode || !ResolveOthers()) return false;
  view_.StopTracing();
  return true;
}

void OperationTools::BeginPhase(model::Axis axis) {
  if (!MayBegin(axis == F1 ? display::kPhaseF1 : display::kPhaseF2)) return;
  const std::int32_t points = session_.document.spectrum.axis[axis].Point;
  operations::PhaseMemory& phases = session_.document.phases;
  std::int32_t& pivot = axis == F1 ? phases.PivotF1 : phases.PivotF2;
  if (pivot < 0 || pivot >= points) pivot = points / 2;
  if (!operations::BeginPhaseCorrection(Host(), active_, phases, axis)) return;
  auto& tool = static_cast<operations::PhaseTool&>(*active_.tool);
  Opened(new PhaseToolPanel(*this, tool), axis == F1 ? "F1 Phase Correction" : "F2 Phase Correction");
}

void OperationTools::BeginBaseline(model::Axis axis) {
  if (!MayBegin(axis == F1 ? display::kBaselineF1 : display::kBaselineF2)) return;
  const int avePoint = static_cast<int>(core::Number(session_.settings2D, "AVERAGING POINT"));
  if (!operations::BeginBaseCorrection(Host(), active_, axis, avePoint >= 1 && avePoint <= 20 ? avePoint : 2)) return;
  auto& tool = static_cast<operations::BaselineTool&>(*active_.tool);
  Opened(new BaselineToolPanel(*this, tool), axis == F1 ? "F1 Base Line Correction" : "F2 Base Line Correction");
}

void OperationTools::BeginSymmetrize() {
  if (!MayBegin(display::kSymmetrization)) return;
  if (!operations::BeginSymmetrize(Host(), active_)) return;
  Opened(new SymmetrizeToolPanel(*this, static_cast<operations::SymmetrizeTool&>(*active_.tool)), "Symmetrization");
}

void OperationTools::BeginReference() {
  if (!MayBegin(display::kReference2D)) return;
  if (!operations::BeginReference(Host(), active_)) return;
  Opened(new ReferenceToolPanel(*this, static_cast<operations::ReferenceTool&>(*active_.tool)), "Reference Setting");
}

void OperationTools::BeginTraceReference(model::Axis axis) {
  if (!MayBegin(axis == F1 ? display::kReference1DF1 : display::kReference1DF2)) return;
  if (!operations::BeginTraceReference(Host(), active_, axis)) return;
  Opened(new TraceReferencePanel(*this, static_cast<operations::TraceReferenceTool&>(*active_.tool)),
         axis == F1 ? "F1 1D Reference Setting" : "F2 1D Reference Setting");
}

void OperationTools::PickOnTrace(int axis, double ppm) {
  auto* trace = dynamic_cast<operations::TraceReferenceTool*>(active_.tool.get());
  if (!trace || trace->Axis() != axis) return;
  trace->Pick(operations::TracePointAt(trace->Trace(), ppm));
  MarksChanged();
}

void OperationTools::SetCenter(model::Axis axis) {
  if (!Ready() || !ResolveOthers()) return;
  StopDrawing();
  document::Document& d = session_.document;
  const operations::ReferenceState before = operations::SaveReferenceState(d.spectrum);
  if (!operations::SetReferenceByCenter(d.spectrum, State(), axis, axis == F1 ? d.companionF1 : d.companionF2).ok())
    return;
  Host().pushReferenceUndo(before);
  Host().markUnsaved();
  ScaleChanged();
}

void OperationTools::Invert(bool f1, bool f2) {
  if (!Ready() || (!f1 && !f2)) return;
  view_.StopTracing();
  {
    BusyPointer busy;
    operations::InvertSpectrum(session_.document.spectrum, f1, f2);
  }
  Host().markUnsaved();
  DataChanged();
}

void OperationTools::Exchange() {
  if (!Ready() || !operations::CanExchange(session_.document.words.pulseModeClass) || !ResolveOthers()) return;
  const platform::Message question{std::string(operations::messages::kExchangeTitle),
                                   std::string(operations::messages::kExchangeQuestion), platform::Buttons::OkCancel,
                                   platform::Icon::Question, false};
  if (prompt_.Ask(question) != platform::Answer::Ok) return;
  view_.StopTracing();
  platform::Outcome done;
  {
    BusyPointer busy;
    done = operations::ExchangeF1F2(session_.document.spectrum);
  }
  if (!done.ok()) {
    prompt_.Ask(done.message);
    return;
  }
  // The view takes the axes' captions from the exchanged data.
  display::ShowFullSpectrum(State(), session_.document.spectrum);
  Host().markUnsaved();
  DataChanged();
}

std::optional<int> OperationTools::PanelUndoKind() const {
  if (auto* base = dynamic_cast<const operations::BaselineTool*>(active_.tool.get())) return base->PointUndoKind();
  return std::nullopt;
}

bool OperationTools::UndoPoint() {
  auto* base = dynamic_cast<operations::BaselineTool*>(active_.tool.get());
  if (!base) return false;
  if (base->UndoPoint()) MarksChanged();
  return true;
}

bool OperationTools::LeaveOpenTool() {
  if (!active_.tool) return true;
  view_.StopTracing();
  if (active_.tool->Resolve()) return false;
  Ended();
  DataChanged();
  return true;
}

void OperationTools::Preview() {
  if (!Active()) return;
  view_.StopTracing();
  {
    BusyPointer busy;
    Active()->Preview();
  }
  DataChanged();
}

void OperationTools::Reset() {
  if (!Active()) return;
  view_.StopTracing();
  Active()->Reset();
  DataChanged();
}

void OperationTools::Fix() {
  if (!Active()) return;
  view_.StopTracing();
  Active()->Fix();
  if (State().ToolMode == display::kNoTool) Ended();
  else emit changed();
}

void OperationTools::Cancel() {
  if (!Active()) return;
  view_.StopTracing();
  Active()->Cancel();
  Ended();
  DataChanged();
}

void OperationTools::MarksChanged() {
  view_.update();
  emit changed();
}

void OperationTools::PointerOverHandle(bool over) { view_.setCursor(over ? Qt::SizeAllCursor : Qt::CrossCursor); }

void OperationTools::ScaleChanged() {
  if (State().ContourDirty) view_.WindowChanged();
  else view_.Recompose();
  emit changed();
}

QWidget* OperationTools::Panel() const { return dock_ ? dock_->widget() : nullptr; }

void OperationTools::Opened(QWidget* panel, const QString& title) {
  if (!dock_) {
    dock_ = new QDockWidget(&window_);
    dock_->setObjectName("toolPanel");
    dock_->setFeatures(QDockWidget::NoDockWidgetFeatures);
    window_.addDockWidget(Qt::BottomDockWidgetArea, dock_);
  }
  DropPanel();
  dock_->setWindowTitle(title);
  dock_->setWidget(panel);
  dock_->show();
  view_.update();
  emit changed();
}

// The panel goes with its tool: it hears no more of the commands before Qt deletes it.
void OperationTools::DropPanel() {
  QWidget* old = dock_->widget();
  if (!old) return;
  disconnect(this, nullptr, old, nullptr);
  dock_->setWidget(nullptr);
  old->deleteLater();
}

// The tool has left its mode (fixed, cancelled, or resolved by another command).
void OperationTools::Ended() {
  if (dock_) {
    DropPanel();
    dock_->hide();
  }
  active_.tool.reset();
  PointerOverHandle(false);
  view_.Recompose();  // a trace beside the contour may show a new scale
  emit changed();
}

void OperationTools::DataChanged() {
  view_.DataChanged();
  emit changed();
}

}  // namespace velk::gui
