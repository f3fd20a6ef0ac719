#pragma once
// The picture of the raw FID matrix beside the FT window's traces ("Display Image Data"), in a
// ramp from white to the chosen colour, with the row (F2 view) or column (F1 view) on show marked.
#include <QColor>
#include <QImage>
#include <QWidget>

#include "document/ft_window.h"

namespace velk::gui {

class FidImagePanel final : public QWidget {
  Q_OBJECT

 public:
  FidImagePanel(const document::FtWindow& window, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {260, 420}; }

  QColor color() const { return color_; }
  void SetColor(const QColor& color);
  // The data changed in place (a correction): the picture is made again.
  void Invalidate() { image_ = {}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const document::FtWindow& window_;
  QColor color_{0, 0, 160};
  QImage image_;
  const void* madeFrom_ = nullptr;  // the plane data the picture shows
  QSize madeFor_;
};

}  // namespace velk::gui
