#pragma once
// The window shown while the program starts, with its version text.
#include <QString>
#include <memory>

class QSplashScreen;

namespace velk::gui {

// "Ver." and the three parts of the version number: "Ver.0.1.0".
QString VersionText(int major, int minor, int patch);

std::unique_ptr<QSplashScreen> ShowSplash(const QString& versionText);

}  // namespace velk::gui
