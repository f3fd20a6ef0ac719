#include "gui/trace_panel.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "display/tics.h"

namespace velk::gui {

namespace {

// Points [0, count) of `values` across `box`, scaled so that `full` reaches the box's half height
// above the middle line (or its full height above the bottom when `fromBottom`). Where points are
// denser than pixels, each pixel column carries the lowest and highest of its points, so that a
// long trace draws as fast as a short one and loses no peak.
QPolygonF Curve(const float* values, int count, const QRectF& box, float full, float level, bool fromBottom) {
  QPolygonF line;
  if (count < 2 || !(full > 0)) return line;
  const double base = fromBottom ? box.bottom() : box.center().y();
  const double height = fromBottom ? box.height() : box.height() / 2;
  const auto y = [&](float v) { return std::clamp(base - height * (v / full + level), box.top(), box.bottom()); };
  const int columns = std::max(1, static_cast<int>(box.width()));
  if (count <= 2 * columns) {
    line.reserve(count);
    for (int i = 0; i < count; ++i) line << QPointF(box.left() + box.width() * i / (count - 1), y(values[i]));
    return line;
  }
  line.reserve(2 * columns);
  for (int c = 0; c < columns; ++c) {
    const int from = static_cast<int>(static_cast<std::int64_t>(count) * c / columns);
    const int to = static_cast<int>(static_cast<std::int64_t>(count) * (c + 1) / columns);
    const auto [lo, hi] = std::minmax_element(values + from, values + std::max(to, from + 1));
    const double x = box.left() + c + 0.5;
    line << QPointF(x, y(*hi)) << QPointF(x, y(*lo));
  }
  return line;
}

// The transform is drawn with its high-frequency end (the last point) at the left.
QPolygonF Mirrored(QPolygonF line, const QRectF& box) {
  for (QPointF& q : line) q.setX(box.left() + box.right() - q.x());
  return line;
}

constexpr double kScaleHeight = 20;

// The ppm scale under the transform: tics with labels, high ppm at the left.
void DrawPpmScale(QPainter& p, const QRectF& box, double leftPpm, double rightPpm) {
  if (!(leftPpm != rightPpm)) return;
  const QFontMetrics metrics = p.fontMetrics();
  const auto width = [&](const std::string& text) { return metrics.horizontalAdvance(QString::fromStdString(text)); };
  p.setPen(Qt::black);
  p.drawLine(box.topLeft(), box.topRight());
  const QString unit = "ppm";
  const double unitLeft = box.right() - metrics.horizontalAdvance(unit);
  const double baseline = box.top() + 5 + metrics.ascent();
  p.drawText(QPointF(unitLeft, baseline), unit);
  for (const display::Tic& t : display::MakeTics(leftPpm, rightPpm, static_cast<int>(box.width()), {}, width)) {
    const double x = box.left() + box.width() * (t.value - leftPpm) / (rightPpm - leftPpm);
    p.drawLine(QPointF(x, box.top()), QPointF(x, box.top() + (t.major ? 5 : 2)));
    const QString label = QString::fromStdString(t.label);
    const double half = metrics.horizontalAdvance(label) / 2.0;
    // A label that would run into the unit or past the ends is left out.
    if (t.major && x + half < unitLeft - 6 && x - half > box.left())
      p.drawText(QPointF(x - half, baseline), label);
  }
}

}  // namespace

TracePanel::TracePanel(const document::FtWindow& window, QWidget* parent) : QWidget(parent), window_(window) {
  setMinimumSize(400, 260);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void TracePanel::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  const document::FtPreview& t = window_.preview();
  const QRectF fidBox(8, 8, width() - 16, height() * 0.4 - 12);
  const QRectF specBox(8, height() * 0.4 + 4, width() - 16, height() * 0.6 - 12 - kScaleHeight);
  p.setPen(QColor(200, 200, 200));
  p.drawRect(fidBox);
  p.drawRect(specBox);
  p.drawLine(QPointF(fidBox.left(), fidBox.center().y()), QPointF(fidBox.right(), fidBox.center().y()));

  // The FID: as many points as "All" and "Exp." leave, scaled to its own largest value.
  const int fidCount = std::min<int>(window_.fidShown(), static_cast<int>(t.fidRe.size()));
  float fidFull = 0;
  for (int i = 0; i < fidCount; ++i) fidFull = std::max({fidFull, std::abs(t.fidRe[i]), std::abs(t.fidIm[i])});
  p.setPen(QPen(QColor(150, 150, 230), 1));
  p.drawPolyline(Curve(t.fidIm.data(), fidCount, fidBox, fidFull, 0, false));
  p.setPen(QPen(QColor(0, 0, 170), 1));
  p.drawPolyline(Curve(t.fidRe.data(), fidCount, fidBox, fidFull, 0, false));
  // Predicted points in green: past the measured ones, and the first ones recalculated backward.
  const model::Axis axis = window_.view();
  const int measured = std::min(fidCount, window_.DataPoints(axis));
  if (fidCount > 1 && t.prediction.ok()) {
    const auto part = [&](int from, int to) {
      if (to - from < 2) return;
      QPolygonF whole = Curve(t.fidRe.data(), fidCount, fidBox, fidFull, 0, false);
      const double x0 = fidBox.left() + fidBox.width() * from / (fidCount - 1);
      const double x1 = fidBox.left() + fidBox.width() * (to - 1) / (fidCount - 1);
      QPolygonF piece;
      for (const QPointF& q : whole) if (q.x() >= x0 - 0.5 && q.x() <= x1 + 0.5) piece << q;
      p.drawPolyline(piece);
    };
    p.setPen(QPen(QColor(0, 160, 0), 1.5));
    if (window_.Predicted(axis)) part(measured, fidCount);
    if (window_.BackPredicted(axis)) part(0, window_.settings().axis[axis].lp.BackPoints + 1);
  }
  if (!t.window.values.empty() && fidCount > 1) {
    std::vector<float> w(static_cast<std::size_t>(fidCount));
    float wFull = 0;
    for (int i = 0; i < fidCount; ++i) wFull = std::max(wFull, std::abs(w[i] = i <= t.window.high() ? t.window.at(i) : 0.0f));
    p.setPen(QPen(QColor(220, 0, 0), 1));
    p.drawPolyline(Curve(w.data(), fidCount, fidBox, wFull, 0, false));
  }

  // The transform, phased: "Y-Span" enlarges it, "Y-Level" lifts it.
  const int n = static_cast<int>(t.shownRe.size());
  const float full = t.scale.ySpan > 0 ? t.scale.ySpan / 2 : 1.0f;
  const bool magnitude = !window_.PhaseSensitive();
  const QRectF box = specBox.adjusted(0, 0, 0, magnitude ? -4 : 0);
  p.setPen(QPen(Qt::black, 1));
  p.drawPolyline(Mirrored(Curve(t.shownRe.data(), n, box, magnitude ? full * 2 : full, window_.yLevel(), magnitude), box));
  if (n > 1)
    DrawPpmScale(p, QRectF(specBox.left(), specBox.bottom(), specBox.width(), kScaleHeight), window_.PpmOf(n - 1),
                 window_.PpmOf(0));
  if (!magnitude && n > 1) {
    const double x = specBox.right() - specBox.width() * window_.Pivot() / (n - 1);
    p.setPen(QPen(QColor(0, 150, 0), 1, Qt::DashLine));
    p.drawLine(QPointF(x, specBox.top()), QPointF(x, specBox.bottom()));
  }
  if (t.windowFailed) {
    p.setPen(Qt::red);
    p.drawText(specBox, Qt::AlignCenter, "Window function gives no data");
  }
}

void TracePanel::mousePressEvent(QMouseEvent* event) {
  const int n = static_cast<int>(window_.preview().shownRe.size());
  const double right = width() - 8, w = width() - 16;
  if (n > 1 && event->position().y() > height() * 0.4)
    emit picked(static_cast<int>(std::lround((right - event->position().x()) / w * (n - 1))));
}

}  // namespace velk::gui
