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
  // The command line is one file name, as the 1D program and the desktop hand it over. A single
  // argument is the whole name, blanks and all: it goes on in double quotes, which the
  // command line rules read as one name (an unquoted one ends at its first blank).
  QStringList arguments = QApplication::arguments();
  arguments.removeFirst();
  QString commandLine = arguments.join(' ');
  if (arguments.size() == 1 && commandLine.contains(' ') && !commandLine.startsWith('"'))
    commandLine = '"' + commandLine + '"';
  const auto splash = velk::gui::ShowSplash(velk::gui::VersionText(VELK_VERSION_MAJOR, VELK_VERSION_MINOR, VELK_VERSION_PATCH));
  velk::gui::MainWindow window(velk::core::DefaultFolders(QApplication::applicationFilePath().toStdString()),
                               commandLine.toStdString());
  if (window.Ended()) return 0;
  window.show();
  splash->finish(&window);
  return QApplication::exec();
}
