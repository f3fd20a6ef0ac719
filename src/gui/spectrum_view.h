#pragma once
// The main view: the contour with its axes, the F2 trace above it, the F1 trace beside it and the
// level bar. The contour is traced on a worker thread into a retained image; the parts around it
// are composed into a frame; the tool's marks (rubber band, slice cursors) are drawn over the
// frame at every paint, so that a cursor move never traces again.
#include <QImage>
#include <QWidget>

#include "display/axes.h"
#include "display/contour.h"
#include "display/page_picture.h"
#include "display/tools.h"
#include "display/traces.h"
#include "document/document.h"
#include "gui/worker.h"
#include "operations/contour_marks.h"

namespace velk::gui {

class SpectrumView final : public QWidget {
  Q_OBJECT

 public:
  // The view shows the document's spectrum through the document's own view state, contour
  // setting and grid; the mouse on the contour goes to the active tool of `tools`.
  SpectrumView(document::Document& document, display::ToolBox& tools, QWidget* parent = nullptr);

  // Whether the document holds a spectrum to show (not while it is empty or holds an FID).
  void SetShown(bool shown);
  bool Shown() const { return shown_; }

  // New data: projections made again and the grid built anew.
  void DataChanged();
  // The levels changed: the contour is traced again from the kept grid.
  void LevelsChanged();
  // The window moved: a new grid where the old one cannot serve, then the trace.
  void WindowChanged();
  // Slices, grid or captions changed: the frame is composed again around the same contour.
  void Recompose();
  // Ends a trace under way, so that the data may change (the limits are read by the trace).
  void StopTracing() { worker_.Stop(); }
  // "Quit Drawing": the trace under way ends, and the picture stays as far as it was drawn.
  void QuitTracing() { worker_.Quit(); }
  // While the data are being replaced the view shows its last picture and takes no mouse.
  void SetBusy(bool busy);
  // How the peak tops and the INADEQUATE line are drawn over the contour.
  void SetMarkStyle(const operations::MarkStyle& marks);
  const operations::MarkStyle& Marks() const { return marks_; }

  // Where the parts lie, in device pixels, and the device pixels per interface unit.
  const display::MainViewLayout& Layout() const { return layout_; }
  double Ratio() const { return devicePixelRatioF(); }
  // The interface position of a ppm pair on the contour.
  QPointF PositionOf(double ppmF2, double ppmF1) const;
  bool Tracing() const { return worker_.Busy(); }
  const display::LevelTable& Levels() const { return levels_; }
  const QImage& Frame() const { return frame_; }
  const QString& CaptionF2() const { return traceCaptionF2_; }
  const QString& CaptionF1() const { return traceCaptionF1_; }
  // The axis captions: "F2 1H (ppm)".
  const std::string& AxisCaptionF2() const { return axisCaptionF2_; }
  const std::string& AxisCaptionF1() const { return axisCaptionF1_; }
  // The picture as drawn here, for the page: the document's spectrum, contour setting and window,
  // both signs of the projections where the contour has a negative side, the axis captions.
  display::MainViewInput Input() const;

 signals:
  void cursorMoved(const QString& reading);
  // A left press on the panel beside the contour of an axis (a model::Axis), at that axis's ppm.
  void tracePressed(int axis, double ppm);
  void windowMoved();
  void traced();
  void tracing(int percent);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent*) override;
  void resizeEvent(QResizeEvent*) override;
  void mousePressEvent(QMouseEvent*) override;
  void mouseMoveEvent(QMouseEvent*) override;
  void mouseReleaseEvent(QMouseEvent*) override;
  void leaveEvent(QEvent*) override;

 private:
  enum class Pointing { Press, Move, Release };
  void Trace(bool reuse);
  void Compose();
  void Point(Pointing what, QMouseEvent* event);
  void PressBeside(const display::Pointer& at);
  display::Pointer DevicePointer(QMouseEvent* event) const;

  document::Document& document_;
  display::ToolBox& tools_;
  bool shown_ = false;
  operations::MarkStyle marks_;
  Worker worker_;
  display::ContourGrid grid_;  // touched only by the tracing job while it runs
  display::LevelTable levels_;
  display::Projection projF2_, projF1_;
  display::MainViewLayout layout_;
  QImage contour_;  // the retained contour, device pixels
  QImage frame_;    // contour, axes, traces and level bar, device pixels
  QString traceCaptionF2_, traceCaptionF1_;
  std::string axisCaptionF2_ = "F2 (ppm)", axisCaptionF1_ = "F1 (ppm)";
  bool busy_ = false;
  bool pendingReuse_ = true;
};

}  // namespace velk::gui
