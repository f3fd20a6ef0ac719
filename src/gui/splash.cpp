#include "gui/splash.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QSplashScreen>

namespace velk::gui {

// The major part is written without a leading zero in the old way ("###."), which for a 0 leaves
// "Ver..1.0"; a person reads that as a slip, so a 0 is written out.
QString VersionText(int major, int minor, int patch) {
  return "Ver." + QString::number(major) + "." + QString::number(minor) + "." + QString::number(patch);
}

std::unique_ptr<QSplashScreen> ShowSplash(const QString& versionText) {
  const qreal ratio = QApplication::primaryScreen() ? QApplication::primaryScreen()->devicePixelRatio() : 1.0;
  QPixmap picture(QSize(420, 200) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::white);
  {
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0, 160, 0), 2));
    p.drawRect(QRectF(1, 1, 418, 198));
    QFont title = p.font();
    title.setPixelSize(40);
    title.setBold(true);
    p.setFont(title);
    p.setPen(Qt::black);
    p.drawText(QRectF(0, 30, 420, 60), Qt::AlignCenter, "velk2d");
    QFont text = p.font();
    text.setPixelSize(16);
    text.setBold(false);
    p.setFont(text);
    p.drawText(QRectF(0, 95, 420, 30), Qt::AlignCenter, "NMR 2D");
    p.drawText(QRectF(0, 140, 420, 30), Qt::AlignCenter, versionText);
  }
  auto splash = std::make_unique<QSplashScreen>(picture);
  splash->show();
  QApplication::processEvents();
  return splash;
}

}  // namespace velk::gui
