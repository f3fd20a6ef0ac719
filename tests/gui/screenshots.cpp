// velk2d-screenshots OUTDIR COSY [HSQC [HSQC_FID]]: renders the main window and its dialogs on real data into
// OUTDIR/*.png for a person to look at. scripts/screenshots runs it on the offscreen platform.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <QAbstractButton>
#include <QMessageBox>
#include <QSplashScreen>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "document/write_data_set.h"
#include "gui/main_window.h"
#include "gui/inadequate_menu.h"
#include "gui/page_output.h"
#include "gui/peak_picking.h"
#include "model/data_type.h"
#include "native/ver4_file.h"
#include "support/synthetic_inadequate.h"
#include "gui/operation_tools.h"
#include "gui/step_label.h"
#include "gui/splash.h"
#include "gui/window_dialog.h"
#include "ft_steps.h"
#include "page_screenshots.h"
#include "support/temp_folder.h"

using namespace velk;

namespace {

bool Settled(gui::MainWindow& w) {
  return QTest::qWaitFor([&] { return !w.Opening() && !w.Picture().Tracing() && !w.Document().view.ContourDirty; },
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

QAction* MenuEntry(gui::MainWindow& w, const QString& text) {
  for (QAction* menu : w.menuBar()->actions())
    if (menu->menu())
      for (QAction* a : menu->menu()->actions())
        if (a->text() == text) return a;
  return nullptr;
}

// The HSQC's tool panels: phase of each axis with a step pressed, baseline points, the
// reference cross, and the questions of inversion and exchange.
bool ShootTools(gui::MainWindow& w, const QString& out) {
  bool ok = true;
  gui::OperationTools& tools = w.Operations();
  gui::SpectrumView& view = w.Picture();
  w.FullView();
  ok &= Settled(w);
  for (model::Axis axis : {model::F2, model::F1}) {
    tools.BeginPhase(axis);
    ok &= Settled(w);
    auto* step = tools.Panel()->findChild<gui::StepLabel*>("step0_12");  // +5
    QTest::mouseClick(step, Qt::LeftButton);
    ok &= Save(w, out + (axis == model::F2 ? "/tool-phase-f2.png" : "/tool-phase-f1.png"));
    tools.Cancel();
    ok &= Settled(w);
  }
  tools.BeginBaseline(model::F2);
  ok &= Settled(w);
  for (double f2 : {9.8, 6.2, 5.2, -0.3}) QTest::mouseClick(&view, Qt::LeftButton, {}, view.PositionOf(f2, 80).toPoint());
  ok &= Save(w, out + "/tool-baseline-f2.png");
  tools.Cancel();
  ok &= Settled(w);
  tools.BeginReference();
  ok &= Settled(w);
  // A methyl peak clicked and given the shifts it should read.
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.PositionOf(1.27, 24.9).toPoint());
  for (const auto& [name, text] : {std::pair{"RefText2", "1.27"}, std::pair{"RefText1", "24.9"}}) {
    auto* field = tools.Panel()->findChild<QLineEdit*>(name);
    field->setText(text);
    QMetaObject::invokeMethod(field, "editingFinished");
  }
  ok &= Settled(w) && Save(w, out + "/tool-reference.png");
  tools.Cancel();
  ok &= Settled(w);
  GrabNextDialog(out + "/dialog-invert.png", "Cancel");
  if (QAction* invert = MenuEntry(w, "Invert Spectrum...")) invert->trigger();
  GrabNextDialog(out + "/dialog-exchange.png", "Cancel");
  tools.Exchange();
  return ok;
}

// Opens the window's menu of the given title, saves it as a picture and closes it.
bool SaveMenu(QMainWindow& w, const QString& title, const QString& file) {
  for (QAction* a : w.menuBar()->actions()) {
    QMenu* menu = a->menu();
    if (!menu || a->text() != title) continue;
    menu->popup(w.mapToGlobal(w.menuBar()->actionGeometry(a).bottomLeft()));
    QTest::qWait(50);
    const bool ok = Save(*menu, file);
    menu->hide();
    return ok;
  }
  return false;
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

  // Symmetrization of the COSY: the diagonal moved half a point, previewed, then discarded.
  gui::OperationTools& tools = w.Operations();
  tools.BeginSymmetrize();
  ok &= Settled(w);
  for (int i = 0; i < 2; ++i) tools.Panel()->findChild<QToolButton*>("shiftRight")->click();
  tools.Preview();
  ok &= Settled(w) && Save(w, out + "/tool-symmetrize-cosy.png");
  tools.Cancel();
  ok &= Settled(w);

  if (argc == 3) return ok ? 0 : 1;

  // The transformed COSY is not saved: opening the next file asks first.
  GrabNextDialog(out + "/dialog-open-changed.png", "Do not Save");
  w.OpenFile(argv[3]);
  ok &= Settled(w) && Save(w, out + "/main-hsqc.png");

  // The peak tool: every peak above the lower limit marked, and their list; the marks stay for
  // the region below, and undo then takes them away again.
  gui::PeakPicking& peaks = w.Peaks();
  peaks.SetTopKind(operations::kVirtualPeakTop);
  peaks.PickAllArea();
  ok &= Save(w, out + "/main-hsqc-peaks.png");
  if (gui::PeakListWindow* list = peaks.ShowList()) {
    ok &= Save(*list, out + "/peak-list.png");
    list->close();
  }
  peaks.Close();

  // A region of the HSQC with slice cursors on a cross peak.
  gui::SpectrumView& view = w.Picture();
  const QPointF from = view.PositionOf(2.6, 12.0), to = view.PositionOf(0.6, 45.0);
  QTest::mousePress(&view, Qt::LeftButton, {}, from.toPoint());
  QTest::mouseMove(&view, to.toPoint());
  QTest::mouseRelease(&view, Qt::LeftButton, {}, to.toPoint());
  ok &= Settled(w);
  ok &= Save(w, out + "/main-hsqc-peaks-zoom.png");
  w.Undo();
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
  ok &= SaveMenu(w, "&Edit", out + "/menu-edit.png");  // "UnDo(Change Grid)"
  ok &= SaveMenu(w, "&File", out + "/menu-file.png");

  GrabNextDialog(out + "/dialog-printer-setting.png", "Cancel");
  {
    layout::PrintSetup setup;
    gui::OpenPrinterSetting(&w, setup);
  }

  // Save of the phase-sensitive HSQC asks what to keep (the window's own question, without its
  // file dialog); it is left with "Cancel".
  GrabNextDialog(out + "/dialog-save-size.png", "Cancel");
  platform::qt::QtPrompt prompt(&w);
  native::ChooseSaveMode(prompt, document::SaveSituationOf(w.Document()));
  ok &= ShootTools(w, out);

  // The page of the whole HSQC in "Print Preview", and the text editor.
  w.FullView();
  ok &= Settled(w) && test::PagePictures(w, out);

  // The HSQC's raw FID in the FT window: a row near the top of the FID in the F2 view, the
  // column of the largest signal in the F1 view; then "Exit without FFT". The page was edited:
  // opening the FID asks about the data first.
  if (argc == 5) GrabNextDialog(out + "/dialog-open-changed-page.png", "Do not Save");
  if (argc == 5 && (ft = test::OpenFid(w, argv[4]))) {
    ft->resize(1100, 720);
    document::FtWindow& state = ft->State();
    state.StepRow(+4);
    for (QAction* a : ft->findChildren<QAction*>())
      if (a->text().startsWith("Display Image Data")) a->setChecked(true);
    ft->findChild<QPushButton*>("F2")->click();
    ok &= Save(*ft, out + "/ft-hsqc-f2.png");
    QWidget* editor = ft->EditWindow();
    editor->resize(520, 560);
    ok &= Save(*editor, out + "/dialog-window-function.png");
    editor->close();
    for (const auto& [open, name] : std::initializer_list<std::pair<std::function<QDialog*()>, QString>>{
             {[ft] { return ft->SetUpPrediction(true); }, "dialog-lp-parameters"},
             {[ft] { return ft->SetUpCorrections(); }, "dialog-corrections"},
             {[ft] { return ft->ShiftFid(); }, "dialog-fid-shift"}}) {
      QDialog* dialog = open();
      dialog->adjustSize();
      ok &= Save(*dialog, out + "/" + name + ".png");
      dialog->reject();
    }
    // The program's recipe instead of the vendor's: forward prediction doubles F2 and backward
    // prediction recalculates its first points, on the row shown.
    ft->findChild<QComboBox*>("recipe")->setCurrentIndex(1);
    ft->findChild<QPushButton*>("F2 LP Fill")->click();
    ft->findChild<QPushButton*>("F2 LP Back")->click();
    ok &= Save(*ft, out + "/ft-hsqc-f2-prediction.png");
    ft->findChild<QPushButton*>("F2 Cancel ZeroFill")->click();
    state.settings().axis[model::F2].lp.BackwardOn = 0;
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

  // The whole HSQC with the cyclosporin 1H spectrum beside it as the F2 trace, when the corpus
  // holds it (it lies next to the HSQC).
  const std::filesystem::path proton =
      std::filesystem::path(argv[3]).parent_path() / "../../../../cyclosporin_1h/1/pdata/1/1r";
  if (std::filesystem::exists(proton)) {
    w.ReadTrace(model::F2, proton.lexically_normal().string());
    ok &= Settled(w);
    w.SetSubMode(display::kExpand);
    w.FullView();
    w.SetTraces(display::TraceKind::HighResolution1D);
    ok &= Settled(w) && Save(w, out + "/main-hsqc-1h-trace.png");
    // Its 1D reference: the chloroform line picked on the trace's panel and given 7.26 ppm.
    gui::OperationTools& tools = w.Operations();
    tools.BeginTraceReference(model::F2);
    ok &= Settled(w);
    gui::SpectrumView& view = w.Picture();
    const display::Rect& panel = view.Layout().traceF2;
    QTest::mouseClick(&view, Qt::LeftButton, {},
                      QPoint(static_cast<int>(view.PositionOf(7.26, 0).x()),
                             static_cast<int>((panel.y + panel.height / 2) / view.Ratio())));
    auto* shift = tools.Panel()->findChild<QLineEdit*>("RefText1D");
    shift->setText("7.26");
    QMetaObject::invokeMethod(shift, "editingFinished");
    ok &= Save(w, out + "/tool-reference-1d-f2.png");
    tools.Cancel();
    ok &= Settled(w);
  }

  // A folded INADEQUATE set made one by "Change Inadequate Spectrum": its slope 2 line, the two
  // windows, and the set extended onto the doubled F1 span with every pair on the line.
  model::Spectrum2D folded = test::FoldedInadequateSet();
  folded.peaks.peaks.clear();
  folded.UpperLimit = 1.0f;
  folded.LowerLimit = 0.1f;
  const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
  const std::filesystem::path file = folders / "inadequate.vlk2";
  ok &= native::WriteDataR4(file, folded, nullptr, nullptr, words, native::SaveMode::AllPlanes, {false, nullptr}).ok();
  GrabNextDialog(out + "/dialog-open-changed-2.png", "Do not Save");
  w.OpenFile(file.string());
  GrabNextDialog(out + "/dialog-inadequate-change.png", "Proceed as INADEQUATE Spectrum");
  QTimer::singleShot(200, [] {
    for (QAbstractButton* b : QApplication::activeModalWidget()->findChildren<QAbstractButton*>())
      if (b->text() == "Execute") return b->click();
  });
  ok &= Settled(w);
  peaks.Inadequate().ChangeInadequateSpectrum();
  ok &= Save(w, out + "/main-inadequate-folded.png");
  GrabNextDialog(out + "/dialog-inadequate-extend.png", "Execute");
  peaks.Inadequate().ExtendFoldedData();
  ok &= Settled(w) && Save(w, out + "/main-inadequate-extended.png");

  GrabNextDialog(out + "/dialog-exit.png", "Do not Save");
  w.close();
  return ok ? 0 : 1;
}
