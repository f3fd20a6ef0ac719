// The page leaving the program for real: printed through the one- and two-sided CUPS PDF queues
// that scripts/setup-test-printer makes (text and picture of the resulting PDF checked, and the
// sides CUPS was asked for), printed to a PDF file, saved as EMF and opened by LibreOffice and
// Inkscape, and the "Printer Setting" dialog used as a person does.
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QMimeData>
#include <QDialogButtonBox>
#include <QDir>
#include <QMenuBar>
#include <QImage>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>
#include <chrono>
#include <thread>

#include "gui/main_window.h"
#include "gui/page_menu.h"
#include "gui/page_output.h"
#include "platform/qt/picture_decode.h"
#include "layout/play_picture.h"
#include "layout/print_set.h"
#include "gui/printer_setting_dialog.h"
#include "model/data_type.h"
#include "support/corpus.h"
#include "support/recording_surface.h"
#include "support/scripted_prompt.h"
#include "support/synthetic_2d.h"
#include "support/temp_folder.h"

using namespace velk;

namespace {

// The queues scripts/setup-test-printer adds, one printing one side of the paper, the other both;
// the test expects them and fails without them.
const QString kQueue = "velk2d-test-pdf";
const QString kDuplexQueue = "velk2d-test-duplex";

// A page of a synthetic spectrum with four peaks, the default parameters and a comment.
struct TestPage {
  TestPage() {
    setting.Steps = 6;
    view = std::make_unique<display::MainViewInput>(display::MainViewInput{
        *spectrum, model::VPH_HOMO, setting, {}, display::TraceKind::Projection, "F2 (ppm)", "F1 (ppm)"});
    view->view.ViewF2Start = 10, view->view.ViewF2End = 0, view->view.ViewF1Start = 0, view->view.ViewF1End = 10;
    content = std::make_unique<layout::PageContent>(
        layout::PageContent{*view, parameters, source, "\\< Cyclosporin probe page", objects});
    list.heading = {"\\< Peak List", "File:  probe.vlk2", "\\< Comment:  "};
    list.captions = {"\\< No.", "\\<     F2/ppm(Hz)", "\\<     F1/ppm(Hz)", "\\< Height"};
    list.rows = {{"1", "7.0000(3500.00)", "3.0000(1500.00)", "1"}, {"2", "3.0000(1500.00)", "7.0000(3500.00)", "0.8"}};
  }
  std::unique_ptr<model::Spectrum2D> spectrum =
      test::MakeSynthetic2D(256, 256, {{7, 3, 1.0, 0.1}, {3, 7, 0.8, 0.1}, {5, 5, 0.6, 0.1}, {2, 2, 0.5, 0.1}});
  display::ContourSetting setting;
  std::unique_ptr<display::MainViewInput> view;
  layout::ParameterList parameters = layout::DefaultParameterList();
  layout::ParameterSource source{.s = *spectrum};
  layout::LayoutDocument objects;
  std::unique_ptr<layout::PageContent> content;
  operations::PrintList list;
};

QString Run(const QString& program, const QStringList& arguments, int timeoutMs = 120000) {
  QProcess p;
  p.setProcessChannelMode(QProcess::MergedChannels);
  p.start(program, arguments);
  if (!p.waitForFinished(timeoutMs)) return "(" + program + " did not finish)";
  return QString::fromUtf8(p.readAll());
}

QString PdfText(const QString& pdf) { return Run("pdftotext", {"-layout", pdf, "-"}); }

int PdfPages(const QString& pdf) {
  const QString info = Run("pdfinfo", {pdf});
  const QRegularExpressionMatch m = QRegularExpression("Pages:\\s+(\\d+)").match(info);
  return m.hasMatch() ? m.captured(1).toInt() : -1;
}

// The share of pixels that are not white inside a part of the picture given in fractions.
double InkIn(const QImage& image, double left, double top, double right, double bottom) {
  int ink = 0, all = 0;
  for (int y = static_cast<int>(top * image.height()); y < static_cast<int>(bottom * image.height()); ++y)
    for (int x = static_cast<int>(left * image.width()); x < static_cast<int>(right * image.width()); ++x, ++all)
      ink += qGray(image.pixel(x, y)) < 200;
  return all ? static_cast<double>(ink) / all : 0;
}

// Where a converter puts the page in its picture: Inkscape draws it as it is; LibreOffice fits it
// into its own page with 1 cm margins, keeping the aspect (0.905 of A4's width, 5 % in).
struct Placement {
  double scale = 1, left = 0, top = 0;
};

double InkOnPage(const QImage& png, Placement p, double left, double top, double right, double bottom) {
  return InkIn(png, p.left + p.scale * left, p.top + p.scale * top, p.left + p.scale * right, p.top + p.scale * bottom);
}

// The page is portrait; the comment stands at the top left, the contour below it, the parameter
// block in the lower part; the margins above and on the right (1.5 cm) stay empty.
void CheckEmfPicture(const QImage& png, Placement p, const QString& log) {
  QVERIFY2(!png.isNull(), qPrintable("no PNG of our EMF from " + log));
  QVERIFY2(InkOnPage(png, p, 0.035, 0.035, 0.39, 0.08) > 0.02, qPrintable("the comment, " + log));
  QVERIFY2(InkOnPage(png, p, 0.28, 0.18, 0.83, 0.58) > 0.005, qPrintable("the contour, " + log));
  QVERIFY2(InkOnPage(png, p, 0.055, 0.635, 0.89, 0.87) > 0.01, qPrintable("the parameter block, " + log));
  QCOMPARE(InkOnPage(png, p, 0.0, 0.0, 1.0, 0.04), 0.0);
  QCOMPARE(InkOnPage(png, p, 0.935, 0.0, 1.0, 1.0), 0.0);  // 1.5 cm from the edge
}

QImage FirstPageOf(const QString& pdf, const QString& folder) {
  Run("pdftoppm", {"-png", "-r", "40", "-f", "1", "-l", "1", pdf, folder + "/page"});
  const QStringList made = QDir(folder).entryList({"page*.png"});
  return made.isEmpty() ? QImage() : QImage(folder + "/" + made.front());
}

// Where cups-pdf leaves a job: the printing user's ~/PDF, or its spool folder for others.
QString FindCupsPdf(const QString& job) {
  const QStringList folders{QDir::homePath() + "/PDF", "/var/spool/cups-pdf/ANONYMOUS"};
  for (int tries = 0; tries < 120; ++tries) {
    for (const QString& folder : folders)
      for (const QFileInfo& f : QDir(folder).entryInfoList({job + "*.pdf"}, QDir::Files))
        if (f.size() > 0) {
          std::this_thread::sleep_for(std::chrono::milliseconds(500));  // the writer may still be at it
          return f.absoluteFilePath();
        }
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
  }
  return {};
}

// The "sides" CUPS recorded for a finished job, asked over IPP as the user who printed it (CUPS
// hides job names from others).
QString JobSides(const QString& queue, const QString& job, const QString& folder) {
  const QString request = folder + "/jobs.test";
  QFile file(request);
  if (!file.open(QIODevice::WriteOnly)) return {};
  file.write("{\n OPERATION Get-Jobs\n GROUP operation-attributes-tag\n"
             " ATTR charset attributes-charset utf-8\n ATTR language attributes-natural-language en\n"
             " ATTR uri printer-uri $uri\n ATTR name requesting-user-name $user\n ATTR keyword which-jobs completed\n"
             " ATTR keyword requested-attributes job-name,sides\n STATUS successful-ok\n"
             " DISPLAY job-name\n DISPLAY sides\n}\n");
  file.close();
  // The answer is a table: "job-name,sides" and a line per job.
  const QString answer = Run("ipptool", {"-c", "ipp://localhost/printers/" + queue, request});
  for (const QString& line : answer.split('\n'))
    if (line.startsWith(job + ",")) return line.mid(job.size() + 1).trimmed();
  return "no job " + job + " in " + answer.right(400);
}

// The checks every printed page must pass: its words and the contour where the layout puts it.
void CheckPrintedPage(const QString& pdf, const QString& folder) {
  const QString text = PdfText(pdf);
  QVERIFY2(text.contains("Cyclosporin probe page"), qPrintable(text.left(400)));
  QVERIFY2(text.contains("F2 (ppm)") && text.contains("F1 (ppm)"), qPrintable(text.left(400)));
  QVERIFY(text.contains("Peak List"));
  QVERIFY(text.contains("3.0000(1500.00)"));
  const QImage page = FirstPageOf(pdf, folder);
  QVERIFY(!page.isNull());
  // Landscape A4: the contour fills the middle of the page, the rest of the paper stays clean.
  QVERIFY2(InkIn(page, 0.1, 0.15, 0.9, 0.6) > 0.002, "the contour is on the page");
  QCOMPARE(InkIn(page, 0.0, 0.0, 1.0, 0.02), 0.0);
}

}  // namespace

class PageOutputTest : public QObject {
  Q_OBJECT

 private slots:
  // The peak list goes on the reverse side: the one-sided queue says it cannot and prints two
  // sheets; the two-sided one is asked for both sides and says nothing. Either way the PDF that
  // CUPS makes holds the page and then the list.
  void PrintsThroughTheCupsQueuesWithTheListOnTheReverse_data() {
    QTest::addColumn<QString>("queue");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("sides");
    QTest::newRow("one-sided") << kQueue << "The Printer cannot print on a reverse side!" << "one-sided";
    const layout::PrintSetup setup;  // landscape A4 bound on the left: the sheet turns on its short edge
    const bool longEdge = layout::FlipOnLongEdge(setup.bind, setup.page.landscape);
    QTest::newRow("two-sided") << kDuplexQueue << "" << (longEdge ? "two-sided-long-edge" : "two-sided-short-edge");
  }

  void PrintsThroughTheCupsQueuesWithTheListOnTheReverse() {
    QFETCH(QString, queue);
    QFETCH(QString, message);
    QFETCH(QString, sides);
    QVERIFY2(QPrinterInfo::availablePrinterNames().contains(queue),
             "the test printers are missing: run scripts/setup-test-printer (needs cups and printer-driver-cups-pdf)");
    TestPage page;
    test::TempFolder folder;
    const QString job = QString("velk2d-print-test-%1-%2").arg(QCoreApplication::applicationPid()).arg(QTest::currentDataTag());
    layout::PrintSetup setup;
    setup.printer = queue.toStdString();
    setup.dualSide = true;
    test::ScriptedPrompt prompt;
    const platform::Outcome printed =
        gui::PrintPage(nullptr, {*page.content, page.list, job.toStdString()}, setup, prompt, false);
    QCOMPARE(printed.code, 0);
    QStringList shown;
    for (const auto& m : prompt.shown) shown << QString::fromStdString(m.text);
    QCOMPARE(shown.join(""), message);

    const QString pdf = FindCupsPdf(job);
    QVERIFY2(!pdf.isEmpty(), "cups-pdf wrote no file for the job (see /var/log/cups/error_log)");
    QCOMPARE(PdfPages(pdf), 2);
    CheckPrintedPage(pdf, QString::fromStdString(folder.path.string()));
    QFile::remove(pdf);
    QCOMPARE(JobSides(queue, job, QString::fromStdString(folder.path.string())), sides);
  }

  void PrintsToAPdfFileAndRefusesAMissingPrinter() {
    TestPage page;
    test::TempFolder folder;
    layout::PrintSetup setup;
    setup.printer = std::string(layout::kPdfFilePrinter);
    test::ScriptedPrompt prompt;
    prompt.files.push_back((folder / "printed").string());  // the extension is added
    QCOMPARE(gui::PrintPage(nullptr, {*page.content, page.list}, setup, prompt, false).code, 0);
    const QString pdf = QString::fromStdString((folder / "printed.pdf").string());
    QVERIFY(QFile::exists(pdf));
    QCOMPARE(PdfPages(pdf), 2);
    CheckPrintedPage(pdf, QString::fromStdString(folder.path.string()));

    setup.printer = "no-such-printer";
    prompt.shown.clear();
    QCOMPARE(gui::PrintPage(nullptr, {*page.content, page.list}, setup, prompt, false).code, 1);
    QCOMPARE(prompt.shown.size(), std::size_t{1});
    QCOMPARE(QString::fromStdString(prompt.shown[0].text), QString("No Printer is available"));
  }

  // Our EMF must be read by the two programs chemists paste pictures into, not only by our own
  // player: LibreOffice and Inkscape draw it and the ink lands where the page puts it.
  void EmfOfThePageOpensInLibreOfficeAndInkscape() {
    TestPage page;
    test::TempFolder folder;
    const layout::Paper a4 = *layout::PaperOf("A4", false);
    const QString emf = QString::fromStdString((folder / "page.emf").string());
    QVERIFY(gui::WritePageFile(emf.toStdString(), gui::ScreenFormat::Emf, *page.content, a4).ok());

    // LibreOffice converts with a profile of its own, so that a running instance is not disturbed.
    const QString out = QString::fromStdString(folder.path.string());
    const QString office = Run("soffice", {"-env:UserInstallation=file://" + out + "/profile", "--headless",
                                           "--convert-to", "png", "--outdir", out, emf});
    CheckEmfPicture(QImage(out + "/page.png"), {0.905, 0.048, 0.048}, "LibreOffice: " + office);
    const QString inkscape = Run("inkscape", {emf, "--export-type=png", "--export-dpi=100", "--export-background=white",
                                              "--export-filename=" + out + "/inkscape.png"});
    CheckEmfPicture(QImage(out + "/inkscape.png"), {}, "Inkscape: " + inkscape);
  }


  void SaveScreenChecksTheName() {
    TestPage page;
    test::TempFolder folder;
    const layout::Paper a5 = *layout::PaperOf("A5", true);
    test::ScriptedPrompt prompt;
    prompt.files = {(folder / "shot.jpg").string(), (folder / "shot").string()};
    QCOMPARE(gui::SaveScreen(nullptr, gui::ScreenFormat::Bmp, *page.content, a5, prompt).code, 1);
    QCOMPARE(QString::fromStdString(prompt.shown.back().text), QString("Invalid File, or\nExtension of File is not .BMP"));
    QVERIFY(!std::filesystem::exists(folder / "shot.jpg"));
    QCOMPARE(gui::SaveScreen(nullptr, gui::ScreenFormat::Bmp, *page.content, a5, prompt).code, 0);
    const QImage bmp(QString::fromStdString((folder / "shot.bmp").string()));
    QCOMPARE(bmp.width(), 794);  // 21 cm at 96 dots per inch
    QVERIFY(InkIn(bmp, 0.1, 0.15, 0.9, 0.6) > 0.002);
  }

  // The File menu of the main window saves the page of the spectrum it shows.
  void SaveScreenFromTheMainWindow() {
    test::TempFolder folder;
    gui::MainWindow w({folder / "data", folder / "config", folder / "log", folder / "work", folder / "program"}, "");
    w.resize(1000, 800);
    w.show();
    const std::string path = test::CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr").string();
    w.OpenFile(path);
    QVERIFY(QTest::qWaitFor(
        [&] { return !w.Opening() && w.Picture().Shown() && !w.Picture().Tracing() && !w.Document().view.ContourDirty; }, 60000));

    QStringList commands;
    for (QAction* a : w.menuBar()->findChildren<QAction*>()) commands << a->text();
    for (const char* command : {"Print...", "Present Paper", "Printer Setting...", "Save Screen as PNG...",
                                "Save Screen as BMP...", "Save Screen as EMF...", "Save Screen as PDF...", "Save Screen as SVG..."})
      QVERIFY2(commands.contains(command), command);
    // What those commands draw: the page of the spectrum shown, with its parameters.
    const layout::Paper a4 = *layout::PaperOf("A4", false);
    const gui::ShownPage page(w.Session(), w.Picture(), a4);
    const std::filesystem::path pdf = folder / "hsqc-page.pdf";
    QVERIFY(gui::WritePageFile(pdf, gui::ScreenFormat::Pdf, page.content, a4).ok());
    const QString text = PdfText(QString::fromStdString(pdf.string()));
    QVERIFY2(text.contains("F2-Nucleus") && text.contains("13C") && text.contains("1H"), qPrintable(text.left(600)));
  }

  // The pictures of image objects: PNG and JPEG images and SVG drawings stretched to their frame's
  // size, damaged bytes refused.
  void PicturesDecodeToTheirFrame() {
    QImage red(4, 2, QImage::Format_RGB32);
    red.fill(Qt::red);
    const auto bytesOf = [](const QImage& image, const char* format) {
      QByteArray data;
      QBuffer buffer(&data);
      buffer.open(QIODevice::WriteOnly);
      image.save(&buffer, format);
      return std::vector<std::uint8_t>(data.begin(), data.end());
    };
    const auto centre = [](const platform::Image& image) {
      return QColor::fromRgb(image.pixels[static_cast<std::size_t>(image.height / 2 * image.width + image.width / 2)]);
    };
    for (const char* format : {"PNG", "JPG"}) {
      const auto image = platform::qt::DecodePicture(bytesOf(red, format), 40, 30);
      QVERIFY2(image, format);
      QCOMPARE(image->width, 40);
      QCOMPARE(image->height, 30);
      QVERIFY(centre(*image).red() > 200 && centre(*image).green() < 60);
    }
    const std::string svg = R"(<?xml version="1.0"?><svg xmlns="http://www.w3.org/2000/svg" width="10" height="10">)"
                            R"(<rect width="10" height="10" fill="blue"/></svg>)";
    const auto drawing = platform::qt::DecodePicture(std::vector<std::uint8_t>(svg.begin(), svg.end()), 40, 30);
    QVERIFY(drawing);
    QCOMPARE(drawing->width, 40);
    QVERIFY(centre(*drawing).blue() > 200 && centre(*drawing).red() < 60);

    std::vector<std::uint8_t> broken = bytesOf(red, "PNG");
    broken.resize(20);
    const std::string notSvg = "<svg unclosed";
    QVERIFY(!platform::qt::DecodePicture(broken, 40, 30));
    QVERIFY(!platform::qt::DecodePicture(std::vector<std::uint8_t>(notSvg.begin(), notSvg.end()), 40, 30));
  }

  // The copy area goes to the clipboard as a metafile, an SVG drawing and a bitmap of its size.
  void CopyAreaAndPrintSets() {
    TestPage page;
    const layout::Paper a4 = *layout::PaperOf("A4", false);
    const gui::AreaCm area{1.5, 1.0, 12.0, 8.0};
    QCOMPARE(QString::fromStdString(gui::CopyAreaText(area, 96)), QString("Copy Area 12.00x8.00 cm 454x302 dot"));
    QVERIFY(gui::CopyAreaToClipboard(*page.content, a4, area));
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    QVERIFY(copied && copied->hasImage() && copied->hasFormat("image/svg+xml") && copied->hasFormat("image/x-emf"));
    const QImage image = qvariant_cast<QImage>(copied->imageData());
    QCOMPARE(image.size(), QSize(454, 302));
    QVERIFY2(InkIn(image, 0.0, 0.0, 1.0, 0.15) > 0.01, "the comment lies in the area's top");
    const QByteArray emf = copied->data("image/x-emf");
    test::RecordingSurface played;
    QCOMPARE(layout::PlayPicture(played, std::span(reinterpret_cast<const std::uint8_t*>(emf.constData()),
                                                   static_cast<std::size_t>(emf.size())),
                                 layout::PictureFrame{0, 0, 454, 302}),
             0);
    QVERIFY(!played.Of(test::Recorded::Text).empty());
    QVERIFY(!gui::CopyAreaToClipboard(*page.content, a4, {1, 1, 0, 5}));

    // Print sets through their dialogs: the name checked, an unknown first line refused.
    test::TempFolder folder;
    core::Settings set = layout::DefaultPrintSet();
    core::SetNumber(set, "GRID COL", 255);
    test::ScriptedPrompt prompt;
    prompt.files = {(folder / "colours.prt").string(), (folder / "colours").string(), (folder / "colours.pr2").string(),
                    folder.Write("other.pr2", "2D Initial Setting Ver.4\r\nGRID COL ; 0\r\n").string()};
    QCOMPARE(gui::SavePrintSetFile(set, prompt).code, 1);
    QCOMPARE(QString::fromStdString(prompt.shown.back().text), QString("Invalid File, or\nExtension of File is not .PR2"));
    QCOMPARE(gui::SavePrintSetFile(set, prompt).code, 0);
    core::Settings back = layout::DefaultPrintSet();
    QCOMPARE(gui::ReadPrintSetFile(back, prompt).code, 0);
    QCOMPARE(core::Number(back, "GRID COL"), 255.0);
    QCOMPARE(gui::ReadPrintSetFile(back, prompt).code, 1);
    QCOMPARE(core::Number(back, "GRID COL"), 255.0);
    QCOMPARE(core::Number(layout::StartingPrintSet(folder.path), "GRID COL"), 65535.0);
  }

  void PrinterSettingAsAPersonUsesIt() {
    layout::PrintSetup setup;
    gui::PrinterSettingDialog dialog(setup, nullptr);
    auto* printer = dialog.findChild<QComboBox*>("printer");
    auto* size = dialog.findChild<QComboBox*>("size");
    QVERIFY(printer && size);
    QVERIFY(printer->findText(QString::fromUtf8(layout::kPdfFilePrinter.data())) >= 0);
    QCOMPARE(size->count(), 7);
    QCOMPARE(size->itemText(6), QString("A4 Full Column"));
    size->setCurrentText("B5");
    for (QRadioButton* b : dialog.findChildren<QRadioButton*>())
      if (b->text() == "Portrait" || b->text() == "without reverse side") b->click();
    const layout::PrintSetup chosen = dialog.Setup();
    QCOMPARE(chosen.page.size, layout::PaperSize::B5);
    QVERIFY(!chosen.page.landscape);
    QVERIFY(!chosen.peakListOnReverse);
  }
};

QTEST_MAIN(PageOutputTest)
#include "page_output_test.moc"
