#pragma once
// The page of "Print Preview" at the chosen zoom: the frames drawn once into a picture of the page,
// the objects over it, and the selection with its handles. The mouse selects, moves and resizes
// through the page editor's rules; the window is told before a change so that it can keep the
// undo, and after it.
#include <QImage>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <tuple>

#include "layout/page_edit.h"
#include "layout/paint_objects.h"

namespace velk::gui {

class PageView final : public QWidget {
  Q_OBJECT

 public:
  // Draws the page without its objects (frames, comment, spectrum, parameters) at the resolution.
  using RenderFrames = std::function<void(platform::Surface&, double dotsPerInch)>;
  // Called before a drag changes the page, with what it changes and the undo code.
  using BeforeChange = std::function<void(const layout::Target&, int undoCode)>;

  PageView(layout::EditedPage& page, RenderFrames frames, BeforeChange before, QWidget* parent);

  // 100 is the paper's real size on a screen of 96 dots per inch.
  void SetZoom(int percent);
  int Zoom() const { return zoom_; }
  double DotsPerInch() const;

  // The frames moved or the data changed: the page picture is drawn again.
  void FramesChanged();
  // The objects changed: texts are measured again.
  void ObjectsChanged();

  const std::optional<layout::Target>& Selection() const { return selection_; }
  void Select(std::optional<layout::Target> target);

  // Where a page point lies in the widget, and back.
  QPoint WidgetPoint(layout::PagePoint p) const;
  layout::PagePoint PagePointOf(QPointF at) const;
  QImage FramesPicture() const { return frames_; }

 signals:
  void changed();
  void selectionChanged();
  void status(const QString& text);
  void contextMenuAt(const QPoint& global, layout::PagePoint at);
  void doubleClicked();

 protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  struct Drag {
    layout::Hit hit;
    layout::PagePoint from;
    layout::EditedPage begun;
    bool moved = false;
  };
  void PaintSelection(QPainter& painter);
  void ShowStatus(layout::PagePoint at, std::string_view hint);
  std::optional<platform::Image> Picture(std::span<const std::uint8_t> bytes, int width, int height);

  layout::EditedPage& page_;
  RenderFrames renderFrames_;
  BeforeChange before_;
  int zoom_ = 75;
  QImage frames_;
  bool framesStale_ = true;
  std::vector<layout::TextFrame> texts_;
  std::optional<layout::Target> selection_;
  std::optional<Drag> drag_;
  layout::PictureDecoder decoder_;
  std::map<std::tuple<const void*, int, int>, std::optional<platform::Image>> pictures_;
};

}  // namespace velk::gui
