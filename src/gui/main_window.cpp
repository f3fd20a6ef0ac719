#include "gui/main_window.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "display/display_area.h"
#include "display/display_grid.h"
#include "display/levels.h"
#include "display/messages.h"
#include "display/view_navigation.h"
#include "formats/registry.h"
#include "gui/contour_dialog.h"
#include "gui/display_area_dialog.h"
#include "gui/environment_dialog.h"
#include "gui/grid_dialog.h"
#include "gui/page_menu.h"
#include "gui/peak_picking.h"
#include "gui/print_preview.h"
#include "model/data_type.h"
#include "document/grid_command.h"
#include "document/transform.h"
#include "document/undo_command.h"
#include "document/read_data_set.h"
#include "document/write_data_set.h"
#include "native/ver4_file.h"

namespace velk::gui {
namespace {

class ProcessLauncher final : public platform::Launcher {
 public:
  bool Start(const std::filesystem::path& program, const std::vector<std::string>& arguments) override {
    QStringList list;
    for (const std::string& a : arguments) list << QString::fromStdString(a);
    return QProcess::startDetached(QString::fromStdString(program.string()), list);
  }
};

}  // namespace

MainWindow::MainWindow(const core::Folders& folders, std::string_view commandLine)
    : prompt_(this), launcher_(std::make_unique<ProcessLauncher>()) {
  session_.folders = folders;
  services_ = std::make_unique<document::SessionServices>(document::SessionServices{
      prompt_, *launcher_, formats::Formats(), [this](document::Session&) { return Save(); },
      // The spectrum shown is kept while an FID is read and transformed, and comes back when that fails.
      [](const document::Session& s, const std::filesystem::path& file) {
        const document::Document& d = s.document;
        return native::WriteDataR4(file, d.spectrum, &d.companionF2, &d.companionF1, d.words,
                                   native::SaveMode::AllPlanes, {false, nullptr})
            .ok();
      },
      [this](document::Session& s, const std::filesystem::path& file) {
        document::ReadResult kept = document::ReadDataSet(file, prompt_);
        if (!kept.outcome.ok()) return false;
        document::Replace(s.document, std::move(*kept.document));
        snapshotBack_ = true;
        return true;
      }});
  setAcceptDrops(true);
  setWindowTitle("NMR 2D");

  auto* central = new QWidget(this);
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(BuildLevelControls());
  view_ = new SpectrumView(session_.document, tools_, central);
  operations_ = new OperationTools(session_, tools_, *view_, prompt_, *this);
  view_->setFocusPolicy(Qt::StrongFocus);
  view_->setFocus();
  layout->addWidget(view_, 1);
  setCentralWidget(central);
  BuildMenus();
  BuildStatusBar();
  connect(view_, &SpectrumView::cursorMoved, cursorLabel_, &QLabel::setText);
  // A trace shows its progress per level; a right click on the picture or "Quit" ends it.
  connect(view_, &SpectrumView::tracing, this, [this](int percent) {
    if (opening_.Busy()) return;
    if (percent < 100 && !quitButton_->isEnabled()) SetBusy(true, QString::fromUtf8(display::messages::kQuitDrawing.data()));
    progressBar_->setValue(percent);
  });
  connect(view_, &SpectrumView::traced, this, [this] {
    if (!opening_.Busy()) SetBusy(false, {});
    RefreshUndo();  // every change of the data ends in a new trace
  });

  if (document::StartUp(session_, commandLine, *services_) == document::StartResult::End) {
    ended_ = true;
    return;
  }
  ApplySettings();
  resize(1200, 900);
  RestoreGeometry();
  UpdateRecentMenu();
  // StartUp leaves a file named on the command line in the session; it is shown like any other.
  if (session_.displayed == 1) AfterOpening(document::OpenResult::SpectrumLoaded);
  else if (session_.state == document::SessionState::FtWindow) OpenFile(session_.commandLine);
}

MainWindow::~MainWindow() = default;

// The contour setting that a freshly opened spectrum starts with, from the 2D settings.
void MainWindow::ApplySettings() {
  const core::Settings& s = session_.settings2D;
  display::ContourSetting& contour = session_.document.contour;
  display::GridSetting& grid = session_.document.grid;
  const auto number = [&](const char* key, int fallback) {
    const double v = core::Number(s, key);
    return v > 0 ? static_cast<int>(v) : fallback;
  };
  contour.Steps = display::NormalizeSteps(number("INITIAL TH DIVIDE", 16));
  contour.Interval = static_cast<int>(core::Number(s, "CONTOUR MODE"));
  contour.DisplayDimension = std::clamp(number("DISP DIMENSION_X", 256), 256, 8192);
  contour.Interpolation = static_cast<int>(core::Number(s, "INTERPOLATION FUNC."));
  contour.DisplayMode = display::kLines;
  grid.shown = core::Number(s, "DRAW GRID") != 0;
  grid.automatic = core::Number(s, "GRID SETTING MODE") == 0;
  grid.stepF2 = core::Number(s, "F2 GRID INC") > 0 ? core::Number(s, "F2 GRID INC") : 1.0;
  grid.stepF1 = core::Number(s, "F1 GRID INC") > 0 ? core::Number(s, "F1 GRID INC") : 1.0;
  grid.color = static_cast<platform::Color>(core::Number(s, "GRID COL"));
}

void MainWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu("&File");
  file->addAction("&Open...", QKeySequence::Open, this, [this] { OpenFile(); });
  recentMenu_ = file->addMenu("Recent Files");
  file->addAction("Read 2D Spectrum...", this, [this] { ReadFid(); });
  QMenu* trace = file->addMenu("Read 1D Spectrum");
  trace->addAction("F2 Trace...", this, [this] { ReadTrace(model::F2); });
  trace->addAction("F1 Trace...", this, [this] { ReadTrace(model::F1); });
  file->addAction("&Save...", QKeySequence::Save, this, [this] {
    if (view_->Shown() && !opening_.Busy() && tools_.Resolve(session_.document.view)) Save();
  });
  file->addSeparator();
  file->addAction("Print / Edit", QKeySequence::Print, this, [this] { OpenPrintPreview(); });
  file->addAction("Close (Discard Present Data)", this, [this] { DiscardData(); });
  file->addAction("Set Environment...", this, [this] { SetEnvironment(); });
  file->addSeparator();
  AddPageOutputActions(*file, this, session_, *view_);
  file->addSeparator();
  file->addAction("E&xit", QKeySequence::Quit, this, [this] { close(); });

  QMenu* edit = menuBar()->addMenu("&Edit");
  undoAction_ = edit->addAction("UnDo", QKeySequence::Undo, this, [this] { Undo(); });
  connect(edit, &QMenu::aboutToShow, this, &MainWindow::RefreshUndo);
  RefreshUndo();

  QMenu* view = menuBar()->addMenu("&View");
  view->addAction("Level Up", QKeySequence(Qt::Key_PageUp), this, [this] { LevelUp(); });
  view->addAction("Level Down", QKeySequence(Qt::Key_PageDown), this, [this] { LevelDown(); });
  view->addSeparator();
  view->addAction("Full View", QKeySequence(Qt::Key_Home), this, [this] { FullView(); });
  view->addAction("Zoom Out", QKeySequence::ZoomOut, this, [this] { ZoomOut(); });
  view->addAction("Change Contour...", this, [this] { ChangeContour(); });
  view->addAction("Change Display Area...", this, [this] { ChangeDisplayArea(); });
  view->addAction("Set up Grid...", this, [this] { SetUpGrid(); });
  view->addSeparator();
  // What the side panels show.
  auto* traces = new QActionGroup(this);
  const std::pair<const char*, display::TraceKind> kinds[] = {
      {"High Resolution 1D Data", display::TraceKind::HighResolution1D},
      {"Projection of 2D", display::TraceKind::Projection},
      {"Projection(Positiv && Negative)", display::TraceKind::ProjectionPosNeg}};
  for (const auto& [text, kind] : kinds) {
    QAction* a = view->addAction(text, this, [this, k = kind] { SetTraces(k); });
    a->setCheckable(true);
    a->setChecked(kind == session_.document.traces);
    traces->addAction(a);
  }
  view->addSeparator();
  subModes_ = new QActionGroup(this);
  const std::pair<const char*, int> modes[] = {{"Expansion", display::kExpand}, {"Slices", display::kSlice},
                                               {"Pan", display::kPanView}};
  for (const auto& [text, mode] : modes) {
    QAction* a = view->addAction(text, this, [this, m = mode] { SetSubMode(m); });
    a->setCheckable(true);
    a->setChecked(mode == display::kExpand);
    a->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + mode)));
    subModes_->addAction(a);
  }

  operations_->AddMenus(*menuBar());
  connect(operations_, &OperationTools::changed, this, &MainWindow::RefreshUndo);
  peaks_ = new PeakPicking(*this, session_, tools_, *view_, prompt_, [this] { return Opening(); });
  connect(peaks_, &PeakPicking::listChanged, this, &MainWindow::RefreshUndo);

  QMenu* help = menuBar()->addMenu("&Help");
  help->addAction("About", this, [this] {
    prompt_.Ask({"NMR 2D", "velk2d " + std::string(VELK_VERSION_TEXT), platform::Buttons::Ok});
  });
}

QWidget* MainWindow::BuildLevelControls() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(6, 3, 6, 3);
  const auto arrows = [&](bool upper) {
    for (bool up : {true, false}) {
      auto* b = new QToolButton(bar);
      b->setArrowType(up ? Qt::UpArrow : Qt::DownArrow);
      // Held down, an arrow waits 500 ms and then steps every 50 ms.
      b->setAutoRepeat(true);
      b->setAutoRepeatDelay(500);
      b->setAutoRepeatInterval(50);
      b->setObjectName(QString(upper ? "upper" : "lower") + (up ? "Up" : "Down"));
      connect(b, &QToolButton::clicked, this, [this, upper, up] { StepLimit(upper, up); });
      row->addWidget(b);
    }
  };
  const auto edit = [&](const char* label, bool upper) {
    row->addWidget(new QLabel(label, bar));
    auto* e = new QLineEdit(bar);
    e->setMaximumWidth(110);
    e->setObjectName(upper ? "upperLimit" : "lowerLimit");
    connect(e, &QLineEdit::editingFinished, this, [this, upper] { EnterLimit(upper); });
    row->addWidget(e);
    row->addWidget(new QLabel("%", bar));
    arrows(upper);
    return e;
  };
  upperEdit_ = edit("Upper Limit", true);
  row->addSpacing(16);
  lowerEdit_ = edit("Lower Limit", false);
  row->addStretch(1);
  return bar;
}

void MainWindow::BuildStatusBar() {
  cursorLabel_ = new QLabel(this);
  progressBar_ = new QProgressBar(this);
  progressBar_->setMaximumWidth(200);
  quitButton_ = new QPushButton("Quit", this);
  quitButton_->setObjectName("quit");
  statusBar()->addWidget(cursorLabel_, 1);
  statusBar()->addPermanentWidget(progressBar_);
  statusBar()->addPermanentWidget(quitButton_);
  // Both stay in their places, so that the bar does not jump when work starts and ends.
  SetBusy(false, {});
  connect(quitButton_, &QPushButton::clicked, this, [this] {
    if (opening_.Busy()) opening_.Quit();
    else view_->QuitTracing();
  });
  connect(&opening_, &Worker::progressed, progressBar_, &QProgressBar::setValue);
}

void MainWindow::SetBusy(bool busy, const QString& what) {
  quitButton_->setEnabled(busy);
  progressBar_->setTextVisible(busy);
  progressBar_->setFormat(what + " %p%");
  progressBar_->setValue(0);
  QApplication::restoreOverrideCursor();
  if (busy) QApplication::setOverrideCursor(Qt::BusyCursor);
}

void MainWindow::OpenFile(std::optional<std::string> name) {
  // A name left by StartUp is already read into the FT window's place.
  Read([this, name] {
    return session_.state == document::SessionState::FtWindow && name == session_.commandLine
               ? document::OpenResult::FidLoaded
               : document::Open(session_, *services_, name);
  });
}

void MainWindow::ReadFid(std::optional<std::string> name) {
  Read([this, name] { return document::ReadFidSpectrum(session_, *services_, name); });
}

void MainWindow::ReadTrace(model::Axis axis, std::optional<std::string> name) {
  if (!view_->Shown()) return;
  // The 2D data stay: the window draws them again as they are.
  Read([this, axis, name] {
    document::ReadTraceSpectrum(session_, *services_, axis, name);
    return document::OpenResult::Failed;
  });
}

void MainWindow::Read(std::function<document::OpenResult()> read) {
  // A busy window ends the command at once, and so does a tool that the user keeps.
  if (opening_.Busy() || !tools_.Resolve(session_.document.view)) return;
  view_->SetBusy(true);
  SetBusy(true, "Reading");
  auto result = std::make_shared<document::OpenResult>(document::OpenResult::Cancelled);
  snapshotBack_ = false;
  opening_.Start(
      [this, read, result](platform::Progress& progress) {
        // "Quit" ends the read itself; the data shown stay as they were.
        services_->progress = &progress;
        *result = read();
        services_->progress = nullptr;
      },
      [this, result] {
        view_->SetBusy(false);
        SetBusy(false, {});
        if (*result == document::OpenResult::FidLoaded) {
          view_->SetShown(false);  // the document holds the FID until the transform
          OpenFtWindow();
        }
        else AfterOpening(*result);
      });
}

void MainWindow::OpenFtWindow() {
  const std::string title = windowTitle().toStdString();
  ft_ = new FtDialog(session_.document, session_.run.FidWorkFile(), prompt_, this);
  ft_->UseSettings(session_.settings2D);
  connect(ft_, &FtDialog::ended, this, [this, title](bool transformed) {
    ft_->deleteLater();
    ft_ = nullptr;
    document::LeaveFtWindow(session_, *services_, transformed);
    document::OpenResult result = transformed ? document::OpenResult::SpectrumLoaded : document::OpenResult::Failed;
    // Leaving without a transform brings back the spectrum shown before, or the window shows nothing.
    if (!transformed && snapshotBack_) {
      session_.windowTitle = title;
      result = document::OpenResult::SpectrumLoaded;
    } else if (!transformed) {
      document::DiscardData(session_);
      setWindowTitle("NMR 2D");
    }
    AfterOpening(result);
  });
  ft_->resize(900, 640);
  ft_->show();
}

void MainWindow::AfterOpening(document::OpenResult result) {
  if (result == document::OpenResult::SpectrumLoaded) ShowData();
  else view_->DataChanged();  // the picture of the data kept
  UpdateRecentMenu();
  RefreshUndo();
  emit opened();
}

void MainWindow::ShowData() {
  document::Document& d = session_.document;
  model::Spectrum2D& s = d.spectrum;
  const float largest = display::LargestShownMagnitude(s, d.words.pulseModeClass, d.contour);
  fullScale_ = largest > 0 ? largest : 1.0f;
  // No file holds the limits (a Ver.4 file neither): every spectrum starts at 100 % and 10 % of its
  // largest value. Taking a Ver.4 file's record defaults of 1.0 and 0.1 as limits drew the noise of
  // spectra that are not normalised to 1.
  s.UpperLimit = fullScale_;
  s.LowerLimit = 0.1f * fullScale_;
  d.view = {};
  display::ShowFullSpectrum(d.view, s);
  tools_.Switch(d.view, display::kNoTool);
  d.view.ToolCode = static_cast<std::int16_t>(subModes_->checkedAction() ? subModes_->actions().indexOf(subModes_->checkedAction()) : 0);
  view_->SetShown(true);
  setWindowTitle(QString::fromStdString(session_.windowTitle));
  ShowLimits();
  SetBusy(true, "Drawing");
  view_->DataChanged();
}

// The spectrum as a Ver.4 file with the companion traces. Called on the
// interface thread by the menu and the close question, on the worker by "Read Data".
bool MainWindow::Save() {
  const std::vector<platform::FileFilter> filters{{"Ver.4 Format(*.vlk2)", "*.vlk2"}, {"Ver.4 Format(*.vlk)", "*.vlk"}};
  const std::optional<std::string> chosen = prompt_.ChooseFile("Save", filters, true);
  if (!chosen) return false;
  std::filesystem::path file = *chosen;
  if (file.extension().empty()) file += ".vlk2";
  // All planes, the real plane only, or the power spectrum: the person chooses where the data allow.
  const std::optional<native::SaveMode> mode = native::ChooseSaveMode(prompt_, document::SaveSituationOf(session_.document));
  if (!mode) return false;
  formats::WriteChoices choices;
  choices.saveMode = *mode;
  choices.keepBackup = core::Number(session_.settings2D, "MAKE FILE BACKUP") != 0;
  choices.log = document::SessionLogger(session_, prompt_);
  const platform::Outcome written = document::SaveDocument(session_.document, file, choices);
  if (!written.ok()) {
    if (!written.message.empty()) prompt_.Ask(written.message);
    return false;
  }
  return true;
}

PrintPreview* MainWindow::OpenPrintPreview() {
  if (!view_->Shown() || opening_.Busy() || !tools_.Resolve(session_.document.view)) return nullptr;
  auto* preview = new PrintPreview(session_, *view_, [this] { return Save(); }, prompt_, this);
  preview->setAttribute(Qt::WA_DeleteOnClose);
  preview->show();
  return preview;
}

void MainWindow::DiscardData() {
  if (opening_.Busy() || !tools_.Resolve(session_.document.view)) return;
  document::DiscardData(session_);
  view_->SetShown(false);
  setWindowTitle("NMR 2D");
  upperEdit_->clear();
  lowerEdit_->clear();
  view_->DataChanged();
  RefreshUndo();
}

QString MainWindow::UpperText() const { return upperEdit_->text(); }
QString MainWindow::LowerText() const { return lowerEdit_->text(); }
QString MainWindow::CursorText() const { return cursorLabel_->text(); }

void MainWindow::ShowLimits() {
  const model::Spectrum2D& s = session_.document.spectrum;
  upperEdit_->setText(QString::fromStdString(display::FormatLimit(s.UpperLimit / fullScale_, display::kScientificUpper)));
  lowerEdit_->setText(
      QString::fromStdString(display::FormatLimit(s.LowerLimit / fullScale_, display::kScientificLowerUp)));
}

// The limits are kept as values of the data and shown as percent of the largest value; the
// rules of the arrows and the entries work on the fractions.
void MainWindow::StepLimit(bool upper, bool up) {
  if (!view_->Shown() || opening_.Busy()) return;
  model::Spectrum2D& s = session_.document.spectrum;
  float u = s.UpperLimit / fullScale_, l = s.LowerLimit / fullScale_;
  const bool stepped = upper ? display::StepUpperLimit(up, u, l) : display::StepLowerLimit(up, u, l);
  if (!stepped) {
    for (QToolButton* b : findChildren<QToolButton*>()) b->setDown(false);  // ends a held arrow
    return;
  }
  view_->StopTracing();
  s.UpperLimit = u * fullScale_;
  s.LowerLimit = l * fullScale_;
  ShowLimits();
  if (!upper && !up && l < 1e-6f)
    lowerEdit_->setText(QString::fromStdString(display::FormatLimit(l, display::kScientificLowerDown)));
  view_->LevelsChanged();
}

void MainWindow::EnterLimit(bool upper) {
  if (!view_->Shown() || opening_.Busy()) return;
  model::Spectrum2D& s = session_.document.spectrum;
  float u = s.UpperLimit / fullScale_, l = s.LowerLimit / fullScale_;
  const std::string text = (upper ? upperEdit_ : lowerEdit_)->text().toStdString();
  const bool stored = upper ? display::EnterUpperLimit(text, u, l) : display::EnterLowerLimit(text, u, l);
  if (stored) {
    view_->StopTracing();
    s.UpperLimit = u * fullScale_;
    s.LowerLimit = l * fullScale_;
    view_->LevelsChanged();
  }
  ShowLimits();
}

void MainWindow::FullView() {
  if (!view_->Shown() || opening_.Busy()) return;
  display::ShowFullSpectrum(session_.document.view, session_.document.spectrum);
  view_->WindowChanged();
}

void MainWindow::ZoomOut() {
  if (!view_->Shown() || opening_.Busy()) return;
  display::ZoomOut(session_.document.view, session_.document.spectrum);
  view_->WindowChanged();
}

void MainWindow::SetEnvironment() {
  if (opening_.Busy() || !tools_.Resolve(session_.document.view)) return;
  EnvironmentDialog dialog(session_.settings2D, this);
  if (dialog.exec() != QDialog::Accepted) return;
  dialog.Store(session_.settings2D);
  core::WriteSettings(session_.settings2DFile, session_.settings2D);
  // The display takes the new grid size and interpolation at once; the steps wait for the next file.
  display::ContourSetting& contour = session_.document.contour;
  const display::ContourSetting kept = contour;
  ApplySettings();
  contour.Steps = kept.Steps;
  contour.Interval = kept.Interval;
  contour.PowerSpectrum = kept.PowerSpectrum;
  contour.DisplayMode = kept.DisplayMode;
  view_->DataChanged();
}

void MainWindow::ChangeContour() {
  if (!view_->Shown() || opening_.Busy() || !tools_.Resolve(session_.document.view)) return;
  document::Document& d = session_.document;
  const model::Spectrum2D& s = d.spectrum;
  const int cls = d.words.pulseModeClass;
  const auto altitudes = [this, &s, cls](const display::ContourSetting& setting) {
    display::LevelTable table;
    display::BuildLevelTable(table, setting, s.UpperLimit / fullScale_, s.LowerLimit / fullScale_, cls);
    return table;
  };
  // The power display needs quadrants, and a class with a negative side.
  const bool powerAllowed = (cls == model::VPH_HOMO || cls == model::VPH_HETERO) && !s.II.data.empty();
  ContourDialog dialog(d.contour, powerAllowed, altitudes, this);
  const auto apply = [this, &d](const display::ContourSetting& setting) {
    view_->StopTracing();  // the trace reads the setting
    const bool newValues = setting.PowerSpectrum != d.contour.PowerSpectrum;
    d.contour = setting;
    if (newValues) view_->DataChanged();  // another number at every point: grid and projections anew
    else view_->LevelsChanged();
  };
  connect(&dialog, &ContourDialog::preview, this, apply);
  if (dialog.exec() == QDialog::Accepted) apply(dialog.Setting());
  core::SetNumber(session_.settings2D, "CONTOUR MODE", d.contour.Interval);
}

void MainWindow::ChangeDisplayArea() {
  if (!view_->Shown() || opening_.Busy() || !tools_.Resolve(session_.document.view)) return;
  document::Document& d = session_.document;
  DisplayAreaDialog dialog(d.view, d.spectrum, this);
  if (dialog.exec() != QDialog::Accepted) return;
  display::ApplyArea(d.view, dialog.Area(), d.spectrum);
  view_->WindowChanged();
}

void MainWindow::SetUpGrid() {
  if (opening_.Busy() || !tools_.Resolve(session_.document.view)) return;
  GridDialog dialog(session_.document.grid, this);
  if (dialog.exec() != QDialog::Accepted) return;
  document::SetGrid(session_.document, dialog.Grid());
  StoreGridSettings();
  view_->Recompose();
  RefreshUndo();
}

// The grid of the present data set is also the one the next run starts with.
void MainWindow::StoreGridSettings() {
  const display::GridSetting& grid = session_.document.grid;
  core::Settings& s = session_.settings2D;
  core::SetNumber(s, "DRAW GRID", grid.shown ? 1 : 0);
  core::SetNumber(s, "GRID SETTING MODE", grid.automatic ? 0 : 1);
  core::SetNumber(s, "F2 GRID INC", grid.stepF2);
  core::SetNumber(s, "F1 GRID INC", grid.stepF1);
}

void MainWindow::Undo() {
  if (!view_->Shown() || opening_.Busy()) return;
  if (operations_->UndoPoint()) return;
  // An open tool is resolved first: its panel closes, or the person stays in it.
  if (!tools_.Resolve(session_.document.view)) return;
  view_->StopTracing();  // the trace reads the data that may come back
  const document::SnapshotFiles files = document::SnapshotFilesOf(session_.run);
  switch (document::UndoLast(session_.document, files, prompt_)) {
    case document::Undone::Grid:
      StoreGridSettings();
      view_->Recompose();
      break;
    case document::Undone::Peaks: view_->update(); break;  // the marks lie over the contour
    case document::Undone::Scale: operations_->ScaleChanged(); break;
    case document::Undone::Data: view_->DataChanged(); break;
    case document::Undone::Nothing: break;
  }
  peaks_->Refresh();  // the list window and the peak entries follow the list and planes that came back
  RefreshUndo();
}

void MainWindow::RefreshUndo() {
  if (const std::optional<int> kind = operations_->PanelUndoKind()) {  // 0: no point edit to take back
    undoAction_->setText(QString::fromStdString(document::CaptionOf(*kind)));
    undoAction_->setEnabled(*kind > 0);
    return;
  }
  const document::UndoStack& stack = session_.document.undo;
  undoAction_->setText(QString::fromStdString(document::UndoCaption(stack)));
  undoAction_->setEnabled(view_->Shown() && document::CanUndo(stack));
}

void MainWindow::SetTraces(display::TraceKind kind) {
  session_.document.traces = kind;
  view_->Recompose();
}

void MainWindow::SetSubMode(int subMode) {
  display::DisplayState& v = session_.document.view;
  v.ToolCode = static_cast<std::int16_t>(subMode);
  if (QAction* a = subModes_->actions().value(subMode)) a->setChecked(true);
  if (subMode != display::kSlice && (v.SliceF1 >= 0 || v.SliceF2 >= 0)) {
    v.SliceF1 = v.SliceF2 = -1;
    view_->Recompose();
  }
}

void MainWindow::UpdateRecentMenu() {
  recentMenu_->clear();
  for (const std::string& name : core::MakeRecentFileList(session_.settings2D))
    recentMenu_->addAction(QString::fromStdString(name), this, [this, name] { OpenFile(name); });
  recentMenu_->setEnabled(!recentMenu_->isEmpty());
}

// "WINDOW STATE" keeps the place and size of the window as "x,y,width,height,maximized";
// "ACCESS READ DIR" the folder the file dialog last showed.
void MainWindow::RestoreGeometry() {
  const QStringList parts = QString::fromStdString(core::Text(session_.settings2D, "WINDOW STATE")).split(',');
  if (parts.size() == 5) {
    const QRect r(parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt());
    if (r.width() >= 480 && r.height() >= 360) setGeometry(r);
    if (parts[4].toInt() != 0) setWindowState(Qt::WindowMaximized);
  }
  prompt_.SetFolder(QString::fromStdString(core::Text(session_.settings2D, "ACCESS READ DIR")));
}

void MainWindow::NoteGeometry() {
  const QRect r = normalGeometry();
  core::Set(session_.settings2D, "WINDOW STATE",
            QString("%1,%2,%3,%4,%5").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).arg(isMaximized() ? 1 : 0)
                .toStdString());
  core::Set(session_.settings2D, "ACCESS READ DIR", prompt_.Folder().toStdString());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // A busy window, or a tool that the user keeps, ends the close at once.
  if (opening_.Busy() || !tools_.Resolve(session_.document.view)) {
    event->ignore();
    return;
  }
  NoteGeometry();
  if (document::Close(session_, *services_) != "END") {
    event->ignore();
    return;
  }
  ended_ = true;
  event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

// A dropped file opens as "Read Data" would; a dropped experiment folder opens its processed
// spectrum when it has one, else its raw data.
void MainWindow::dropEvent(QDropEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.isEmpty() || !urls.front().isLocalFile()) return;
  QString path = urls.front().toLocalFile();
  if (QFileInfo(path).isDir()) {
    for (const char* inside : {"pdata/1/2rr", "2rr", "ser", "fid"})
      if (QFileInfo::exists(path + "/" + inside)) {
        path += QString("/") + inside;
        break;
      }
  }
  event->acceptProposedAction();
  OpenFile(path.toStdString());
}

}  // namespace velk::gui
