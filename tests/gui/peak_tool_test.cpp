// The peak tool of the main window driven as a person uses it, on the offscreen platform: open the
// cyclosporin HSQC, enter the tool, click a peak, pick the peaks of a rubber band, delete one,
// drag one, undo step by step, pick the whole and the shown area, and edit the list window.
#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>
#include <cmath>

#include "document/undo_stack.h"
#include "gui/main_window.h"
#include "gui/inadequate_menu.h"
#include "gui/peak_picking.h"
#include "gui/peak_tool.h"
#include "operations/peak_list_file.h"
#include "model/data_type.h"
#include "native/ver4_file.h"
#include "support/corpus.h"
#include "support/synthetic_inadequate.h"
#include "support/temp_folder.h"

using namespace velk;

namespace {

bool Settled(gui::MainWindow& w) {
  return QTest::qWaitFor([&] { return !w.Opening() && !w.Picture().Tracing() && !w.Document().view.ContourDirty; },
                         60000);
}

void Trigger(gui::MainWindow& w, const QString& text) {
  for (QAction* a : w.Peaks().Menu()->actions())
    if (a->text() == text) return a->trigger();
  QFAIL(qPrintable("no entry " + text));
}

// The largest |RR| of the interior in a window of points: where a person sees the strongest peak.
struct Top {
  int col = 0, row = 0;
};
Top Strongest(const model::Spectrum2D& s) {
  Top best{1, 1};
  for (int r = 1; r < s.axis[model::F1].Point - 1; ++r)
    for (int c = 1; c < s.axis[model::F2].Point - 1; ++c)
      if (std::abs(s.RR.at(c, r)) > std::abs(s.RR.at(best.col, best.row))) best = {c, r};
  return best;
}

QPoint PixelOf(gui::MainWindow& w, const model::Spectrum2D& s, double col, double row) {
  return w.Picture().PositionOf(s.extras[model::F2].ppmFirst + col * s.extras[model::F2].ppmStep,
                                s.extras[model::F1].ppmFirst + row * s.extras[model::F1].ppmStep).toPoint();
}

void Drag(QWidget* view, QPoint from, QPoint to) {
  QTest::mousePress(view, Qt::LeftButton, {}, from);
  QTest::mouseMove(view, (from + to) / 2);
  QTest::mouseMove(view, to);
  QTest::mouseRelease(view, Qt::LeftButton, {}, to);
}

// Black pixels in the 13 x 13 square around a place of the view.
int Blacks(const QImage& image, QPoint at) {
  int count = 0;
  const double ratio = image.devicePixelRatio();
  for (int dy = -6; dy <= 6; ++dy)
    for (int dx = -6; dx <= 6; ++dx) count += image.pixelColor((at + QPoint(dx, dy)) * ratio) == Qt::black;
  return count;
}

// The vendor's cyclosporin HSQC in a window of its own, shown and traced; null when it failed.
std::unique_ptr<gui::MainWindow> OpenHsqc(const test::TempFolder& folders) {
  auto w = std::make_unique<gui::MainWindow>(
      core::Folders{folders / "data", folders / "config", folders / "log", folders / "work", folders / "program"}, "");
  w->resize(1200, 900);
  w->show();
  if (!QTest::qWaitForWindowActive(w.get())) return nullptr;
  w->OpenFile(test::CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr").string());
  return Settled(*w) ? std::move(w) : nullptr;
}

// The peak edits changed the data: the close asks, and "Do not Save" ends the window.
bool CloseUnsaved(gui::MainWindow& w) {
  QTimer::singleShot(0, [] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
      for (QAbstractButton* b : box->buttons())
        if (b->text() == "Do not Save") b->click();
  });
  return w.close();
}

// The window's "UnDo" entry as Ctrl+Z finds it, the menu not opened.
std::string Caption(gui::MainWindow& w) {
  return w.UndoAction()->isEnabled() ? w.UndoAction()->text().toStdString() : std::string();
}

}  // namespace

class PeakToolTest : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<test::TempFolder> folders_;
  std::unique_ptr<gui::MainWindow> window_;

 private slots:
  void init() {
    folders_ = std::make_unique<test::TempFolder>();
    window_ = OpenHsqc(*folders_);
    QVERIFY(window_);
  }
  void cleanup() {
    if (window_) QVERIFY(CloseUnsaved(*window_));
    window_.reset();
    folders_.reset();
  }

  void PickDeleteMoveAndUndoWithTheMouse() {
    gui::MainWindow& w = *window_;
    const model::Spectrum2D& s = w.Document().spectrum;
    const auto& peaks = s.peaks.peaks;
    gui::SpectrumView& view = w.Picture();
    const QImage before = view.grab().toImage();

    // Delete and move have nothing to work on yet: refused.
    Trigger(w, "Delete Peak");
    QCOMPARE(w.Document().view.ToolMode, display::kNoTool);
    // "Add Peak": a click one point beside the strongest top finds the top itself.
    Trigger(w, "Add Peak");
    QCOMPARE(w.Document().view.ToolMode, display::kPeakPicking);
    QCOMPARE(w.Document().view.ToolCode, gui::kPeakAddByClick);
    const Top top = Strongest(s);
    QTest::mouseClick(&view, Qt::LeftButton, {}, PixelOf(w, s, top.col + 1, top.row));
    QCOMPARE(peaks.size(), std::size_t{1});
    QCOMPARE(peaks[0].PointF2, top.col);
    QCOMPARE(peaks[0].PointF1, top.row);
    QCOMPARE(peaks[0].Height, s.RR.at(top.col, top.row));
    QCOMPARE(Caption(w), std::string("UnDo(Add Peak)"));
    // Its cross is drawn over the contour, in black.
    QCOMPARE(Blacks(view.grab().toImage(), PixelOf(w, s, top.col, top.row)) - Blacks(before, PixelOf(w, s, top.col, top.row)) >= 10, true);

    // "Add Peaks in Area": a band of 40 x 40 points around it picks every extremum there, each
    // inside the band, and leaves the one already listed single.
    Trigger(w, "Add Peaks in Area");
    Drag(&view, PixelOf(w, s, top.col - 20, top.row - 20), PixelOf(w, s, top.col + 20, top.row + 20));
    QVERIFY(peaks.size() > 2);
    int atTop = 0;
    for (const model::Peak2D& p : peaks) {
      QVERIFY(std::abs(p.PointF2 - top.col) <= 21 && std::abs(p.PointF1 - top.row) <= 21);
      QVERIFY(std::abs(p.Height) > s.LowerLimit);
      atTop += p.PointF2 == top.col && p.PointF1 == top.row;
    }
    QCOMPARE(atTop, 1);
    const std::vector<model::Peak2D> picked = peaks;

    // "Delete Peak": a click next to a mark removes that one only.
    Trigger(w, "Delete Peak");
    const model::Peak2D victim = peaks.back();
    QTest::mouseClick(&view, Qt::LeftButton, {}, PixelOf(w, s, victim.PointF2 + 0.4, victim.PointF1));
    QCOMPARE(peaks.size(), picked.size() - 1);
    for (const model::Peak2D& p : peaks) QVERIFY(p.PointF2 != victim.PointF2 || p.PointF1 != victim.PointF1);
    QCOMPARE(Caption(w), std::string("UnDo(Delete Peak)"));

    // "Move Peak Top": the strongest mark dragged five points; on data points it lands there.
    Trigger(w, "Move Peak Top");
    Drag(&view, PixelOf(w, s, top.col, top.row), PixelOf(w, s, top.col + 5, top.row + 3));
    QCOMPARE(peaks[0].PointF2, top.col + 5);
    QCOMPARE(peaks[0].PointF1, top.row + 3);
    QCOMPARE(Caption(w), std::string("UnDo(Move Peak Top)"));

    // Undo, as a person presses it, goes back one edit at a time. It is the window's one entry
    // (two actions on Ctrl+Z would leave the key dead); like every command it closes the tool.
    int onKey = 0;
    for (QAction* a : w.findChildren<QAction*>()) onKey += a->shortcut() == QKeySequence::Undo;
    QCOMPARE(onKey, 1);
    const auto same = [](const std::vector<model::Peak2D>& a, const std::vector<model::Peak2D>& b) {
      return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](const auto& x, const auto& y) {
               return x.PointF2 == y.PointF2 && x.PointF1 == y.PointF1 && x.PosF2 == y.PosF2 && x.PosF1 == y.PosF1 &&
                      x.Height == y.Height;
             });
    };
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(peaks.size(), picked.size() - 1);
    QCOMPARE(peaks[0].PointF2, top.col);
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(same(peaks, picked));
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(peaks.size(), std::size_t{1});
    QCOMPARE(w.Document().view.ToolMode, display::kNoTool);

    // A band of the delete tool empties its area.
    Trigger(w, "Delete Peak");
    Drag(&view, PixelOf(w, s, top.col - 3, top.row - 3), PixelOf(w, s, top.col + 3, top.row + 3));
    QVERIFY(peaks.empty());
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(peaks.size(), std::size_t{1});

    // "Pick All Area" keeps what is listed and adds the rest; "Pick Displayed Area" over the whole
    // spectrum finds nothing new, and "Delete All" empties; each undo puts back the list before it.
    Trigger(w, "Pick All Area");
    const std::size_t all = peaks.size();
    QVERIFY(all > 20 && all < 1000);
    QCOMPARE(Caption(w), std::string("UnDo(Pick All Area)"));
    Trigger(w, "Pick Displayed Area");
    QCOMPARE(peaks.size(), all);
    Trigger(w, "Delete All");
    QVERIFY(peaks.empty());
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(peaks.size(), all);
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(peaks.size(), std::size_t{1});

    // "Close" leaves the mode; the mouse zooms again and adds nothing. "Pick Displayed Area" then
    // picks within the window shown, and nowhere else.
    Trigger(w, "Close");
    QCOMPARE(w.Document().view.ToolMode, display::kNoTool);
    Drag(&view, PixelOf(w, s, top.col - 60, top.row - 60), PixelOf(w, s, top.col + 60, top.row + 60));
    QVERIFY(Settled(w));
    QCOMPARE(peaks.size(), std::size_t{1});
    Trigger(w, "Pick Displayed Area");
    QVERIFY(peaks.size() > 2 && peaks.size() < all);
    const display::DisplayState& v = w.Document().view;
    for (const model::Peak2D& p : peaks) {
      const float f2 = s.ppmF2[p.PointF2], f1 = s.ppmF1[p.PointF1];
      QVERIFY(f2 <= std::max(v.ViewF2Start, v.ViewF2End) && f2 >= std::min(v.ViewF2Start, v.ViewF2End));
      QVERIFY(f1 <= std::max(v.ViewF1Start, v.ViewF1End) && f1 >= std::min(v.ViewF1Start, v.ViewF1End));
    }
  }

  void TheListWindowEditsThroughUndo() {
    gui::MainWindow& w = *window_;
    const model::Spectrum2D& s = w.Document().spectrum;
    const auto& peaks = s.peaks.peaks;
    // Tops on the 1/32-point lattice.
    Trigger(w, "Vertual Peak Top");
    Trigger(w, "Pick All Area");
    const std::size_t all = peaks.size();

    Trigger(w, "PeaK List");
    auto* list = w.findChild<gui::PeakListWindow*>("peakList");
    QVERIFY(list && list->isVisible());
    QTableWidget& table = list->Table();
    QCOMPARE(table.rowCount(), static_cast<int>(all));
    // Sorted by F2 place; the rows say what the peak list file says.
    const std::vector<operations::PeakRow> rows = operations::PeakRows(s);
    for (int i = 0; i < table.rowCount(); ++i) {
      QCOMPARE(table.item(i, 1)->text().toDouble(), std::round(rows[i].ppmF2 * 1e4) / 1e4);
      if (i > 0) QVERIFY(peaks[i].PosF2 >= peaks[i - 1].PosF2);
    }

    // A place typed into the F1 cell of row 3 moves that top to the data point there.
    const int moved = 3;
    const double ppmF1 = rows[moved].ppmF1 + 4 * s.extras[model::F1].ppmStep;
    table.setCurrentCell(moved, 2);
    table.item(moved, 2)->setText(QString::number(ppmF1, 'f', 4));
    QCOMPARE(peaks[moved].PointF1, rows[moved].peak.PointF1 + 4);
    QCOMPARE(Caption(w), std::string("UnDo(Move Peak Top)"));
    // A place outside the data is refused, and the cell shows the top's place again.
    table.item(moved, 1)->setText("999");
    QCOMPARE(peaks[moved].PointF2, rows[moved].peak.PointF2);
    QCOMPARE(Caption(w), std::string("UnDo(Move Peak Top)"));

    // "Delete Peak" removes the selected row; the window and the marks follow undo.
    table.selectRow(0);
    for (QPushButton* b : list->findChildren<QPushButton*>())
      if (b->text() == "Delete Peak") b->click();
    QCOMPARE(peaks.size(), all - 1);
    QCOMPARE(table.rowCount(), static_cast<int>(all - 1));
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table.rowCount(), static_cast<int>(all));

    // Saved as text, the list reads back to the same table.
    const std::filesystem::path file = *folders_ / "hsqc-peaks.txt";
    QVERIFY(list->SaveTo(file.string()));
    model::PeakTable2D back;
    QVERIFY(operations::ReadPeakList(file, back).ok());
    QCOMPARE(back.peaks.size(), all);
    QCOMPARE(back.peaks[moved].PosF1, peaks[moved].PosF1);

  }
};

// The INADEQUATE commands on a folded set saved by the program: the mode switched on through its
// window, the slope 2 line drawn, the folded data extended and the extension undone.
class InadequateTest : public QObject {
  Q_OBJECT

 private slots:
  void ExtendAndUndoFromTheMenu() {
    test::TempFolder folders;
    model::Spectrum2D set = test::FoldedInadequateSet();
    set.InadequateMode = 0;
    set.UpperLimit = 2;
    set.LowerLimit = 0.2f;
    const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
    const std::filesystem::path file = folders / "folded.vlk2";
    QVERIFY(native::WriteDataR4(file, set, nullptr, nullptr, words, native::SaveMode::AllPlanes, {false, nullptr}).ok());
    gui::MainWindow w({folders / "data", folders / "config", folders / "log", folders / "work", folders / "program"}, "");
    w.resize(900, 700);
    w.show();
    w.OpenFile(file.string());
    QVERIFY(Settled(w) && w.Picture().Shown());
    const model::Spectrum2D& s = w.Document().spectrum;
    // An entry as a person sees it, the menu opened.
    const auto entry = [&w](const QString& text) {
      emit w.Peaks().Menu()->aboutToShow();
      for (QAction* a : w.Peaks().Menu()->actions())
        if (a->text() == text) return a;
      return static_cast<QAction*>(nullptr);
    };
    QVERIFY(!entry("Direction of Slope 2 Line")->isVisible());
    QVERIFY(!entry("Extend Folded Data")->isEnabled());

    // "Change Inadequate Spectrum": "Proceed as INADEQUATE Spectrum", then "Execute".
    const auto answer = [](const QString& option, const QString& button) {
      QTimer::singleShot(0, [option, button] {
        QWidget* window = QApplication::activeModalWidget();
        QVERIFY(window);
        for (QAbstractButton* b : window->findChildren<QAbstractButton*>())
          if (b->text() == option) b->click();
        for (QAbstractButton* b : window->findChildren<QAbstractButton*>())
          if (b->text() == button) b->click();
      });
    };
    answer("Proceed as INADEQUATE Spectrum", "Execute");
    entry("Change Inadequate Spectrum")->trigger();
    QCOMPARE(s.InadequateMode, std::int16_t{1});
    QCOMPARE(s.InadequateFull, std::int16_t{0});
    QVERIFY(entry("Direction of Slope 2 Line")->isVisible());
    QVERIFY(entry("Extend Folded Data")->isEnabled());
    // The line runs through the middle of the map, in its own colour.
    const QImage picture = w.Picture().grab().toImage();
    const QPoint middle = PixelOf(w, s, 64, 64) * picture.devicePixelRatio();
    int green = 0;
    for (int dy = -2; dy <= 2; ++dy)
      for (int dx = -2; dx <= 2; ++dx) green += picture.pixelColor(middle + QPoint(dx, dy)) == QColor(0, 128, 0);
    QVERIFY(green > 0);

    // "Extend Folded Data" doubles the F1 rows and puts each pair at its true place.
    answer(QString(), "Execute");
    entry("Extend Folded Data")->trigger();
    QVERIFY(Settled(w));
    QCOMPARE(s.axis[model::F1].Point, 256);
    for (const test::CarbonPair& p : test::kCarbonPairs) QVERIFY(std::abs(s.RR.at(p.a, p.a + p.b) - 1.0f) < 0.02f);
    QCOMPARE(Caption(w), std::string("UnDo(Tnadwquate Extension)"));
    QVERIFY(!entry("Extend Folded Data")->isEnabled());
    w.activateWindow();  // the offscreen platform has no window manager to do it after a dialog
    QVERIFY(QTest::qWaitForWindowActive(&w));
    QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(Settled(w));
    QCOMPARE(s.axis[model::F1].Point, 128);
    QCOMPARE(s.RR.at(40, 76), set.RR.at(40, 76));
    QVERIFY(CloseUnsaved(w));
  }
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  PeakToolTest peaks;
  InadequateTest inadequate;
  return QTest::qExec(&peaks, argc, argv) | QTest::qExec(&inadequate, argc, argv);
}
#include "peak_tool_test.moc"
