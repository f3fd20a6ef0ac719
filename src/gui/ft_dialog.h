#pragma once
// The window "FT-Phase": one trace of the raw FID with its window and transform, the row and
// column steps, the phase controls, and the 2D transform run off the interface thread with its
// progress and "Quit FFT". It ends with the tag "OK" after a transform, "CANCEL" otherwise.
#include <QDialog>
#include <filesystem>
#include <memory>
#include <vector>

#include "document/ft_window.h"
#include "gui/step_label.h"
#include "gui/worker.h"
#include "platform/prompt.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QScrollBar;

namespace velk::gui {

class FidImagePanel;
class TracePanel;
class WindowDialog;

class FtDialog final : public QDialog {
  Q_OBJECT

 public:
  FtDialog(document::Document& d, std::filesystem::path workFile, platform::Prompt& prompt, QWidget* parent,
           Clock clock = SteadyClock());
  ~FtDialog() override;

  document::FtWindow& State() { return *state_; }
  // The 2D settings: the window starts from the prediction and correction values they keep, and
  // writes back what the user sets.
  void UseSettings(core::Settings& settings);
  bool Running() const { return worker_.Busy(); }
  // "Execute 2D-FFT(No LP)".
  void Execute();
  // "Execute 2D-FFT(Use LP)": the set-up of the prediction first ("FFT LP Parameter Set").
  void ExecuteWithPrediction();
  // "Set Window Function" for the axis shown; the editor is open when this returns.
  WindowDialog* EditWindow();
  // "LP Parameter Set Up", "Set up Corrections on FFT" and "FID Shift": open when these return.
  QDialog* SetUpPrediction(bool goFft = false);
  QDialog* SetUpCorrections();
  QDialog* ShiftFid();
  // "Read Phase Correction Data(DQF)".
  void ReadPhaseReference();

 signals:
  // The tag of the end: "OK" after the transform, "CANCEL" when the FID stays raw.
  void ended(bool transformed);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override { close(); }

 private:
  QWidget* BuildPhase(bool first);
  QWidget* BuildSteps();
  QWidget* BuildSizes();
  QWidget* BuildAxisSize(model::Axis a);
  void Run(bool withPrediction);
  // Shows what a command of the window had to say, if anything.
  void Said(const platform::Outcome& out);
  void Redraw();
  void ShowPhases();
  void SetRunning(bool running);

  std::unique_ptr<document::FtWindow> state_;
  std::filesystem::path workFile_;
  platform::Prompt& prompt_;
  Clock clock_;
  Worker worker_;
  bool done_ = false;
  TracePanel* panel_ = nullptr;
  FidImagePanel* image_ = nullptr;
  QAction* showImage_[2] = {};  // "Display Image Data (F1)", "(F2)", by model::Axis
  QLabel* where_ = nullptr;
  QScrollBar* phaseBar_[2] = {};
  QLineEdit* phaseEdit_[2] = {};
  QLineEdit* ySpan_ = nullptr;
  QLineEdit* yLevel_ = nullptr;
  QWidget* controls_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* caption_ = nullptr;
  QPushButton* quit_ = nullptr;
  QPushButton* useLp_ = nullptr;
  QLabel* size_[2] = {};
  QComboBox* method_ = nullptr;
  QComboBox* recipe_ = nullptr;
  core::Settings* kept_ = nullptr;
  std::vector<QObject*> byHand_;  // controls with no effect while the vendor's recipe is followed
};

}  // namespace velk::gui
