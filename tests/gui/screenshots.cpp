// velk2d-screenshots OUTDIR COSY [HSQC [HSQC_FID]]: renders the main window and its dialogs on real data into
// OUTDIR/*.png for a person to look at. scripts/screenshots runs it on the offscreen platform.
#include <QApplication>
#include <QLineEdit>
#include <QAbstractButton>
#include <QMessageBox>
#include <QSplashScreen>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <cstdio>

#include "gui/main_window.h"
#include "gui/splash.h"
#include "gui/window_dialog.h"
#include "ft_steps.h"
#include "page_screenshots.h"
#include "support/temp_folder.h"

using namespace velk;

namespace {

bool Settled(gui::MainWindow& w) {
  return QTest::qWaitFor([&] { return !w.Opening() && !w.Picture().Tracing() && !w.View().state.ContourDirty; },
                         120000);
}

bool Save(QWidget& widget, const QString& file) {
  const bool ok = widget.grab().save(file);
  std::printf("%s %s\n", ok ? "wrote" : "could not write", file.toLocal8Bit().constData());
  return ok;
}

// Saves the next dialog as a picture and then presses the button of the given text in it.
void GrabNextDialog(const QString& file, const QString& button) {
  QTimer::singleShot(50, [file, button] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog) return GrabNextDialog(file, button);
    Save(*dialog, file);
    for (QAbstractButton* b : dialog->findChildren<QAbstractButton*>())
      if (b->text().remove('&') == button) return b->click();
  });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc < 3 || argc > 5) {
    std::fprintf(stderr, "usage: velk2d-screenshots OUTDIR COSY [HSQC [HSQC_FID]]\n");
    return 2;
  }
  const QString out = argv[1];
  {
    const auto splash = gui::ShowSplash(gui::VersionText(VELK_VERSION_MAJOR, VELK_VERSION_MINOR, VELK_VERSION_PATCH));
    Save(*splash, out + "/splash.png");
  }
  test::TempFolder folders;
  gui::MainWindow w({folders / "data", folders / "config", folders / "log", folders / "work", folders / "program"}, "");
  w.resize(1200, 900);
  w.show();
  bool ok = true;

  // The raw COSY goes through the FT window. Its cross peaks lie below the first 10 %: the lower
  // limit typed down to 3 %.
  gui::FtDialog* ft = test::OpenFid(w, argv[2]);
  ok &= ft && test::TransformAndWait(w, *ft);
  auto* lower = w.findChild<QLineEdit*>("lowerLimit");
  lower->selectAll();
  QTest::keyClicks(lower, "3");
  QTest::keyClick(lower, Qt::Key_Return);
  ok &= Settled(w) && Save(w, out + "/main-cosy.png");

  if (argc == 3) return ok ? 0 : 1;

  // The transformed COSY is not saved: opening the next file asks first.
  GrabNextDialog(out + "/dialog-open-changed.png", "Do not Save");
  w.OpenFile(argv[3]);
  ok &= Settled(w) && Save(w, out + "/main-hsqc.png");

  // A region of the HSQC with slice cursors on a cross peak.
  gui::SpectrumView& view = w.Picture();
  const QPointF from = view.PositionOf(2.6, 12.0), to = view.PositionOf(0.6, 45.0);
  QTest::mousePress(&view, Qt::LeftButton, {}, from.toPoint());
  QTest::mouseMove(&view, to.toPoint());
  QTest::mouseRelease(&view, Qt::LeftButton, {}, to.toPoint());
  ok &= Settled(w);
  w.SetSubMode(display::kSlice);
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.PositionOf(1.27, 24.9).toPoint());
  ok &= Save(w, out + "/main-hsqc-zoom-slice.png");

  GrabNextDialog(out + "/dialog-environment.png", "Cancel");
  w.SetEnvironment();
  GrabNextDialog(out + "/dialog-contour.png", "Cancel");
  w.ChangeContour();
  GrabNextDialog(out + "/dialog-display-area.png", "Cancel");
  w.ChangeDisplayArea();
  GrabNextDialog(out + "/dialog-grid.png", "OK");
  QTimer::singleShot(40, [] {
    if (auto* draw = QApplication::activeModalWidget()->findChild<QAbstractButton*>("drawGrid")) draw->click();
  });
  w.SetUpGrid();
  ok &= Save(w, out + "/main-hsqc-zoom-grid.png");

  // The page of the whole HSQC in "Print Preview", and the text editor.
  w.FullView();
  ok &= Settled(w) && test::PagePictures(w, out);

  // The HSQC's raw FID in the FT window: a row near the top of the FID in the F2 view, the
  // column of the largest signal in the F1 view; then "Exit without FFT".
  // The page was edited: opening the FID asks about the data first.
  if (argc == 5) GrabNextDialog(out + "/dialog-open-changed.png", "Do not Save");
  if (argc == 5 && (ft = test::OpenFid(w, argv[4]))) {
    ft->resize(1100, 720);
    document::FtWindow& state = ft->State();
    state.StepRow(+4);
    ft->findChild<QPushButton*>("F2")->click();
    ok &= Save(*ft, out + "/ft-hsqc-f2.png");
    QWidget* editor = ft->EditWindow();
    editor->resize(520, 560);
    ok &= Save(*editor, out + "/dialog-window-function.png");
    editor->close();
    const auto& re = state.preview().fidRe;
    std::size_t top = 0;
    for (std::size_t i = 0; i < re.size(); ++i) if (std::abs(re[i]) > std::abs(re[top])) top = i;
    state.StepColumn(static_cast<int>(top));
    ft->findChild<QPushButton*>("F1")->click();
    ok &= Save(*ft, out + "/ft-hsqc-f1.png");
    GrabNextDialog(out + "/dialog-ft-end.png", "OK");
    ft->close();
    ok &= Settled(w);
  }

  GrabNextDialog(out + "/dialog-exit.png", "Do not Save");
  w.close();
  return ok ? 0 : 1;
}
