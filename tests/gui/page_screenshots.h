#pragma once
// The pictures of the page editor for velk2d-screenshots: "Print Preview" on the spectrum shown,
// with a few annotations, the text editor, "Parameter Print" and "Edit Parameters".
#include <QString>

#include "gui/main_window.h"

namespace velk::test {

bool PagePictures(gui::MainWindow& w, const QString& out);

}  // namespace velk::test
