#include "gui/fid_image_panel.h"

#include <QPainter>

#include "document/fid_image.h"

namespace velk::gui {

FidImagePanel::FidImagePanel(const document::FtWindow& window, QWidget* parent) : QWidget(parent), window_(window) {
  setMinimumSize(120, 200);
  setObjectName("image");
}

void FidImagePanel::SetColor(const QColor& color) {
  color_ = color;
  Invalidate();
  update();
}

void FidImagePanel::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  const QRect box = rect().adjusted(4, 8, -4, -8);
  const model::Spectrum2D& s = window_.document().spectrum;
  const std::int32_t columns = window_.DataPoints(model::F2), rows = window_.DataPoints(model::F1);
  if (image_.isNull() || madeFor_ != box.size() || madeFrom_ != s.RR.data.data()) {
    const document::FidImage levels = document::MakeFidImage(s, columns, rows, box.width(), box.height());
    image_ = QImage(levels.width, levels.height, QImage::Format_Indexed8);
    QList<QRgb> ramp;
    for (int k = 0; k < 256; ++k)
      ramp << qRgb(255 + (color_.red() - 255) * k / 255, 255 + (color_.green() - 255) * k / 255,
                   255 + (color_.blue() - 255) * k / 255);
    image_.setColorTable(ramp);
    for (int y = 0; y < levels.height; ++y)
      std::copy_n(levels.level.data() + static_cast<std::size_t>(y) * levels.width, levels.width, image_.scanLine(y));
    madeFrom_ = s.RR.data.data();
    madeFor_ = box.size();
  }
  if (image_.isNull() || columns < 1 || rows < 1) return;
  p.drawImage(box, image_);
  p.setPen(QColor(200, 200, 200));
  p.drawRect(box);
  // The trace on show.
  p.setPen(QPen(QColor(220, 0, 0), 1));
  if (window_.view() == model::F2) {
    const double y = box.top() + box.height() * (window_.row() + 0.5) / rows;
    p.drawLine(QPointF(box.left(), y), QPointF(box.right(), y));
  } else {
    const double x = box.left() + box.width() * (window_.column() + 0.5) / columns;
    p.drawLine(QPointF(x, box.top()), QPointF(x, box.bottom()));
  }
}

}  // namespace velk::gui
