#pragma once
// Raw FIDs open in the FT window: these steps take one through it as a person would.
#include <QPushButton>
#include <QTest>

#include "gui/main_window.h"

namespace velk::test {

// Opens the file and waits for the FT window.
inline gui::FtDialog* OpenFid(gui::MainWindow& w, const std::string& path) {
  w.OpenFile(path);
  // The caller sees a timeout as a missing window.
  (void)QTest::qWaitFor([&] { return w.FtWindow() != nullptr || !w.Opening(); }, 60000);
  return w.FtWindow();
}

// "Execute 2D-FFT(No LP)" and the wait until the main window shows the spectrum traced.
inline bool TransformAndWait(gui::MainWindow& w, gui::FtDialog& ft, int timeout = 120000) {
  ft.findChild<QPushButton*>("Execute 2D-FFT(No LP)")->click();
  return QTest::qWaitFor([&] { return !w.Opening() && !w.Picture().Tracing() && !w.Document().view.ContourDirty; },
                         timeout);
}

}  // namespace velk::test
