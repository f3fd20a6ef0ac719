// velk2d: the desktop program for 2D NMR.
#include <QApplication>
#include <QSplashScreen>
#include <QStringList>

#include "core/folders.h"
#include "gui/main_window.h"
#include "gui/splash.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("velk2d");
  QApplication::setApplicationVersion(VELK_VERSION_TEXT);
  // The command line is one file name, as the 1D program and the desktop hand it over.
  QStringList arguments = QApplication::arguments();
  arguments.removeFirst();
  const std::string commandLine = arguments.join(' ').toStdString();
  const auto splash = velk::gui::ShowSplash(velk::gui::VersionText(VELK_VERSION_MAJOR, VELK_VERSION_MINOR, VELK_VERSION_PATCH));
  velk::gui::MainWindow window(velk::core::DefaultFolders(QApplication::applicationFilePath().toStdString()),
                               commandLine);
  if (window.Ended()) return 0;
  window.show();
  splash->finish(&window);
  return QApplication::exec();
}
