#pragma once
// The window "FT-Phase": one trace of the raw FID with its window and transform, the row and
// column steps, the phase controls, and the 2D transform run off the interface thread with its
// progress and "Quit FFT". It ends with the tag "OK" after a transform, "CANCEL" otherwise.
#include <QDialog>
#include <filesystem>
#include <memory>

#include "document/ft_window.h"
#include "gui/step_label.h"
#include "processing/window_expressions.h"
#include "gui/worker.h"
#include "platform/prompt.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QScrollBar;

namespace velk::gui {

class TracePanel;
class WindowDialog;

class FtDialog final : public QDialog {
  Q_OBJECT

 public:
  FtDialog(document::Document& d, std::filesystem::path workFile, platform::Prompt& prompt, QWidget* parent,
           Clock clock = SteadyClock());
  ~FtDialog() override;

  document::FtWindow& State() { return *state_; }
  bool Running() const { return worker_.Busy(); }
  // "Execute 2D-FFT(No LP)".
  void Execute();
  // "Set Window Function" for the axis shown; the editor is open when this returns.
  WindowDialog* EditWindow();
  // The session's function expressions, which the window editor shows and edits.
  void SetExpressions(processing::WindowExpressions* expressions) { expressions_ = expressions; }

 signals:
  // The tag of the end: "OK" after the transform, "CANCEL" when the FID stays raw.
  void ended(bool transformed);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override { close(); }

 private:
  QWidget* BuildPhase(bool first);
  QWidget* BuildSteps();
  void Redraw();
  void ShowPhases();
  void SetRunning(bool running);

  std::unique_ptr<document::FtWindow> state_;
  std::filesystem::path workFile_;
  platform::Prompt& prompt_;
  Clock clock_;
  processing::WindowExpressions* expressions_ = nullptr;
  Worker worker_;
  bool done_ = false;
  TracePanel* panel_ = nullptr;
  QLabel* where_ = nullptr;
  QScrollBar* phaseBar_[2] = {};
  QLineEdit* phaseEdit_[2] = {};
  QLineEdit* ySpan_ = nullptr;
  QLineEdit* yLevel_ = nullptr;
  QWidget* controls_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* caption_ = nullptr;
  QPushButton* quit_ = nullptr;
};

}  // namespace velk::gui
