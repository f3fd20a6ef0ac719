#pragma once
// The main window: the view with its level controls, the menus and shortcuts, the status bar with
// the cursor's position and the progress of long work, files dropped on it, and the session's
// start and end.
#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "document/session.h"
#include "gui/ft_dialog.h"
#include "gui/operation_tools.h"
#include "gui/spectrum_view.h"
#include "gui/worker.h"
#include "platform/qt/qt_prompt.h"

class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QPushButton;
class QAction;
class QActionGroup;

namespace velk::gui {

class PeakPicking;
class PrintPreview;

class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  // The session's folders are given so that tests run in their own.
  MainWindow(const core::Folders& folders, std::string_view commandLine);
  ~MainWindow() override;

  // "Read Data" with a name (command line, recent files, a dropped file) or through the dialog.
  // The file is read on a worker thread; `opened` is emitted when the window shows it.
  void OpenFile(std::optional<std::string> name = std::nullopt);
  // "Read 2D Spectrum": a 2D FID for the FT window. "Read 1D Spectrum": the F2 or F1 trace.
  void ReadFid(std::optional<std::string> name = std::nullopt);
  void ReadTrace(model::Axis axis, std::optional<std::string> name = std::nullopt);
  // Busy while a file is read and while its FID is in the FT window.
  bool Opening() const { return opening_.Busy() || ft_ != nullptr; }
  FtDialog* FtWindow() const { return ft_; }
  bool Ended() const { return ended_; }

  // For the people who test the window: what it shows.
  const document::Session& Session() const { return session_; }
  const document::Document& Document() const { return session_.document; }
  SpectrumView& Picture() { return *view_; }
  PeakPicking& Peaks() { return *peaks_; }
  OperationTools& Operations() { return *operations_; }
  QString UpperText() const;
  QString LowerText() const;
  QString CursorText() const;

  void LevelUp() { StepLimit(false, true); }
  void LevelDown() { StepLimit(false, false); }
  void FullView();
  void ZoomOut();
  void SetSubMode(int subMode);
  // "High Resolution 1D Data", "Projection of 2D" or "Projection(Positiv && Negative)" in the side panels.
  void SetTraces(display::TraceKind kind);
  void ChangeContour();
  void SetEnvironment();
  void ChangeDisplayArea();
  void SetUpGrid();
  // "UnDo": the top record of the document's stack goes back; in a baseline panel its last point edit.
  void Undo();
  QAction* UndoAction() const { return undoAction_; }
  // "Print / Edit": the window "Print Preview" on the page of the data shown; none without data.
  PrintPreview* OpenPrintPreview();

 signals:
  void opened();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // Runs a read on the worker, with the progress bar and "Quit", and shows what it brought.
  void Read(std::function<document::OpenResult()> read);
  void BuildMenus();
  QWidget* BuildLevelControls();
  void BuildStatusBar();
  void ApplySettings();
  void OpenFtWindow();
  void AfterOpening(document::OpenResult result);
  void ShowData();
  void DiscardData();
  void StepLimit(bool upper, bool up);
  void EnterLimit(bool upper);
  void ShowLimits();
  void UpdateRecentMenu();
  bool Save();
  void RestoreGeometry();
  void NoteGeometry();
  void SetBusy(bool busy, const QString& what);
  // The undo entry shows the caption of the top record; disabled with nothing to undo.
  void RefreshUndo();
  void StoreGridSettings();

  document::Session session_;
  platform::qt::QtPrompt prompt_;
  std::unique_ptr<platform::Launcher> launcher_;
  std::unique_ptr<document::SessionServices> services_;
  display::ToolBox tools_;
  SpectrumView* view_ = nullptr;
  Worker opening_;
  FtDialog* ft_ = nullptr;  // the FT window while a raw FID is in it
  OperationTools* operations_ = nullptr;  // phase, baseline, symmetrize, reference and their undo
  float fullScale_ = 1.0f;  // the largest shown value: 100 % of the limits
  bool ended_ = false;
  bool snapshotBack_ = false;  // the shown spectrum came back from its snapshot

  QLineEdit* upperEdit_ = nullptr;
  QLineEdit* lowerEdit_ = nullptr;
  QLabel* cursorLabel_ = nullptr;
  QProgressBar* progressBar_ = nullptr;
  QPushButton* quitButton_ = nullptr;
  QMenu* recentMenu_ = nullptr;
  QActionGroup* subModes_ = nullptr;
  QAction* undoAction_ = nullptr;
  PeakPicking* peaks_ = nullptr;
};

}  // namespace velk::gui
