// velk2d: the desktop program for 2D NMR.
#include <QApplication>
#include <QStringList>

#include "core/folders.h"
#include "gui/main_window.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("velk2d");
  QApplication::setApplicationVersion(VELK_VERSION_TEXT);
  // The command line is one file name, as the 1D program and the desktop hand it over.
  QStringList arguments = QApplication::arguments();
  arguments.removeFirst();
  const std::string commandLine = arguments.join(' ').toStdString();
  velk::gui::MainWindow window(velk::core::DefaultFolders(QApplication::applicationFilePath().toStdString()),
                               commandLine);
  if (window.Ended()) return 0;
  window.resize(1200, 900);
  window.show();
  return QApplication::exec();
}
