// "Print Preview" driven as a person uses it, on the offscreen platform: open the example, open the
// page, add one object of each kind, move and resize one, undo, save, open the file again and find
// the page as it was left. And the text editor with its bracket notation.
#include <QCheckBox>
#include <QFileDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include "ft_steps.h"
#include "gui/coded_text_editor.h"
#include "gui/main_window.h"
#include "gui/page_menu.h"
#include "gui/parameter_print_dialog.h"
#include "gui/print_preview.h"
#include "gui/window_dialog.h"
#include "layout/styled_runs.h"
#include "support/corpus.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

using namespace velk;

namespace {

QAction* Action(QMenuBar* bar, const QString& text) {
  for (QAction* menu : bar->actions())
    if (menu->menu())
      for (QAction* a : menu->menu()->actions())
        if (a->text().remove('&') == text) return a;
  return nullptr;
}

// Does something with the next modal dialog of the type once it is up.
template <class Dialog>
void WithNextDialog(std::function<void(Dialog&)> act) {
  QTimer::singleShot(20, [act] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (!dialog) return WithNextDialog<Dialog>(act);
    act(*dialog);
  });
}

void Send(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
  QMouseEvent event(type, at, w->mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons,
                    Qt::NoModifier);
  QApplication::sendEvent(w, &event);
}

// A drag with the left button, in steps as a hand moves.
void Drag(QWidget* w, QPoint from, QPoint to) {
  Send(w, QEvent::MouseButtonPress, from, Qt::LeftButton);
  for (int k = 1; k <= 5; ++k) Send(w, QEvent::MouseMove, from + (to - from) * k / 5, Qt::LeftButton);
  Send(w, QEvent::MouseButtonRelease, to, Qt::NoButton);
}

gui::PrintPreview* OpenPreview(gui::MainWindow& w) {
  Action(w.menuBar(), "Print / Edit")->trigger();
  auto* preview = w.findChild<gui::PrintPreview*>();
  // A page that never gets drawn counts as no Print Preview.
  if (preview && !QTest::qWaitFor([&] { return !preview->View().FramesPicture().isNull(); }, 20000)) return nullptr;
  return preview;
}

int CountColour(const QImage& image, QRgb colour) {
  int n = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) n += (image.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF);
  return n;
}

}  // namespace

class PrintPreviewTest : public QObject {
  Q_OBJECT

 private slots:
  void EveryKindAddedMovedResizedUndoneSavedAndReopened() {
    test::TempFolder folders;
    gui::MainWindow w({folders / "data", folders / "config", folders / "log", folders / "work", folders / "program"}, "");
    w.resize(1000, 800);
    w.show();
    gui::FtDialog* ft = test::OpenFid(w, std::string(VELK_SOURCE_DIR) + "/examples/cosy/ser");
    QVERIFY(ft);

    // "Edit Function Expression" of the window editor opens the same text editor, titled with the
    // window's type; what is typed there becomes the current expression, and "Set Initial
    // Expression" brings the initial one back.
    gui::WindowDialog* window = ft->EditWindow();
    const int type = std::clamp<int>(ft->State().settings().axis[ft->State().view()].window.type, 0, 4);
    const auto& expressions = ft->State().expressions();
    QString title;
    WithNextDialog<gui::CodedTextEditor>([&title](gui::CodedTextEditor& editor) {
      title = editor.windowTitle();
      editor.BracketEdit()->setPlainText("W = \\g(a)t");
      editor.TakeBracket();
      editor.accept();
    });
    for (QPushButton* b : window->findChildren<QPushButton*>())
      if (b->text() == "Edit Function Expression") b->click();
    QVERIFY(QStringList({"Exponential", "Sine Bell", "Squared Sine Bell", "Gauss Function", "Blackman Harris"}).contains(title));
    QCOMPARE(expressions.current[type], std::string("\\< W = \\g1 a\\g0 t\\>"));
    for (QPushButton* b : window->findChildren<QPushButton*>())
      if (b->text() == "Set Initial Expression") b->click();
    QCOMPARE(expressions.current[type], expressions.initial[type]);
    window->findChild<QPushButton*>("Fix")->click();
    QVERIFY(test::TransformAndWait(w, *ft));

    gui::PrintPreview* preview = OpenPreview(w);
    QVERIFY(preview);
    QCOMPARE(preview->windowTitle(), QString("Print Preview"));
    gui::PageView& view = preview->View();
    QVERIFY2(CountColour(view.FramesPicture(), qRgb(0, 0, 0)) > 1000, "axes, traces and parameters are drawn");

    // A text typed in the editor: "NH" and a subscript 2.
    WithNextDialog<gui::CodedTextEditor>([](gui::CodedTextEditor& editor) {
      QTest::keyClicks(editor.RichEdit(), "NH");
      editor.findChildren<QToolButton*>()[5]->click();  // subscript
      QTest::keyClicks(editor.RichEdit(), "2");
      editor.accept();
    });
    Action(preview->menuBar(), "Add Text...")->trigger();
    Action(preview->menuBar(), "Add Line")->trigger();
    Action(preview->menuBar(), "Add Circle")->trigger();
    Action(preview->menuBar(), "Add Rectangle")->trigger();
    QImage red(40, 20, QImage::Format_RGB32);
    red.fill(qRgb(255, 0, 0));
    const QString png = QString::fromStdString((folders / "red.png").string());
    QVERIFY(red.save(png));
    QVERIFY(preview->AddImageFile(png.toStdString()));

    const layout::EditedPage& page = preview->Page();
    QCOMPARE(page.objects.texts.size(), std::size_t(1));
    const auto runs = layout::RunsFromInternal(page.objects.texts[0].Text);
    QCOMPARE(runs.size(), std::size_t(2));
    QCOMPARE(runs[0].text, std::string("NH"));
    QCOMPARE(runs[1].style.script, -1);
    QCOMPARE(page.objects.lines.size(), std::size_t(1));
    QCOMPARE(page.objects.circles.size(), std::size_t(1));
    QCOMPARE(page.objects.rectangles.size(), std::size_t(1));
    QVERIFY(!page.objects.images[1].free());
    QCOMPARE(preview->UndoText(), QString("UnDo(Add Image)"));
    QVERIFY2(CountColour(view.grab().toImage(), qRgb(255, 0, 0)) > 300, "the picture is drawn");

    // The picture, in front of the others, moved by its middle, then made larger at its lower right
    // corner.
    const layout::LayoutImage start = page.objects.images[1];
    const auto middle = layout::PagePoint{(start.Left + start.Right) / 2.0, (start.Top + start.Bottom) / 2.0};
    Drag(&view, view.WidgetPoint(middle), view.WidgetPoint({middle.x + 3, middle.y + 2}));
    const layout::LayoutImage moved = page.objects.images[1];
    QVERIFY(std::abs((moved.Right - moved.Left) - (start.Right - start.Left)) < 1e-4);
    QVERIFY(std::abs(moved.Left - (start.Left + 3)) < 0.11 && std::abs(moved.Top - (start.Top + 2)) < 0.11);
    QCOMPARE(preview->UndoText(), QString("UnDo(Move Image(Parameter))"));
    Drag(&view, view.WidgetPoint({moved.Right, moved.Bottom}), view.WidgetPoint({moved.Right + 1, moved.Bottom + 1.5}));
    const layout::LayoutImage larger = page.objects.images[1];
    QVERIFY(std::abs((larger.Right - larger.Left) - (moved.Right - moved.Left) - 1) < 0.11);
    QCOMPARE(larger.Left, moved.Left);
    QCOMPARE(preview->UndoText(), QString("UnDo(Enlarge/reduce Image(Parameter))"));
    QVERIFY(preview->StatusText().startsWith("X= "));

    // Undo takes back the resize only.
    preview->Undo();
    QVERIFY(page.objects.images[1] == moved);
    const layout::EditedPage left = page;

    // Saved through the main window's "Save", which asks for the name.
    const QString saved = QString::fromStdString((folders / "page.vlk2").string());
    WithNextDialog<QFileDialog>([saved](QFileDialog& d) {
      // The name typed, as selectFile leaves a focused name field as it is.
      d.findChild<QLineEdit*>("fileNameEdit")->setText(saved);
      static_cast<QDialog&>(d).done(QDialog::Accepted);
    });
    Action(preview->menuBar(), "Save...")->trigger();
    QVERIFY(QFile::exists(saved));
    // The main window's own page commands print the page as the preview left it.
    const gui::ShownPage shown(w.Session(), w.Picture(), left.paper);
    QVERIFY(shown.page.frames == left.frames);
    QVERIFY(shown.page.objects.texts == left.objects.texts && shown.page.objects.images == left.objects.images);
    preview->close();
    QVERIFY(QTest::qWaitFor([&] { return w.findChild<gui::PrintPreview*>() == nullptr; }, 5000));

    // The file opened again brings the page back as it was left.
    w.OpenFile(saved.toStdString());
    QVERIFY(QTest::qWaitFor([&] { return !w.Opening() && !w.Picture().Tracing(); }, 60000));
    preview = OpenPreview(w);
    QVERIFY(preview);
    const layout::EditedPage& back = preview->Page();
    QVERIFY(back.frames == left.frames);
    QVERIFY(back.paper == left.paper);
    QVERIFY(back.objects.texts == left.objects.texts);
    QVERIFY(back.objects.lines == left.objects.lines);
    QVERIFY(back.objects.circles == left.objects.circles);
    QVERIFY(back.objects.rectangles == left.objects.rectangles);
    QVERIFY(back.objects.images == left.objects.images);
    QVERIFY(back.objects.drawOrder == left.objects.drawOrder);
    QCOMPARE(preview->Page().objects.images[1].Picture.size(), std::size_t(QFileInfo(png).size()));

    // A print set read in the window draws the page in its look: the axes in red.
    const QString look = QString::fromStdString(folders.Write("red.pr2", "COLOR SET OF PRINT 2D VER.4\r\nAXIS COL;255\r\n").string());
    WithNextDialog<QFileDialog>([look](QFileDialog& d) {
      d.findChild<QLineEdit*>("fileNameEdit")->setText(look);
      static_cast<QDialog&>(d).done(QDialog::Accepted);
    });
    const int redBefore = CountColour(preview->View().FramesPicture(), qRgb(255, 0, 0));
    Action(preview->menuBar(), "Read Print Set...")->trigger();
    QVERIFY(QTest::qWaitFor([&] { return CountColour(preview->View().FramesPicture(), qRgb(255, 0, 0)) > redBefore + 400; }, 20000));

    // The window's grid goes on the page only while "Print Grid" is on (yellow in the default set).
    WithNextDialog<QDialog>([](QDialog& d) {
      d.findChild<QAbstractButton*>("drawGrid")->click();
      d.accept();
    });
    w.SetUpGrid();
    QVERIFY(w.Document().grid.shown);
    const auto yellow = [&] { return CountColour(preview->View().FramesPicture(), qRgb(255, 255, 0)); };
    Action(preview->menuBar(), "Print Grid")->trigger();
    QVERIFY(QTest::qWaitFor([&] { return yellow() > 400; }, 20000));
    Action(preview->menuBar(), "Print Grid")->trigger();
    QVERIFY(QTest::qWaitFor([&] { return yellow() == 0; }, 20000));
    preview->close();
  }

  // "Parameter Print" switches the page to a parameter file, and UnDo brings the default list
  // back; "Edit Parameters" adds, moves and deletes lines and asks before it drops a change.
  void ParameterPrintAndEditParameters() {
    test::TempFolder folders;
    gui::MainWindow w({folders / "data", folders / "config", folders / "log", folders / "work", folders / "program"}, "");
    w.resize(1000, 800);
    w.show();
    w.OpenFile(test::CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr").string());
    QVERIFY(QTest::qWaitFor([&] { return !w.Opening() && w.Picture().Shown() && !w.Picture().Tracing(); }, 60000));
    const std::string prt = folders.Write("short.prt", "$---Mine----\r\n;not printed\r\nF2FRQ     {Proton}\r\nF1NUC\r\n").string();
    gui::PrintPreview* preview = OpenPreview(w);
    QVERIFY(preview);
    const QImage before = preview->View().FramesPicture();

    const auto pressIn = [](QWidget& dialog, const QString& text) {
      for (QPushButton* b : dialog.findChildren<QPushButton*>())
        if (b->text() == text) return b->click();
      QFAIL(qPrintable("no button " + text));
    };
    QString fileTitle;
    WithNextDialog<gui::ParameterPrintDialog>([&](gui::ParameterPrintDialog& d) {
      WithNextDialog<QFileDialog>([&](QFileDialog& f) {
        fileTitle = f.windowTitle();
        f.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(prt));
        static_cast<QDialog&>(f).done(QDialog::Accepted);
      });
      pressIn(d, "Set Parameter File");
      for (QCheckBox* c : d.findChildren<QCheckBox*>())
        if (c->text() == "with Frame") c->setChecked(true);
      d.accept();
    });
    Action(preview->menuBar(), "Parameter Print...")->trigger();
    QCOMPARE(fileTitle, QString("Select Parameter File for printing parameter"));
    const layout::ParameterList fromFile = layout::ParseParameterText("$---Mine----\n;not printed\nF2FRQ     {Proton}\nF1NUC\n");
    QVERIFY(preview->Parameters().list == fromFile);
    QCOMPARE(preview->UndoText(), QString("UnDo(Print Parameter)"));
    QCOMPARE(QString::fromStdString(core::Text(w.Session().settings2D, "PARAMETER TABLE")), QString::fromStdString(prt));
    QVERIFY(preview->Page().frames[layout::FrameKind::Parameter].Framed);
    QVERIFY(QTest::qWaitFor([&] { return preview->View().FramesPicture() != before; }, 20000));
    // The main window's page commands print the same list; once the file is gone they print the
    // default list and say why.
    test::ScriptedPrompt prompt;
    QVERIFY(gui::SessionParameters(w.Session(), prompt).list == fromFile);
    std::filesystem::rename(prt, prt + ".away");
    QVERIFY(gui::SessionParameters(w.Session(), prompt).list == layout::DefaultParameterList());
    QCOMPARE(prompt.shown.size(), std::size_t(1));
    QCOMPARE(prompt.shown[0].title, std::string("ReadParaFile/Fm17"));

    preview->Undo();
    QVERIFY(preview->Parameters().list == layout::DefaultParameterList());
    QCOMPARE(preview->UndoText(), QString("UnDo"));
    QVERIFY(!preview->Page().frames[layout::FrameKind::Parameter].Framed);
    QCOMPARE(layout::ParameterPrintFromSettings(w.Session().settings2D).source, layout::ParameterListSource::Default);

    // Edit Parameters: F2FRQ goes above the first line, down one, is deleted, and goes below the
    // first line again; leaving without OK asks, "No" stays, then OK takes the list.
    QStringList seen;
    QString question;
    WithNextDialog<gui::ParameterPrintDialog>([&](gui::ParameterPrintDialog& d) {
      WithNextDialog<gui::ParameterEditDialog>([&](gui::ParameterEditDialog& e) {
        const auto offered = e.Offered()->findItems("F2FRQ ", Qt::MatchStartsWith);
        QVERIFY(!offered.isEmpty());
        e.Offered()->setCurrentItem(offered.front());
        e.Printed()->setCurrentRow(0);
        const auto first = [&] { return QString::fromStdString(e.List()[0].Kind) + "," + QString::fromStdString(e.List()[1].Kind); };
        pressIn(e, "Add above=>");
        seen << first();
        pressIn(e, "Move Down");
        seen << first();
        pressIn(e, "Delete");
        seen << first();
        e.Printed()->setCurrentRow(0);
        pressIn(e, "Add below=>");
        seen << first();
        WithNextDialog<QMessageBox>([&](QMessageBox& m) {
          question = m.windowTitle() + ": " + m.text();
          for (QAbstractButton* b : m.buttons())
            if (b->text().remove('&') == "No") b->click();
        });
        e.reject();
        QVERIFY(e.isVisible());
        e.accept();
      });
      pressIn(d, "Edit Parameter List");
      d.accept();
    });
    Action(preview->menuBar(), "Parameter Print...")->trigger();
    QCOMPARE(seen, QStringList({"F2FRQ,DFILE", "DFILE,F2FRQ", "DFILE,DATIM", "DFILE,F2FRQ"}));
    QCOMPARE(question, QString("Confirmation: The List has been changed! Anyway, close?"));
    QCOMPARE(preview->Parameters().choice.source, layout::ParameterListSource::List);
    QCOMPARE(preview->Parameters().list.size(), layout::DefaultParameterList().size() + 1);
    QCOMPARE(preview->Parameters().list[1].Kind, std::string("F2FRQ"));
    preview->close();
  }

  // The editor shows codes as looks and the bracket notation beside them; a bracket text typed
  // and taken comes back in codes.
  void TheTextEditorShowsLooksAndTakesTheBracketNotation() {
    gui::CodedTextEditor editor("Text Input", "\\< \\g1 a\\g0 -helix 10\\+1 3\\+0 ", {}, {}, nullptr);
    QCOMPARE(editor.RichEdit()->toPlainText(), QString("α-helix 103"));
    QCOMPARE(editor.BracketEdit()->toPlainText(), QString("\\g(a)-helix 10\\+(3)"));
    editor.BracketEdit()->setPlainText("\\b(bold) and \\i(italic)\nnext line");
    editor.TakeBracket();
    QCOMPARE(editor.RichEdit()->toPlainText(), QString("bold and italic\nnext line"));
    const std::string internal = editor.Result().internal;
    QVERIFY2(internal == "\\< \\b1 bold\\b0  and \\i1 italic\\i0 \\cr next line\\>", internal.c_str());
  }
};

QTEST_MAIN(PrintPreviewTest)
#include "print_preview_test.moc"
