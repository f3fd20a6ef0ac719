#pragma once
// The drawing surface on a QPainter: one drawing serves a widget, a QImage (PNG, BMP), a
// QSvgGenerator (SVG) and a QPdfWriter or QPrinter (PDF, paper).
#include <QPainter>
#include <QPoint>
#include <vector>

#include "platform/surface.h"

namespace velk::platform::qt {

class QtSurface final : public Surface {
 public:
  // The painter must be active on its device for the life of the surface.
  QtSurface(QPainter& painter, Extent size);
  ~QtSurface() override;
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

  void SetPen(Color color, int width) override;
  void SetBrush(Color color) override;
  void SetNoBrush() override;
  void SetDrawMode(DrawMode mode) override;
  void SetClip(int x, int y, int width, int height) override;
  void ClearClip() override;
  void MoveTo(int x, int y) override;
  void LineTo(int x, int y) override;
  void Polyline(std::span<const Point> points) override;
  void Polygon(std::span<const Point> points) override;
  void SetFont(const Font& font) override;
  void SetTextColor(Color color) override;
  void Text(int x, int y, double angleDegrees, std::string_view text) override;
  Extent MeasureText(std::string_view text) override;
  void DrawImage(int x, int y, const Image& image) override;
  Extent Size() const override { return size_; }

  // Draws the pieces still held back; the destructor does it as well.
  void Flush();

 private:
  const std::vector<QPoint>& ToQt(std::span<const Point> points);

  QPainter& painter_;
  Extent size_;
  QPoint at_;
  // Consecutive LineTo pieces of one pen are drawn together: a contour level is thousands of
  // short pieces, and one call for all of them is much cheaper than one call each.
  std::vector<QLine> pending_;
  std::vector<QPoint> scratch_;
  QColor textColor_{Qt::black};
  bool xor_ = false;
};

}  // namespace velk::platform::qt
