// The main window driven as a person uses it, on the offscreen platform: open spectra of several
// makers, read the title, the axes and the level bar, move the levels, draw a rubber band, put a
// slice cursor on a peak, and close with the question about changed data.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <algorithm>
#include <cmath>
#include <functional>

#include "display/view_navigation.h"
#include "document/read_data_set.h"
#include "gui/main_window.h"
#include "gui/step_label.h"
#include "gui/window_dialog.h"
#include "ft_steps.h"
#include "support/corpus.h"
#include "support/temp_folder.h"

using namespace velk;

namespace {

core::Folders FoldersIn(const test::TempFolder& t) {
  return {t / "data", t / "config", t / "log", t / "work", t / "program"};
}

// Opens the file and waits until the window shows it completely traced.
bool OpenAndWait(gui::MainWindow& w, const std::string& path) {
  w.OpenFile(path);
  return QTest::qWaitFor([&] { return !w.Opening() && !w.Picture().Tracing() && !w.Document().view.ContourDirty; },
                         60000);
}

bool WaitTraced(gui::MainWindow& w) {
  return QTest::qWaitFor([&] { return !w.Picture().Tracing() && !w.Document().view.ContourDirty; }, 20000);
}

std::pair<float, float> Range(const std::vector<float>& ppm, int points) {
  const auto [lo, hi] = std::minmax_element(ppm.begin(), ppm.begin() + points);
  return {*lo, *hi};
}

// The step between neighbouring data points of an axis.
float PointStep(const std::vector<float>& ppm) { return std::abs(ppm[1] - ppm[0]); }

// Answers the next message box with the button of the given text and remembers what it showed.
struct Answerer {
  QString title, text;
  QStringList buttons;
  void Press(const QString& button) {
    QTimer::singleShot(0, [this, button] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return Press(button);
      title = box->windowTitle();
      text = box->text();
      buttons.clear();
      for (QAbstractButton* b : box->buttons()) buttons << b->text();
      for (QAbstractButton* b : box->buttons())
        if (b->text() == button) b->click();
    });
  }
};

// Handles the next modal dialogs one after another: each step acts on its dialog and says true,
// or says false while its dialog is not up yet.
void HandleDialogs(std::vector<std::function<bool(QWidget*)>> steps, std::size_t i = 0) {
  if (i == steps.size()) return;
  QTimer::singleShot(10, [steps, i] {
    QWidget* dialog = QApplication::activeModalWidget();
    HandleDialogs(steps, dialog && steps[i](dialog) ? i + 1 : i);
  });
}

}  // namespace

class MainWindowTest : public QObject {
  Q_OBJECT

 private slots:
  // The cyclosporin HSQC as the vendor processed it: phase-sensitive, both signs contoured.
  void BrukerHsqcAsAPersonUsesIt() {
    test::TempFolder folders;
    gui::MainWindow w(FoldersIn(folders), "");
    w.resize(1200, 900);
    w.show();
    QVERIFY(QTest::qWaitForWindowActive(&w));
    const std::string path = test::CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr").string();
    QVERIFY(OpenAndWait(w, path));
    QCOMPARE(w.windowTitle(), QString::fromStdString(path + " NMR 2D "));

    const model::Spectrum2D& s = w.Document().spectrum;
    const display::DisplayState& v = w.Document().view;
    const auto [f2lo, f2hi] = Range(s.ppmF2, s.axis[model::F2].Point);
    const auto [f1lo, f1hi] = Range(s.ppmF1, s.axis[model::F1].Point);
    // F2 high ppm at the left, F1 high ppm at the bottom; the whole spectrum is shown.
    QCOMPARE(v.ViewF2Start, f2hi);
    QCOMPARE(v.ViewF2End, f2lo);
    QCOMPARE(v.ViewF1Start, f1lo);
    QCOMPARE(v.ViewF1End, f1hi);
    QVERIFY(f2hi > 8 && f2lo < 1 && f1hi > 100);  // a 1H-13C correlation

    // The level bar: sixteen stages, half of them negative, the limits at 100 % and 10 %.
    QCOMPARE(w.Document().contour.Steps, 16);
    QCOMPARE(w.Picture().Levels().DrawCount, 16);
    QCOMPARE(w.Picture().Levels().DrawSign[15], -1);
    QCOMPARE(w.UpperText(), QString("100.0"));
    QCOMPARE(w.LowerText(), QString("10.0"));

    // Level down lowers the base level by 1.1, level up raises it again; the highest stays.
    const float upper = s.UpperLimit, lower = s.LowerLimit;
    QTest::keyClick(&w, Qt::Key_PageDown);
    QVERIFY(WaitTraced(w));
    QVERIFY(qFuzzyCompare(s.LowerLimit, lower / 1.1f));
    QCOMPARE(s.UpperLimit, upper);
    QCOMPARE(w.LowerText(), QString("9.09091"));
    QVERIFY(qFuzzyCompare(w.Picture().Levels().Level[14], s.LowerLimit));
    QVERIFY(qFuzzyCompare(w.Picture().Levels().Level[17], -s.LowerLimit));
    QTest::keyClick(&w, Qt::Key_PageUp);
    QVERIFY(WaitTraced(w));
    QCOMPARE(w.LowerText(), QString("10.0"));

    // "Change Contour": a preview of 8 stages draws 8 levels, "Cancel" brings the 16 back.
    QTimer::singleShot(0, [&w] {
      QWidget* dialog = QApplication::activeModalWidget();
      QVERIFY(dialog && dialog->windowTitle() == "Change Contour");
      auto* steps = dialog->findChildren<QComboBox*>().front();
      steps->setCurrentIndex(steps->findData(8));
      for (QAbstractButton* b : dialog->findChildren<QAbstractButton*>())
        if (b->text() == "Preview") b->click();
      QVERIFY(WaitTraced(w));
      QCOMPARE(w.Picture().Levels().DrawCount, 8);
      qobject_cast<QDialog*>(dialog)->reject();
    });
    w.ChangeContour();
    QVERIFY(WaitTraced(w));
    QCOMPARE(w.Document().contour.Steps, 16);
    QCOMPARE(w.Picture().Levels().DrawCount, 16);
    w.activateWindow();  // the offscreen platform has no window manager to do it after a dialog
    QVERIFY(QTest::qWaitForWindowActive(&w));

    // A rubber band from one ppm pair to another shows that window, to the data point.
    gui::SpectrumView& view = w.Picture();
    const QPointF from = view.PositionOf(2.5, 15.0), to = view.PositionOf(1.0, 45.0);
    QTest::mousePress(&view, Qt::LeftButton, {}, from.toPoint());
    QTest::mouseMove(&view, ((from + to) / 2).toPoint());
    QTest::mouseMove(&view, to.toPoint());
    QTest::mouseRelease(&view, Qt::LeftButton, {}, to.toPoint());
    QVERIFY(WaitTraced(w));
    const float stepF2 = PointStep(s.ppmF2) * 1.01f, stepF1 = PointStep(s.ppmF1) * 1.01f;
    QVERIFY2(std::abs(v.ViewF2Start - 2.5f) <= stepF2, std::to_string(v.ViewF2Start).c_str());
    QVERIFY2(std::abs(v.ViewF2End - 1.0f) <= stepF2, std::to_string(v.ViewF2End).c_str());
    QVERIFY2(std::abs(v.ViewF1Start - 15.0f) <= stepF1, std::to_string(v.ViewF1Start).c_str());
    QVERIFY2(std::abs(v.ViewF1End - 45.0f) <= stepF1, std::to_string(v.ViewF1End).c_str());
    for (float end : {v.ViewF2Start, v.ViewF2End})
      QVERIFY(std::find(s.ppmF2.begin(), s.ppmF2.end(), end) != s.ppmF2.end());

    // A slice cursor on a point: the F2 panel shows the row, the F1 panel the column under it,
    // and the status bar reads the value there.
    w.SetSubMode(display::kSlice);
    const QPoint at = view.PositionOf(1.8, 30.0).toPoint();
    QTest::mouseClick(&view, Qt::LeftButton, {}, at);
    const int row = v.SliceF1, col = v.SliceF2;
    QVERIFY(row >= 0 && col >= 0);
    QVERIFY(std::abs(s.ppmF1[row] - 30.0f) <= stepF1 * 2 && std::abs(s.ppmF2[col] - 1.8f) <= stepF2 * 2);
    QVERIFY(view.CaptionF2().startsWith("Slice(F2) at ") && view.CaptionF1().startsWith("Slice(F1) at "));
    QCOMPARE(view.CaptionF2().mid(13).toDouble(), std::round(s.ppmF1[row] * 1000.0) / 1000.0);
    QVERIFY(w.CursorText().contains(QString::number(s.RR.at(col, row), 'g', 4)));

    // Full view and zoom out come back to the whole spectrum.
    QTest::keyClick(&w, Qt::Key_Home);
    QVERIFY(WaitTraced(w));
    QCOMPARE(v.ViewF2Start, f2hi);
    QCOMPARE(v.ViewF1End, f1hi);

    // "Change Display Area" with "Exchange" on F2 turns the picture round, not the data.
    const std::vector<float> ppmBefore = s.ppmF2;
    const float valueBefore = s.RR.at(100, 200);
    QTimer::singleShot(0, [] {
      QWidget* dialog = QApplication::activeModalWidget();
      QVERIFY(dialog && dialog->windowTitle() == "Change Display Area");
      dialog->findChild<QPushButton*>("exchangeF2")->click();
      qobject_cast<QDialog*>(dialog)->accept();
    });
    w.ChangeDisplayArea();
    QVERIFY(WaitTraced(w));
    // The dialog shows four decimals of a ppm.
    QVERIFY(std::abs(v.ViewF2Start - f2lo) < 1e-4f && std::abs(v.ViewF2End - f2hi) < 1e-4f);
    QVERIFY(std::abs(v.ViewF1Start - f1lo) < 1e-4f && std::abs(v.ViewF1End - f1hi) < 1e-4f);
    QVERIFY(s.ppmF2 == ppmBefore && s.RR.at(100, 200) == valueBefore);
    const QPointF low = view.PositionOf(1.0, 50.0), high = view.PositionOf(8.0, 50.0);
    QVERIFY(low.x() < high.x());

    // "Set up Grid" lays yellow lines over the contour; "UnDo(Change Grid)" with Ctrl+Z takes
    // them away again, and the entry is disabled with nothing left to undo.
    QAction* undo = w.UndoAction();
    QVERIFY(!undo->isEnabled());
    QCOMPARE(undo->text(), QString("UnDo"));
    const auto yellow = [&view] {
      const display::Rect& c = view.Layout().contour;
      int n = 0;
      for (int y = c.y; y < c.bottom(); ++y)
        for (int x = c.x; x < c.right(); ++x) n += view.Frame().pixel(x, y) == qRgb(255, 255, 0);
      return n;
    };
    QCOMPARE(yellow(), 0);
    QTimer::singleShot(0, [] {
      QWidget* dialog = QApplication::activeModalWidget();
      QVERIFY(dialog && dialog->windowTitle() == "Set up Grid");
      dialog->findChild<QAbstractButton*>("drawGrid")->click();
      qobject_cast<QDialog*>(dialog)->accept();
    });
    w.SetUpGrid();
    QVERIFY(w.Document().grid.shown);
    QVERIFY(yellow() > view.Layout().contour.width);  // at least one line across
    QCOMPARE(undo->text(), QString("UnDo(Change Grid)"));
    QVERIFY(undo->isEnabled());
    w.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&w));
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!w.Document().grid.shown);
    QCOMPARE(yellow(), 0);
    QCOMPARE(undo->text(), QString("UnDo"));
    QVERIFY(!undo->isEnabled());
    QVERIFY(!document::Modified(w.Document()));

    // Save offers all four planes or the real plane only, with their sizes; "Save Real only"
    // after its confirmation writes RR alone, value for value.
    const std::filesystem::path saved = folders / "hsqc-real.vlk2";
    QStringList options;
    QString confirmation;
    HandleDialogs({[&](QWidget* d) {
                     auto* files = qobject_cast<QFileDialog*>(d);
                     if (!files) return false;
                     files->selectFile(QString::fromStdString(saved.string()));
                     static_cast<QDialog*>(files)->accept();
                     return true;
                   },
                   [&](QWidget* d) {
                     auto* choice = qobject_cast<QInputDialog*>(d);
                     if (!choice || choice->windowTitle() != "Cut down of Saved Data Size") return false;
                     options = choice->comboBoxItems();
                     choice->setTextValue(options.value(1));
                     choice->accept();
                     return true;
                   },
                   [&](QWidget* d) {
                     auto* box = qobject_cast<QMessageBox*>(d);
                     if (!box || box->windowTitle() != "Confirming!") return false;
                     confirmation = box->text();
                     for (QAbstractButton* b : box->buttons())
                       if (b->text() == "OK") b->click();
                     return true;
                   }});
    QTest::keyClick(&w, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(options.size(), 2);
    QVERIFY(options[0].startsWith("Save All Data(incl.Image)(ca ") && options[0].endsWith(" Mbyte)"));
    QVERIFY(options[1].startsWith("Save Real only(ca "));
    QCOMPARE(confirmation, QString("Phase of saved Data can not be corrected. OK?"));
    platform::qt::QtPrompt quiet(nullptr);
    const document::ReadResult back = document::ReadDataSet(saved, quiet);
    QVERIFY(back.outcome.ok());
    QCOMPARE(back.document->words.realOnly, 1);
    for (int r : {0, 100, s.axis[model::F1].Point - 1})
      QCOMPARE(back.document->spectrum.RR.at(200, r), s.RR.at(200, r));
    QVERIFY(!document::Modified(w.Document()));

    // Close asks about the data; Cancel keeps the window, "Do not Save" ends it.
    Answerer answer;
    answer.Press("Cancel");
    QVERIFY(!w.close());
    QCOMPARE(answer.title, QString("Exit 2D NMR"));
    QCOMPARE(answer.text, QString("Data has been Changed."));
    QCOMPARE(answer.buttons, (QStringList{"Do not Save", "Save", "Cancel"}));
    QVERIFY(w.isVisible());
    answer.Press("Do not Save");
    QVERIFY(w.close());
    QVERIFY(w.Ended());
  }

  // A JCAMP-DX 2D spectrum, a JEOL HSQC and the example's raw COSY (both through the FT window)
  // open the same way, and the next run remembers them.
  void OtherFormatsOpen() {
    test::TempFolder folders;
    gui::MainWindow w(FoldersIn(folders), "");
    w.resize(900, 700);
    w.show();
    const std::string jcamp = test::CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_JDX.jdx").string();
    QVERIFY(OpenAndWait(w, jcamp));
    QCOMPARE(w.windowTitle(), QString::fromStdString(jcamp + " NMR 2D "));
    QVERIFY(w.Document().view.ViewF2Start > w.Document().view.ViewF2End);
    QVERIFY(w.Picture().Levels().DrawCount >= 8);

    // "Quit FFT" while the example's raw COSY is transformed: the FT window stays on the FID, and
    // "Exit without FFT" brings the JCAMP-DX spectrum back.
    const std::string cosy = std::string(VELK_SOURCE_DIR) + "/examples/cosy/ser";
    const float f1High = w.Document().view.ViewF1End;
    gui::FtDialog* ft = test::OpenFid(w, cosy);
    QVERIFY(ft);
    const std::vector<float> fid = ft->State().preview().fidRe;
    ft->Execute();
    ft->findChild<QPushButton*>("Quit FFT")->click();
    QVERIFY(QTest::qWaitFor([&] { return !ft->Running(); }, 60000));
    QVERIFY(w.FtWindow() == ft && ft->isVisible());
    QCOMPARE(ft->State().preview().fidRe, fid);  // the FID came back from the work file
    Answerer leave;
    leave.Press("OK");
    ft->close();
    QCOMPARE(leave.title, QString("FT end"));
    QCOMPARE(leave.text, QString("Exit without FFT"));
    QVERIFY(QTest::qWaitFor([&] { return !w.Opening(); }, 5000));
    QCOMPARE(w.windowTitle(), QString::fromStdString(jcamp + " NMR 2D "));
    QCOMPARE(w.Document().view.ViewF1End, f1High);

    // JEOL's 2D data in the corpus are raw: the HSQC goes through the FT window, 13C along F1.
    const std::string jeol = test::CorpusPath("jeol/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_Jeol.jdf").string();
    ft = test::OpenFid(w, jeol);
    QVERIFY(ft && test::TransformAndWait(w, *ft));
    QCOMPARE(w.windowTitle(), QString::fromStdString(jeol + " NMR 2D "));
    QVERIFY(w.Picture().AxisCaptionF1().find("13C") != std::string::npos);

    // The transformed HSQC is not saved: "Read Data" asks first, from its worker thread, and the
    // question comes up on the interface thread.
    Answerer first;
    first.Press("Do not Save");
    ft = test::OpenFid(w, cosy);
    QVERIFY(ft && test::TransformAndWait(w, *ft));
    QCOMPARE(first.title, QString("Caution!"));
    QCOMPARE(first.text, QString("Data has been Changed"));
    QCOMPARE(w.windowTitle(), QString::fromStdString(cosy + " NMR 2D "));
    const model::Spectrum2D& s = w.Document().spectrum;
    const auto [f2lo, f2hi] = Range(s.ppmF2, s.axis[model::F2].Point);
    QVERIFY(f2hi > 8 && f2lo < 1);  // a proton axis
    QVERIFY(document::Modified(w.Session().document));  // a fresh transform is not saved yet
    QCOMPARE(w.Session().settings2D.lists.at("RECENT FILE").front(), cosy);

    // What the window was like comes back with the next run: its size and the recent files.
    w.resize(1000, 640);
    Answerer answer;
    answer.Press("Do not Save");
    QVERIFY(w.close());
    gui::MainWindow next(FoldersIn(folders), "");
    QCOMPARE(next.size(), QSize(1000, 640));
    const std::vector<std::string>& recent = next.Session().settings2D.lists.at("RECENT FILE");
    QCOMPARE(recent, (std::vector<std::string>{cosy, jeol, jcamp}));
  }

  // A Bruker experiment folder dropped on the window opens its processed spectrum; after "Close
  // (Discard Present Data)" the recent files bring it back.
  void DroppedFolderAndRecentFiles() {
    test::TempFolder folders;
    gui::MainWindow w(FoldersIn(folders), "");
    w.resize(900, 700);
    w.show();
    const std::filesystem::path experiment = test::CorpusPath("bruker/cyclosporin_hsqc/3");
    const QString spectrum = QString::fromStdString((experiment / "pdata/1/2rr").string());
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(experiment.string()))});
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(&w, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(&w, &drop);
    QVERIFY(QTest::qWaitFor([&] { return !w.Opening() && w.Picture().Shown(); }, 60000));
    QCOMPARE(w.windowTitle(), spectrum + " NMR 2D ");

    const auto action = [&w](const QString& text) {
      for (QAction* a : w.findChildren<QAction*>())
        if (a->text() == text) return a;
      return static_cast<QAction*>(nullptr);
    };
    action("Close (Discard Present Data)")->trigger();
    QCOMPARE(w.windowTitle(), QString("NMR 2D"));
    QVERIFY(!w.Picture().Shown() && !w.UndoAction()->isEnabled());
    QAction* recent = action(spectrum);
    QVERIFY(recent);
    recent->trigger();
    QVERIFY(QTest::qWaitFor([&] { return !w.Opening() && w.Picture().Shown(); }, 60000));
    QCOMPARE(w.windowTitle(), spectrum + " NMR 2D ");
  }

  // The example's raw COSY in the FT window: rows stepped, a phase held on its step label (the
  // repeats timed by a fake clock), the F1 view, the transform, and the spectrum in the main window.
  void FtWindowAsAPersonUsesIt() {
    test::TempFolder folders;
    gui::MainWindow w(FoldersIn(folders), "");
    w.resize(900, 700);
    w.show();
    gui::FtDialog* ft = test::OpenFid(w, std::string(VELK_SOURCE_DIR) + "/examples/cosy/ser");
    QVERIFY(ft);
    QCOMPARE(ft->windowTitle(), QString("FT-Phase"));
    document::FtWindow& state = ft->State();
    QCOMPARE(state.row(), 0);
    auto* up = ft->findChild<QLabel*>("Row up");
    QTest::mouseClick(up, Qt::LeftButton);
    QTest::mouseClick(up, Qt::LeftButton);
    QCOMPARE(state.row(), 2);
    QCOMPARE(state.preview().fidRe[7], w.Session().document.spectrum.RR.at(7, 2));

    // A held "+10" of "Phase-0" on a fake clock: once at once, again at 500 ms, then every 50 ms.
    std::int64_t now = 0;
    gui::StepLabel step("+10", [&now] { return now; });
    int steps = 0;
    QObject::connect(&step, &gui::StepLabel::stepped, [&steps](int n) { steps += n; });
    QTest::mousePress(&step, Qt::LeftButton);
    now = 499, step.Tick();
    QCOMPARE(steps, 1);
    now = 500, step.Tick();
    QCOMPARE(steps, 2);
    now = 650, step.Tick();
    QCOMPARE(steps, 5);
    QTest::mouseRelease(&step, Qt::LeftButton);
    now = 2000, step.Tick();
    QCOMPARE(steps, 5);

    // The window's own label: 36 steps of +10 go once round phase 0, through -180.
    auto* plus10 = ft->findChild<QLabel*>("Phase-0 +10");
    QVERIFY(plus10);
    for (int i = 0; i < 18; ++i) QTest::mouseClick(plus10, Qt::LeftButton);
    QCOMPARE(state.Phase0(), -180.0);
    for (int i = 0; i < 18; ++i) QTest::mouseClick(plus10, Qt::LeftButton);
    QCOMPARE(state.Phase0(), 0.0);
    QTest::mouseClick(plus10, Qt::LeftButton);
    auto* field = ft->findChild<QLineEdit*>("0-Order Phase Correction(degree)");
    QCOMPARE(field->text(), QString("10.0"));
    QCOMPARE(ft->findChild<QScrollBar*>("Phase-0")->value(), 100);

    // The window editor: steps held on a fake clock, a typed corner, a type change; "Cancel" puts
    // back the curve and the trace exactly.
    {  // the editor goes before its parent, the FT window, does
      const std::vector<float> curve = state.preview().window.values, trace = state.preview().shownRe;
      std::int64_t t = 0;
      gui::WindowDialog editor(state, {}, ft, [&t] { return t; });
      QVERIFY(editor.windowTitle().startsWith("Set Window Function("));
      QVERIFY(editor.windowTitle().endsWith(") (2D RW)"));
      auto* startUp = editor.findChild<gui::StepLabel*>("Region of Function(%): start up");
      QTest::mousePress(startUp, Qt::LeftButton);
      t = 600, startUp->Tick();  // 1 + 1 + 2 steps
      QTest::mouseRelease(startUp, Qt::LeftButton);
      QCOMPARE(editor.findChild<QLineEdit*>("Region of Function(%): start")->text(),
               QString::number(state.settings().axis[model::F2].window.WS[state.settings().axis[model::F2].window.type - 1]));
      editor.Type(processing::WindowField::T3, "1");  // within 10 of T2: T2 + 10
      QCOMPARE(state.settings().axis[model::F2].window.T[2], state.settings().axis[model::F2].window.T[1] + 10);
      QVERIFY(state.preview().window.values != curve);
      editor.findChild<QComboBox*>("type")->setCurrentIndex(processing::kExponential);
      editor.findChild<QPushButton*>("Cancel")->click();
      QCOMPARE(state.preview().window.values, curve);
      QCOMPARE(state.preview().shownRe, trace);
    }

    ft->findChild<QPushButton*>("F1")->click();
    QCOMPARE(state.view(), model::F1);
    QCOMPARE(int(state.preview().fidRe.size()), state.Rows());
    QVERIFY(test::TransformAndWait(w, *ft));
    QVERIFY(w.FtWindow() == nullptr);
    QVERIFY(w.Picture().Shown());
    QVERIFY(w.Picture().Levels().DrawCount >= 1);
  }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
