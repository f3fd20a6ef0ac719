#pragma once
// The picture of the FT window: the FID trace on show with its window curve in the upper half and
// its transform, phased, in the lower half, high ppm at the left over a ppm scale.
#include <QWidget>

#include "document/ft_window.h"

namespace velk::gui {

class TracePanel final : public QWidget {
  Q_OBJECT

 public:
  TracePanel(const document::FtWindow& window, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {760, 420}; }

 signals:
  // A click on the transform: the point under the cursor, for the pivot.
  void picked(int point);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  const document::FtWindow& window_;
};

}  // namespace velk::gui
