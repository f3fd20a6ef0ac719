// The spectrum tools driven as a person uses them, on the offscreen platform: phase the corpus
// HSQC with the step labels and undo it, correct its baseline with points clicked on the contour,
// symmetrize the COSY, set a reference by clicking and one of a trace beside the contour; each
// checked on the data and on what the window shows (panel, marks, the Undo entry's caption).
#include <QDir>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QComboBox>
#include <QDialog>
#include <QtTest>
#include <cmath>

#include "gui/main_window.h"
#include "gui/step_label.h"
#include "operations/baseline_tool.h"
#include "operations/phase_tool.h"
#include "operations/symmetrize.h"
#include "support/corpus.h"
#include "support/temp_folder.h"

using namespace velk;
using model::F1;
using model::F2;

namespace {

// The window on its own folders with the file open and traced.
struct Window {
  test::TempFolder folders;
  gui::MainWindow w{{folders / "data", folders / "config", folders / "log", folders / "work", folders / "program"},
                    ""};
  explicit Window(const std::string& set) {
    w.resize(1200, 900);
    w.show();
    w.OpenFile(test::CorpusPath(set).string());
    Traced(60000);
  }
  bool Traced(int timeout = 20000) {
    return QTest::qWaitFor(
        [&] { return !w.Opening() && !w.Picture().Tracing() && !w.Document().view.ContourDirty; }, timeout);
  }
  QAction* Entry(const QString& text) {
    for (QAction* menu : w.menuBar()->actions())
      if (menu->menu())
        for (QAction* a : menu->menu()->actions())
          if (a->text() == text || (a->text().startsWith("UnDo") && text == "UnDo")) return a;
    return nullptr;
  }
  void Run(const QString& text) {
    QAction* a = Entry(text);
    QVERIFY2(a, qPrintable(text));
    a->trigger();
    QVERIFY(Traced());  // the panel took room from the picture, which is drawn anew
  }
  QString UndoCaption() { return w.UndoAction()->text(); }
  template <class T = QPushButton>
  T* Button(const char* name) {
    QWidget* panel = w.Operations().Panel();
    return panel ? panel->findChild<T*>(name) : nullptr;
  }
  void Click(const char* name) {
    QPushButton* b = Button(name);
    QVERIFY2(b && b->isEnabled(), name);
    b->click();
    QVERIFY(Traced());
  }
  model::Spectrum2D& Data() { return const_cast<model::Spectrum2D&>(w.Document().spectrum); }
};

// Answers the next message box with a button and keeps its text.
std::shared_ptr<QString> AnswerNext(const QString& button) {
  auto text = std::make_shared<QString>();
  QTimer::singleShot(0, [text, button] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    *text = box->text();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == button) b->click();
  });
  return text;
}

// Picks an instrument in the next instrument form and presses OK.
void ChooseInstrumentNext(const QString& instrument) {
  QTimer::singleShot(0, [instrument] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    auto* box = dialog->findChild<QComboBox*>("Instrument");
    box->setCurrentIndex(box->findText(instrument));
    dialog->accept();
  });
}

}  // namespace

class OperationToolsTest : public QObject {
  Q_OBJECT

 private slots:
  void PhaseStepPreviewFixAndUndo() {
    Window t("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
    model::Spectrum2D& s = t.Data();
    const std::vector<float> rr = s.RR.data, ir = s.IR.data;
    t.Run("F2 Phase Corr.");
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kPhaseF2));
    QVERIFY(t.w.findChild<QDockWidget*>("toolPanel")->isVisible());
    QVERIFY(!t.Button("Fix")->isEnabled());  // nothing to fix before a preview
    auto& tool = static_cast<operations::PhaseTool&>(*t.w.Operations().Active());
    const std::vector<float> traceBefore = tool.TraceReal();
    // "Auto" on the vendor's phased spectrum proposes almost nothing, and only proposes it.
    t.Click("Auto");
    QVERIFY2(std::abs(tool.Values().Phase0) < 15 && std::abs(tool.Values().Phase1) < 30,
             qPrintable(QString("%1 %2").arg(tool.Values().Phase0).arg(tool.Values().Phase1)));
    QVERIFY(s.RR.data == rr);
    t.Click("Zero");

    // "+10" on the zero order held past its first repeat: 10 on the press, 10 more after 500 ms.
    auto* plus10 = t.w.Operations().Panel()->findChild<gui::StepLabel*>("step0_13");
    QTest::mousePress(plus10, Qt::LeftButton);
    QTest::qWait(620);
    QTest::mouseRelease(plus10, Qt::LeftButton);
    const float phase0 = tool.Values().Phase0;
    QVERIFY2(phase0 >= 20.0f && std::fmod(phase0, 10.0f) == 0.0f, std::to_string(phase0).c_str());
    QCOMPARE(t.Button<QLineEdit>("phase0Text")->text(), QString::number(phase0, 'f', 1));
    QVERIFY(tool.TraceReal() != traceBefore);
    QVERIFY(s.RR.data == rr);  // only the trace turned
    QVERIFY(tool.PreviewPending());
    // Typed: 30 degrees exactly.
    t.Button<QLineEdit>("phase0Text")->setText("30");
    QMetaObject::invokeMethod(t.Button<QLineEdit>("phase0Text"), "editingFinished");
    QCOMPARE(tool.Values().Phase0, 30.0f);

    t.Click("Preview");
    QVERIFY(t.Button("Fix")->isEnabled());
    const double a = 30 * 0.0174532925199433;
    const std::size_t at = 200 * s.RR.stride + 300;
    QVERIFY(std::abs(s.RR.data[at] - (rr[at] * std::cos(a) - ir[at] * std::sin(a))) <= 1e-5 * std::abs(rr[at]) + 1e-3);
    t.Click("Fix");
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kNoTool));
    QVERIFY(!t.w.findChild<QDockWidget*>("toolPanel")->isVisible());
    QCOMPARE(t.UndoCaption(), QString("UnDo(F2 Phase Correction)"));
    int undoEntries = 0;  // the window's one entry, which takes back the tools' records too
    for (QAction* menu : t.w.menuBar()->actions())
      if (menu->menu())
        for (QAction* e : menu->menu()->actions()) undoEntries += e->text().startsWith("UnDo");
    QCOMPARE(undoEntries, 1);
    // The snapshot and the undo file lie in the run's work folder.
    QStringList kept = QDir(QString::fromStdString((t.folders / "work").string())).entryList(QDir::Files);
    QVERIFY2(kept.filter("Temp2Ddata.").size() == 1 && kept.filter("UnDo2Ddata.").size() == 1, qPrintable(kept.join(' ')));
    const std::vector<float> phased = s.RR.data;

    // An open panel with values not yet previewed is simply cancelled by the next command.
    t.Run("F1 Phase Corr.");
    QTest::mouseClick(t.w.Operations().Panel()->findChild<gui::StepLabel*>("step1_0"), Qt::LeftButton);
    t.Run("F2 BaseLine Cor.");
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kBaselineF2));
    QVERIFY(s.RR.data == phased);
    t.Click("Cancel");

    t.Run("UnDo");
    QVERIFY(t.Traced());
    QVERIFY(s.RR.data == rr && s.IR.data == ir);
    QCOMPARE(t.UndoCaption(), QString("UnDo"));
    QVERIFY(!t.w.UndoAction()->isEnabled());
  }

  void BaselinePointsClickedOnTheContour() {
    Window t("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
    model::Spectrum2D& s = t.Data();
    const std::vector<float> rr = s.RR.data, ir = s.IR.data;
    t.Run("F2 BaseLine Cor.");
    auto& tool = static_cast<operations::BaselineTool&>(*t.w.Operations().Active());
    QVERIFY(t.Button("Add Point")->isChecked());
    gui::SpectrumView& view = t.w.Picture();
    for (double f2 : {9.5, 5.6, -0.5}) QTest::mouseClick(&view, Qt::LeftButton, {}, view.PositionOf(f2, 60).toPoint());
    QCOMPARE(tool.Points().size(), std::size_t(3));
    QCOMPARE(t.UndoCaption(), QString("UnDo(Add Point)"));
    t.Run("UnDo");  // in the baseline panel it takes back the last point only
    QCOMPARE(tool.Points().size(), std::size_t(2));
    // Kept in the order of the axis: 5.6 then 9.5 ppm.
    const float f2 = s.ppmF2[tool.Points()[0].position];
    QVERIFY2(std::abs(f2 - 5.6f) < 0.02f, std::to_string(f2).c_str());

    t.Click("Preview");
    QVERIFY(s.RR.data != rr && s.IR.data == ir);  // RR only
    t.Click("Fix");
    QCOMPARE(t.UndoCaption(), QString("UnDo(F2 Base Line Correction)"));
    QCOMPARE(s.Modified, std::int16_t(1));
    // After a baseline correction the phase commands warn, and "No" stops them.
    const auto said = AnswerNext("No");
    t.Run("F1 Phase Corr.");
    QVERIFY(said->startsWith("Since BaseLine Correction or Symmetrization has been executed,"));
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kNoTool));
    t.Run("UnDo");
    QVERIFY(t.Traced());
    QVERIFY(s.RR.data == rr);
    QCOMPARE(s.Modified, std::int16_t(0));
  }

  void SymmetrizeTheCosy() {
    Window t("bruker/cyclosporin_cosy/1/pdata/1/2rr");
    model::Spectrum2D& s = t.Data();
    const std::vector<float> rr = s.RR.data;
    t.Run("F2 Phase Corr.");  // nothing to phase in a magnitude COSY
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kNoTool));
    t.Run("Symmetrize");
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kSymmetrization));
    QVERIFY(t.w.Operations().Panel()->findChild<QLabel*>()->text().startsWith("Make Line on the center"));
    t.Button<QToolButton>("shiftRight")->click();
    t.Button<QToolButton>("shiftRight")->click();
    QVERIFY(t.Button<QLabel>("symShift")->text().contains("0.50"));
    // The line is taken by its middle handle only: a drag from far off leaves it where it is.
    gui::SpectrumView& view = t.w.Picture();
    const display::DisplayState& v = t.w.Document().view;
    const double f2 = (v.ViewF2Start + v.ViewF2End) / 2;
    const QPoint middle = view.PositionOf(f2, f2 + operations::DiagonalOffset(s, 0)).toPoint();
    const auto drag = [&](QPoint from) {
      QTest::mousePress(&view, Qt::LeftButton, {}, from);
      QTest::mouseMove(&view, from + QPoint(12, 0));
      QTest::mouseRelease(&view, Qt::LeftButton, {}, from + QPoint(12, 0));
      return t.Button<QLabel>("symShift")->text();
    };
    const QString shifted = t.Button<QLabel>("symShift")->text();
    QCOMPARE(drag(middle + QPoint(0, 80)), shifted);
    QVERIFY(drag(middle) != shifted);
    t.Click("Preview");
    // Each value became the smaller of itself and its mirror: nothing grew, much shrank.
    std::size_t lowered = 0;
    for (std::size_t i = 0; i < rr.size(); ++i) {
      QVERIFY(s.RR.data[i] <= std::max(rr[i], 0.0f));
      lowered += s.RR.data[i] < rr[i];
    }
    QVERIFY2(lowered > rr.size() / 10, qPrintable(QString("%1 of %2, class %3").arg(lowered).arg(rr.size()).arg(t.w.Document().words.pulseModeClass)));
    t.Click("Fix Symmetrization, and Exit");
    QCOMPARE(t.UndoCaption(), QString("UnDo(Symmetrize)"));
    t.Run("UnDo");
    QVERIFY(t.Traced());
    QVERIFY(s.RR.data == rr);
  }

  // Every press is a step of its own: two clicks on the contour and an arrow held through its
  // repeats give three records, and three UnDos walk back through them.
  void ReferenceByClickingStepsBackPressByPress() {
    Window t("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
    model::Spectrum2D& s = t.Data();
    std::vector<std::vector<float>> steps{s.ppmF2};
    t.Run("Reference Setting");
    gui::SpectrumView& view = t.w.Picture();
    const QPoint first = view.PositionOf(1.0, 20.0).toPoint();
    QTest::mouseClick(&view, Qt::LeftButton, {}, first);
    const int col = s.axis[F2].RefPoint;
    QVERIFY(std::abs(steps[0][col] - 1.0f) < 0.02f);
    const double x = view.PositionOf(s.ppmF2[col], 20).x();
    t.Button<QLineEdit>("RefText2")->setText("1.5");
    QMetaObject::invokeMethod(t.Button<QLineEdit>("RefText2"), "editingFinished");
    QCOMPARE(s.ppmF2[col], 1.5f);
    // The scale moved, not the data: the same point lies at the same place on the screen.
    QVERIFY(std::abs(view.PositionOf(s.ppmF2[col], 20).x() - x) < 0.5);
    steps.push_back(s.ppmF2);  // the typed shift goes back with the next press
    QVERIFY(t.Traced());
    QTest::mouseClick(&view, Qt::LeftButton, {}, first + QPoint(-60, 40));  // the same data lie there still
    const int second = s.axis[F2].RefPoint;
    QVERIFY(second != col);
    steps.push_back(s.ppmF2);
    auto* left = t.Button<QToolButton>("RefCommandLeft");
    QTest::mousePress(left, Qt::LeftButton);
    QTest::qWait(620);  // the first repeat after 500 ms, then every 50 ms
    QTest::mouseRelease(left, Qt::LeftButton);
    QVERIFY2(s.axis[F2].RefPoint >= second + 2, std::to_string(s.axis[F2].RefPoint - second).c_str());
    t.Click("Fix");
    QCOMPARE(t.w.Document().undo.records.size(), std::size_t(3));
    for (int i = 2; i >= 0; --i) {
      QCOMPARE(t.UndoCaption(), QString("UnDo(2D Refernec Setting)"));
      t.Run("UnDo");
      QCOMPARE(s.ppmF2, steps[i]);
    }
    QCOMPARE(t.UndoCaption(), QString("UnDo"));
  }

  void ReferenceByInstrument() {
    Window t("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
    model::Spectrum2D& s = t.Data();
    const std::vector<float> f2Before = s.ppmF2, f1Before = s.ppmF1;
    const double zeroF2 = s.extras[F2].absFreq0ppm, zeroF1 = s.extras[F1].absFreq0ppm;
    // 0 ppm of each nucleus set so that the carrier reads 1 ppm (F2) and 50 ppm (F1).
    auto& table = const_cast<model::InstrumentFrequencyTable&>(t.w.Operations().Instruments());
    const double carrierF2 = s.extras[F2].absFreqCenter, carrierF1 = s.extras[F1].absFreqCenter;
    table.push_back({{"test 1H", model::FormatFrequency(carrierF2 / (1 + 1e-6)), "", "", ""}});
    table.push_back({{"test 13C", model::FormatFrequency(carrierF1 / (1 + 50e-6)), "", "", ""}});
    t.Run("Reference Setting");
    ChooseInstrumentNext("test 13C");
    QTimer::singleShot(50, [] { ChooseInstrumentNext("test 1H"); });
    t.Click("ByInstrument");
    QVERIFY(t.Traced());
    QVERIFY(std::abs(s.ppmF2[operations::CentrePoint(s.axis[F2].Point)] - 1.0f) < 1e-3f);
    QVERIFY(std::abs(s.ppmF1[operations::CentrePoint(s.axis[F1].Point)] - 50.0f) < 1e-2f);
    t.Click("Fix");
    QCOMPARE(t.UndoCaption(), QString("UnDo(2D Refernec Setting)"));
    t.Run("UnDo");
    QCOMPARE(s.ppmF2, f2Before);
    QCOMPARE(s.ppmF1, f1Before);
    QCOMPARE(s.extras[F2].absFreq0ppm, zeroF2);
    QCOMPARE(s.extras[F1].absFreq0ppm, zeroF1);
  }

  // The cyclosporin 1H spectrum beside the HSQC as its F2 trace: a click on the trace's panel
  // picks a point, the typed shift is what it reads, the resolver asks in the program's words,
  // and UnDo brings the trace's scale back; the 2D scale is never touched.
  void TraceReferenceOnTheF2Panel() {
    Window t("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
    t.w.ReadTrace(F2, test::CorpusPath("bruker/cyclosporin_1h/1/pdata/1/1r").string());
    QVERIFY(t.Traced());
    const model::Spectrum1D& trace = t.w.Document().companionF2;
    QVERIFY(trace.params.POINT > 1000);
    const model::Spectrum1D before = trace;
    const std::vector<float> f2 = t.Data().ppmF2;
    t.Run("F2 1D Reference");
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kReference1DF2));
    gui::SpectrumView& view = t.w.Picture();
    const display::Rect& panel = view.Layout().traceF2;
    const auto clickAt = [&](double ppm) {
      const QPoint at(static_cast<int>(view.PositionOf(ppm, 0).x()),
                      static_cast<int>((panel.y + panel.height / 2) / view.Ratio()));
      QTest::mouseClick(&view, Qt::LeftButton, {}, at);
    };
    clickAt(5.0);
    const int picked = trace.params.SMTMS;
    // Within a pixel of the click.
    QVERIFY2(std::abs(before.axisPpm[picked] - 5.0) < 0.02, std::to_string(before.axisPpm[picked]).c_str());
    t.Button<QLineEdit>("RefText1D")->setText("4.25");
    QMetaObject::invokeMethod(t.Button<QLineEdit>("RefText1D"), "editingFinished");
    QCOMPARE(trace.params.SMEXR, 4.25f);
    QVERIFY(std::abs(trace.axisPpm[picked] - 4.25) < 1e-6);
    t.Click("Fix");
    QCOMPARE(t.UndoCaption(), QString("UnDo(F2-1D Refernec Setting)"));
    const model::Spectrum1D fixed = trace;
    // Open again and pick elsewhere: another command asks first, and "No" puts the fixed scale back.
    t.Run("F2 1D Reference");
    clickAt(2.0);
    QVERIFY(trace.params.SMTMS != picked);
    const auto said = AnswerNext("No");
    t.Run("Reference Setting");
    QCOMPARE(*said, QString("Execute 1D (F2) Reference Setting?"));
    QCOMPARE(t.w.Document().view.ToolMode, std::int16_t(display::kReference2D));
    QCOMPARE(trace.axisPpm, fixed.axisPpm);
    t.Click("Cancel");
    t.Run("UnDo");
    QCOMPARE(trace.params.SMEXR, before.params.SMEXR);
    QCOMPARE(trace.params.SMTMS, before.params.SMTMS);
    // The reader's table is not first plus index times step to the last bit; the record's is.
    for (std::size_t i : {std::size_t(0), std::size_t(picked), trace.axisPpm.size() - 1})
      QVERIFY(std::abs(trace.axisPpm[i] - before.axisPpm[i]) < 1e-6);
    QCOMPARE(t.Data().ppmF2, f2);
    QCOMPARE(t.UndoCaption(), QString("UnDo"));
  }
};

QTEST_MAIN(OperationToolsTest)
#include "operation_tools_test.moc"
