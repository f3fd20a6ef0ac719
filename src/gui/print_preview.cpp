#include "gui/print_preview.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <ctime>
#include <fstream>
#include <iterator>

#include "display/levels.h"
#include "gui/coded_text_editor.h"
#include "gui/page_menu.h"
#include "gui/page_output.h"
#include "gui/page_property_dialogs.h"
#include "gui/parameter_print_dialog.h"
#include "layout/page_store.h"
#include "platform/qt/picture_decode.h"

namespace velk::gui {
namespace {

constexpr double kPasteOffsetCm = 0.5;
constexpr std::uintmax_t kLargestPicture = 64u << 20;  // bytes
constexpr int kZooms[] = {50, 75, 100, 150, 200};

const char* FrameName(layout::FrameKind k) {
  switch (k) {
    case layout::FrameKind::Spectrum: return "2D";
    case layout::FrameKind::TraceF2: return "1D(F2)";
    case layout::FrameKind::TraceF1: return "1D(F1)";
    case layout::FrameKind::Level: return "Level";
    case layout::FrameKind::Parameter: return "Parameter";
    case layout::FrameKind::Comment: return "Comment";
  }
  return "";
}

// The frame property's undo code: the background and frame of the 2D, F2, F1 and level frames,
// "Print Parameter" for the parameters and "Print Property" for the comment.
int FramePropertyCode(layout::FrameKind k) {
  switch (k) {
    case layout::FrameKind::Spectrum: return 102;
    case layout::FrameKind::TraceF2: return 103;
    case layout::FrameKind::TraceF1: return 104;
    case layout::FrameKind::Level: return 105;
    case layout::FrameKind::Parameter: return 101;
    case layout::FrameKind::Comment: return 100;
  }
  return -1;
}

void Tell(QWidget* parent, const platform::Outcome& outcome) {
  if (outcome.ok() || outcome.message.empty()) return;
  if (outcome.message.beep) QApplication::beep();
  QMessageBox::warning(parent, QString::fromStdString(outcome.message.title), QString::fromStdString(outcome.message.text));
}

}  // namespace

PrintPreview::PrintPreview(document::Session& session, const SpectrumView& shown, std::function<bool()> save,
                           platform::Prompt& prompt, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      doc_(session.document),
      save_(std::move(save)),
      prompt_(prompt),
      setup_(layout::PrintSetupFromSettings(session.settings2D)),
      shown_(shown),
      parameters_(SessionParameters(session, prompt)) {
  setWindowTitle("Print Preview");
  setWindowFlag(Qt::Window);
  setWindowModality(Qt::ApplicationModal);  // the data stay as they are while their page is edited
  page_ = layout::ReadStoredPage(doc_.spectrum.carried, layout::PageAreaOf(setup_.page));

  view_ = new PageView(
      page_, [this](platform::Surface& s, double dpi) { RenderFrames(s, dpi); },
      [this](const layout::Target& target, int code) { Before(target, code); }, this);
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(view_);
  scroll->setAlignment(Qt::AlignCenter);
  scroll->setBackgroundRole(QPalette::Dark);
  setCentralWidget(scroll);
  status_ = new QLabel(this);
  statusBar()->addWidget(status_, 1);
  connect(view_, &PageView::status, status_, &QLabel::setText);
  connect(view_, &PageView::changed, this, [this] { Changed(); });
  connect(view_, &PageView::doubleClicked, this, [this] { ChangeProperty(); });
  BuildMenus();
  connect(view_, &PageView::contextMenuAt, this, [this](const QPoint& global, layout::PagePoint at) {
    insertAt_ = at;
    QMenu menu(this);
    for (QAction* a : menuBar()->actions())
      if (a->menu() && (a->text() == "&Edit" || a->text() == "&Add")) menu.addActions(a->menu()->actions());
    menu.exec(global);
    insertAt_.reset();
  });
  resize(1000, 860);
}

void PrintPreview::BuildMenus() {
  QMenu* file = menuBar()->addMenu("&File");
  file->addAction("&Save...", QKeySequence::Save, this, [this] {
    if (save_) save_();
  });
  file->addSeparator();
  file->addAction("Print...", QKeySequence::Print, this, [this] { Print(true); });
  file->addAction("Present Paper", this, [this] { Print(false); });
  file->addAction("Printer Setting...", this, [this] { PrinterSetting(); });
  file->addAction("Read Print Set...", this, [this] {
    if (!ReadPrintSetFile(session_.printSet, prompt_).ok()) return;
    layout::ListFontFromPrintSet(session_.printSet, setup_);
    layout::StorePrintSetup(setup_, session_.settings2D);
    parameters_.choice.font = layout::PrintSetFont(session_.printSet, "PARA");
    layout::StoreParameterPrint(parameters_.choice, session_.settings2D);
    view_->FramesChanged();
  });
  file->addAction("Save Print Set...", this, [this] {
    layout::ListFontIntoPrintSet(setup_, session_.printSet);
    layout::SetPrintSetFont(parameters_.choice.font, session_.printSet, "PARA");
    SavePrintSetFile(session_.printSet, prompt_);
  });
  file->addSeparator();
  const std::pair<const char*, ScreenFormat> kinds[] = {{"Save Screen as PNG", ScreenFormat::Png},
                                                        {"Save Screen as BMP", ScreenFormat::Bmp},
                                                        {"Save Screen as EMF", ScreenFormat::Emf},
                                                        {"Save Page as PDF", ScreenFormat::Pdf},
                                                        {"Save Page as SVG", ScreenFormat::Svg}};
  for (const auto& [text, format] : kinds)
    file->addAction(text, this, [this, format = format] {
      WithContent(true, [&](const layout::PageContent& c) { SaveScreen(this, format, c, page_.paper, prompt_); });
    });
  file->addSeparator();
  file->addAction("&Close", QKeySequence::Close, this, [this] { close(); });

  QMenu* edit = menuBar()->addMenu("&Edit");
  undoAction_ = edit->addAction("UnDo", QKeySequence::Undo, this, [this] { Undo(); });
  undoAction_->setEnabled(false);
  edit->addSeparator();
  edit->addAction("Change Property...", this, [this] { ChangeProperty(); });
  edit->addAction("Move to Front", this, [this] { MoveSelected(true); });
  edit->addAction("Move to Back", this, [this] { MoveSelected(false); });
  edit->addSeparator();
  edit->addAction("Copy", QKeySequence::Copy, this, [this] {
    if (const auto e = SelectedObject()) clipboard_ = layout::CopyObject(page_.objects, *e);
  });
  edit->addAction("Paste", QKeySequence::Paste, this, [this] {
    if (!clipboard_) return;
    const layout::CopiedObject copied = *clipboard_;
    Insert(copied.kind, [&](layout::LayoutDocument& d) {
      return layout::PasteObject(d, copied, kPasteOffsetCm, page_.paper.widthCm, page_.paper.heightCm);
    });
  });
  edit->addAction("Delete", QKeySequence::Delete, this, [this] { DeleteSelected(); });

  QMenu* add = menuBar()->addMenu("&Add");
  add->addAction("Add Text...", this, [this] { AddText(); });
  add->addAction("Add Line", this, [this] { AddLine(); });
  add->addAction("Add Circle", this, [this] { AddCircle(); });
  add->addAction("Add Rectangle", this, [this] { AddRectangle(); });
  add->addAction("Add Image...", this, [this] { AddImage(); });

  QMenu* page = menuBar()->addMenu("&Page");
  page->addAction("Edit Comment...", this, [this] { EditComment(); });
  page->addAction("Parameter Print...", this, [this] {
    if (!EditParameterPrint(this, session_, parameters_, page_, undo_, prompt_)) return;
    view_->FramesChanged();
    Changed();
  });
  QAction* grid = page->addAction("Print Grid", this, [this](bool on) {
    core::SetNumber(session_.settings2D, layout::kPrintGridKey, on ? 1 : 0);
    view_->FramesChanged();
  });
  grid->setCheckable(true);
  grid->setChecked(core::Number(session_.settings2D, layout::kPrintGridKey) != 0);
  page->addAction("Default Frames", this, [this] {
    const layout::PageFrames defaults = layout::DefaultPageFrames(page_.paper);
    for (std::size_t k = 0; k < layout::kFrameCount; ++k) {
      const auto kind = static_cast<layout::FrameKind>(k);
      if (page_.frames[kind] == defaults[kind]) continue;
      Before(layout::Target::Of(kind), 25);
      page_.frames[kind] = defaults[kind];
    }
    view_->FramesChanged();
    Changed();
  });

  QToolBar* tools = addToolBar("Page");
  tools->setMovable(false);
  tools->addWidget(new QLabel(" Zoom ", this));
  zoom_ = new QComboBox(this);
  zoom_->setObjectName("zoom");
  for (int z : kZooms) zoom_->addItem(QString("%1 %").arg(z), z);
  zoom_->setCurrentIndex(1);
  connect(zoom_, &QComboBox::currentIndexChanged, this, [this](int i) { view_->SetZoom(zoom_->itemData(i).toInt()); });
  tools->addWidget(zoom_);
  tools->addSeparator();
  for (QAction* a : add->actions()) tools->addAction(a);
  tools->addSeparator();
  tools->addAction(undoAction_);
  view_->SetZoom(75);
}

void PrintPreview::RenderFrames(platform::Surface& surface, double dotsPerInch) {
  WithContent(false, [&](const layout::PageContent& content) {
    platform::NoProgress progress;
    layout::RenderPage(surface, content, page_.paper, dotsPerInch, progress);
  });
}

void PrintPreview::WithContent(bool objects, const std::function<void(const layout::PageContent&)>& use) {
  const display::MainViewInput input = layout::PageViewOf(shown_.Input(), session_.settings2D);
  const layout::ParameterSource source = PageSource(doc_);
  const layout::LayoutDocument none;
  const layout::PictureDecoder pictures = platform::qt::DecodePicture;
  use({input, parameters_.list, source, doc_.spectrum.comment, objects ? page_.objects : none, &page_.frames, &pictures,
       &session_.printSet, parameters_.choice.font, parameters_.choice.decimalColumn});
}

void PrintPreview::Print(bool askSetting) {
  const std::string name = doc_.source.path.filename().string();
  const operations::PrintList peaks = operations::PrintListRows(doc_.spectrum, doc_.source.path.string(), {});
  const layout::Paper before = page_.paper;
  WithContent(true, [&](const layout::PageContent& c) {
    PrintPage(this, {c, peaks, name.empty() ? "velk2d" : name}, setup_, prompt_, askSetting);
  });
  PaperChosen(before);
}

void PrintPreview::PrinterSetting() {
  const layout::Paper before = page_.paper;
  if (OpenPrinterSetting(this, setup_)) PaperChosen(before);
}

// The setup is kept; on a new paper the frames that were the old paper's defaults become the new
// one's.
void PrintPreview::PaperChosen(const layout::Paper& before) {
  layout::StorePrintSetup(setup_, session_.settings2D);
  const layout::Paper paper = layout::PageAreaOf(setup_.page);
  if (paper == before) return;
  const layout::PageFrames oldDefaults = layout::DefaultPageFrames(before), newDefaults = layout::DefaultPageFrames(paper);
  for (std::size_t k = 0; k < layout::kFrameCount; ++k)
    if (page_.frames.frame[k] == oldDefaults.frame[k]) page_.frames.frame[k] = newDefaults.frame[k];
  page_.paper = paper;
  view_->SetZoom(view_->Zoom());
  Changed();
}

std::optional<layout::DrawOrderEntry> PrintPreview::SelectedObject() const {
  const auto& selection = view_->Selection();
  if (!selection || selection->what != layout::Target::What::Object) return std::nullopt;
  return selection->object;
}

layout::PagePoint PrintPreview::InsertionPoint() {
  return insertAt_ ? *insertAt_ : layout::PagePoint{page_.paper.widthCm / 2, page_.paper.heightCm / 2};
}

void PrintPreview::Before(const layout::Target& target, int code) { undo_.Before(page_, target, code); }

void PrintPreview::Insert(layout::ObjectKind kind, const std::function<platform::Outcome(layout::LayoutDocument&)>& add) {
  layout::LayoutDocument before = page_.objects;
  const platform::Outcome added = add(page_.objects);
  if (!added.ok()) return Tell(this, added);
  undo_.Push(std::make_unique<layout::ObjectsCommand>(layout::AddUndoCode(kind), std::move(before)));
  view_->ObjectsChanged();
  view_->Select(layout::Target::Of(page_.objects.drawOrder.back()));
  Changed();
}

void PrintPreview::AddText() {
  const std::optional<CodedTextResult> typed = EditCodedText(this, "Text Input", {});
  if (!typed) return;
  layout::LayoutText text = layout::NewText(page_, InsertionPoint(), typed->internal);
  text.RichText = typed->rtf;
  Insert(layout::ObjectKind::Text, [&](layout::LayoutDocument& d) { return layout::AddText(d, text); });
}

void PrintPreview::AddLine() {
  const layout::LayoutLine line = layout::NewLine(page_, InsertionPoint());
  Insert(layout::ObjectKind::Line, [&](layout::LayoutDocument& d) { return layout::AddLine(d, line); });
}

void PrintPreview::AddCircle() {
  const layout::LayoutShape circle = layout::NewCircle(page_, InsertionPoint());
  Insert(layout::ObjectKind::Circle, [&](layout::LayoutDocument& d) { return layout::AddCircle(d, circle); });
}

void PrintPreview::AddRectangle() {
  const layout::LayoutShape rectangle = layout::NewRectangle(page_, InsertionPoint());
  Insert(layout::ObjectKind::Rectangle, [&](layout::LayoutDocument& d) { return layout::AddRectangle(d, rectangle); });
}

void PrintPreview::AddImage() {
  const QString name = QFileDialog::getOpenFileName(this, "Add Image", {},
                                                    "Pictures (*.png *.jpg *.jpeg *.bmp *.svg);;All files (*)");
  if (!name.isEmpty() && !AddImageFile(name.toStdString()))
    QMessageBox::warning(this, "Image Paste Error", "The file is no picture that can be shown.");
}

bool PrintPreview::AddImageFile(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error || size == 0 || size > kLargestPicture) return false;
  std::ifstream in(path, std::ios::binary);
  std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const double aspect = platform::qt::PictureAspect(bytes);
  if (!(aspect > 0)) return false;
  const layout::LayoutImage image = layout::NewImage(page_, InsertionPoint(), layout::MakePictureBytes(std::move(bytes)), aspect);
  Insert(layout::ObjectKind::Image, [&](layout::LayoutDocument& d) { return layout::AddImage(d, image); });
  return true;
}

void PrintPreview::Undo() {
  if (!undo_.Undo(page_)) return;
  view_->FramesChanged();
  view_->ObjectsChanged();
  Changed();
}

void PrintPreview::DeleteSelected() {
  const auto e = SelectedObject();
  if (!e) return;
  Before(layout::Target::Of(*e), layout::DeleteUndoCode(e->kind));
  layout::DeleteObject(page_.objects, *e);
  view_->Select(std::nullopt);
  view_->ObjectsChanged();
  Changed();
}

void PrintPreview::MoveSelected(bool toFront) {
  const auto e = SelectedObject();
  if (!e) return;
  Before(layout::Target::Of(*e), toFront ? 5 : 4);
  toFront ? layout::MoveToFront(page_.objects, *e) : layout::MoveToBack(page_.objects, *e);
  view_->update();
  Changed();
}

void PrintPreview::ChangeProperty() {
  const auto& selection = view_->Selection();
  if (!selection) return;
  if (selection->what == layout::Target::What::Frame) {
    layout::PageFrame frame = page_.frames[selection->frame];
    if (!EditFrameProperty(this, frame, FrameName(selection->frame))) return;
    Before(*selection, FramePropertyCode(selection->frame));
    page_.frames[selection->frame] = frame;
    view_->FramesChanged();
    return Changed();
  }
  const layout::DrawOrderEntry e = selection->object;
  if (!layout::IsLive(page_.objects, e)) return;
  const auto i = static_cast<std::size_t>(e.index);
  layout::LayoutDocument changed = page_.objects;
  bool accepted = false;
  switch (e.kind) {
    case layout::ObjectKind::Text: {
      layout::LayoutText& t = changed.texts[i];
      const auto typed = EditCodedText(this, "Text Input", t.Text, t.RichText, {t.FontName, t.Points, t.Color});
      if ((accepted = typed.has_value())) t.Text = typed->internal, t.RichText = typed->rtf;
      break;
    }
    case layout::ObjectKind::Line: accepted = EditArrowProperty(this, changed.lines[i]); break;
    case layout::ObjectKind::Circle: accepted = EditShapeProperty(this, changed.circles[i], true); break;
    case layout::ObjectKind::Rectangle: accepted = EditShapeProperty(this, changed.rectangles[i], false); break;
    case layout::ObjectKind::Image: break;
  }
  if (!accepted) return;
  Before(*selection, layout::ChangeUndoCode(e.kind));
  page_.objects = std::move(changed);
  view_->ObjectsChanged();
  Changed();
}

void PrintPreview::EditComment() {
  model::Spectrum2D& s = doc_.spectrum;
  const auto typed = EditCodedText(this, "Edit Comment", s.comment, s.commentRtf, {"Sans Serif", 12, 0});
  if (!typed) return;
  s.comment = typed->internal;
  s.commentRtf = typed->rtf;
  view_->FramesChanged();
  Changed();
}

void PrintPreview::SetZoom(int percent) {
  const int i = zoom_->findData(percent);
  if (i >= 0) zoom_->setCurrentIndex(i);
}

void PrintPreview::ChangeObjects(int undoCode, const std::function<void(layout::EditedPage&)>& change) {
  undo_.Push(std::make_unique<layout::ObjectsCommand>(undoCode, page_.objects));
  change(page_);
  view_->ObjectsChanged();
  Changed();
}

QString PrintPreview::UndoText() const { return undoAction_->text(); }
QString PrintPreview::StatusText() const { return status_->text(); }

void PrintPreview::Changed() {
  layout::StorePage(page_, doc_.spectrum.carried);
  document::LoseCleanMark(doc_.undo);
  undoAction_->setText(QString::fromUtf8(undo_.Caption().data(), static_cast<qsizetype>(undo_.Caption().size())));
  undoAction_->setEnabled(undo_.CanUndo());
}

}  // namespace velk::gui
