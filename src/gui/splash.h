#pragma once
// The window shown while the program starts, with its version text.
#include <QString>
#include <memory>

class QSplashScreen;

namespace velk::gui {

// "Ver." and the three parts of the version number as "###.", "###0." and "#####0": the first
// part without a digit when it is 0, the others with at least one.
QString VersionText(int major, int minor, int patch);

std::unique_ptr<QSplashScreen> ShowSplash(const QString& versionText);

}  // namespace velk::gui
