#include "gui/peak_picking.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTableWidget>
#include <QToolBar>

#include "document/peak_commands.h"
#include "gui/inadequate_menu.h"
#include "gui/peak_tool.h"
#include "operations/peak_messages.h"
#include "operations/peak_noise.h"
#include "operations/peak_table_edit.h"

namespace velk::gui {
namespace {

namespace words = operations::peak_messages;

QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<int>(text.size())); }

// The search holds the busy pointer; it does not yield.
struct BusyPointer {
  BusyPointer() { QApplication::setOverrideCursor(Qt::BusyCursor); }
  ~BusyPointer() { QApplication::restoreOverrideCursor(); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace

PeakPicking::PeakPicking(QMainWindow& window, document::Session& session, display::ToolBox& tools,
                         SpectrumView& view, platform::Prompt& prompt, std::function<bool()> busy)
    : QObject(&window), session_(session), tools_(tools), view_(view), prompt_(prompt), busy_(std::move(busy)) {
  topKind_ = core::Number(session_.settings2D, "PEAK PICK MODE") == 0 ? operations::kVirtualPeakTop
                                                                         : operations::kPeakOnDataPoint;
  const core::Settings& s = session_.settings2D;
  operations::MarkStyle marks;
  marks.peakColor = static_cast<platform::Color>(core::Number(s, "PEAK LINE COL"));
  marks.peakWidth = std::max(1, static_cast<int>(core::Number(s, "DISP PEAK WIDTH")));
  marks.slopeWidth = std::max(1, static_cast<int>(core::Number(s, "INADEQUATE WIDTH")));
  if (const double c = core::Number(s, "INADEQUATE LINE COL"); c > 0) marks.slopeColor = static_cast<platform::Color>(c);
  view_.SetMarkStyle(marks);
  tools_.Add(display::kPeakPicking,
             std::make_unique<PeakTool>(session_.document,
                                        PeakTool::Hooks{[this] { return Threshold(); }, [this] { return topKind_; },
                                                        [this] { Refresh(); }}));
  BuildMenus(window);
  // Other commands end the mode through the tool box; the bar follows at the next paint.
  view_.installEventFilter(this);
}

void PeakPicking::BuildMenus(QMainWindow& window) {
  menu_ = window.menuBar()->addMenu("&Peak");
  bar_ = new QToolBar("Peak", &window);
  bar_->setObjectName("peakBar");
  window.addToolBar(Qt::TopToolBarArea, bar_);
  subModes_ = new QActionGroup(this);
  const std::tuple<const char*, std::int16_t, const char*> tools[] = {
      {"Add Peak", kPeakAddByClick, "A click adds the peak top found near it"},
      {"Add Peaks in Area", kPeakAddInArea, "A rubber band picks every peak top inside it; a click adds one"},
      {"Delete Peak", kPeakDelete, "A click removes the nearest mark; a rubber band every mark inside it"},
      {"Move Peak Top", kPeakMove, "Drag a mark to another data point"}};
  for (const auto& [text, code, tip] : tools) {
    QAction* a = menu_->addAction(text, this, [this, c = code] { Enter(c); });
    a->setCheckable(true);
    a->setStatusTip(tip);
    a->setData(code);
    subModes_->addAction(a);
    bar_->addAction(a);
  }
  menu_->addSeparator();
  bar_->addSeparator();
  for (QAction* a : {menu_->addAction("Pick All Area", this, [this] { PickAllArea(); }),
                     menu_->addAction("Pick Displayed Area", this, [this] { PickDisplayedArea(); }),
                     menu_->addAction("Delete All", this, [this] { DeleteAll(); })})
    bar_->addAction(a);
  menu_->addSeparator();
  QMenu* threshold = menu_->addMenu("Threshold");
  auto* thresholds = new QActionGroup(this);
  for (bool automatic : {false, true}) {
    QAction* a = threshold->addAction(automatic ? "Auto" : "Lower Limit", this,
                                      [this, automatic] { SetAutoThreshold(automatic); });
    a->setCheckable(true);
    a->setChecked(automatic == autoThreshold_);
    a->setStatusTip(automatic ? QString("Peaks stand %1 noise deviations above zero, the noise estimated from the "
                                        "spectrum")
                                    .arg(operations::kAutoThresholdDeviations)
                              : QString("Peaks stand above the lower limit of the contour"));
    thresholds->addAction(a);
  }
  auto* kinds = new QActionGroup(this);
  for (operations::PeakMode kind : {operations::kPeakOnDataPoint, operations::kVirtualPeakTop}) {
    const bool onPoint = kind == operations::kPeakOnDataPoint;
    QAction* a = menu_->addAction(Q(onPoint ? words::kOnDataPoint : words::kVirtualTop), this,
                                  [this, kind] { SetTopKind(kind); });
    a->setCheckable(true);
    a->setChecked(kind == topKind_);
    a->setStatusTip(Q(onPoint ? words::kOnDataPointHint : words::kVirtualTopHint));
    a->setToolTip(a->statusTip());
    kinds->addAction(a);
  }
  menu_->addSeparator();
  bar_->addSeparator();
  QAction* list = menu_->addAction("PeaK List", this, [this] { ShowList(); });
  list->setStatusTip("Display and Print Peak List");
  QAction* close = menu_->addAction("Close", this, [this] { Close(); });
  close->setStatusTip("Save Peak Data, and Exit");
  bar_->addAction(list);
  bar_->addAction(close);
  menu_->addSeparator();
  inadequate_ = new InadequateMenu(*menu_, session_, tools_, view_, prompt_, busy_);
  connect(menu_, &QMenu::aboutToShow, this, &PeakPicking::ShowState);
  ShowState();
}

bool PeakPicking::Ready() {
  const document::Document& d = session_.document;
  return view_.Shown() && !d.view.Painting && !(busy_ && busy_()) && !d.spectrum.RR.data.empty();
}

bool PeakPicking::Enter(std::int16_t subMode) {
  // The add tools are refused with a full list, delete and move with an empty one.
  const std::size_t count = session_.document.spectrum.peaks.peaks.size();
  const bool adds = subMode == kPeakAddByClick || subMode == kPeakAddInArea;
  if (adds ? count >= static_cast<std::size_t>(model::kMaxPeaks2D) : count == 0) {
    ShowState();
    return false;
  }
  return SetMode(subMode);
}

bool PeakPicking::SetMode(std::int16_t subMode) {
  if (!Ready()) return false;
  display::DisplayState& v = session_.document.view;
  if (v.ToolMode != display::kPeakPicking && !tools_.Switch(v, display::kPeakPicking)) {
    ShowState();
    return false;
  }
  // Each button sets the mode and cancels any band being drawn.
  v.ToolCode = subMode;
  v.MouseMode = display::kNoDrag;
  ShowState();
  view_.update();
  return true;
}

// The area commands enter the mode in its present sub-mode, or in "Add Peak" from another mode.
bool PeakPicking::EnterKeeping() {
  const display::DisplayState& v = session_.document.view;
  const bool on = v.ToolMode == display::kPeakPicking;
  return SetMode(on ? v.ToolCode : static_cast<std::int16_t>(kPeakAddByClick));
}

int PeakPicking::PickAllArea() {
  if (!EnterKeeping()) return 0;
  BusyPointer busy;
  const int added = document::PickAllArea(session_.document, Threshold(), topKind_);
  Refresh();
  return added;
}

int PeakPicking::PickDisplayedArea() {
  if (!EnterKeeping()) return 0;
  BusyPointer busy;
  const int added = document::PickDisplayedArea(session_.document, Threshold(), topKind_);
  Refresh();
  return added;
}

bool PeakPicking::DeleteAll() {
  if (!EnterKeeping()) return false;
  const bool emptied = document::DeleteAllPeaksOf(session_.document);
  if (emptied) Refresh();
  return emptied;
}

void PeakPicking::Close() {
  display::DisplayState& v = session_.document.view;
  if (v.ToolMode == display::kPeakPicking) tools_.Switch(v, display::kNoTool);
  ShowState();
  view_.update();
}

PeakListWindow* PeakPicking::ShowList() {
  if (!Ready()) return nullptr;
  operations::SortPeaks(session_.document.spectrum.peaks);
  if (!list_) {
    list_ = new PeakListWindow(session_.document, prompt_, [this] { return topKind_; }, view_.window());
    list_->setAttribute(Qt::WA_DeleteOnClose);
    connect(list_, &PeakListWindow::listChanged, this, [this] {
      view_.update();
      ShowState();
      emit listChanged();
    });
  }
  list_->Refresh();
  list_->show();
  list_->raise();
  return list_;
}

void PeakPicking::SetAutoThreshold(bool automatic) { autoThreshold_ = automatic; }

float PeakPicking::Threshold() const {
  const model::Spectrum2D& s = session_.document.spectrum;
  return autoThreshold_ ? operations::AutoThreshold(s) : s.LowerLimit;
}

void PeakPicking::SetTopKind(operations::PeakMode kind) {
  topKind_ = kind;
  core::SetNumber(session_.settings2D, "PEAK PICK MODE", kind);
}

void PeakPicking::Refresh() {
  if (list_) list_->Refresh();
  inadequate_->ShowState();
  ShowState();
  view_.update();
  emit listChanged();
}

// The sub-mode is checked while the mode is on.
void PeakPicking::ShowState() {
  const display::DisplayState& v = session_.document.view;
  const bool on = view_.Shown() && v.ToolMode == display::kPeakPicking;
  // A list window left open over another data set shows that set's list.
  if (list_ && list_->Table().rowCount() != static_cast<int>(session_.document.spectrum.peaks.peaks.size()))
    list_->Refresh();
  for (QAction* a : subModes_->actions()) a->setChecked(on && a->data().toInt() == v.ToolCode);
}

bool PeakPicking::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &view_ && event->type() == QEvent::Paint) ShowState();
  return QObject::eventFilter(watched, event);
}

}  // namespace velk::gui
