#pragma once
// The window "Print Preview": the page of the data set at a chosen zoom, where the frames and the
// objects are selected, moved and resized with the mouse; objects are added, ordered, copied,
// deleted and their properties changed; every change can be undone while the window is open. The
// page goes into the data set at once, so that saving the data set saves it.
#include <QMainWindow>
#include <functional>
#include <optional>

#include "document/session.h"
#include "gui/page_view.h"
#include "gui/spectrum_view.h"
#include "layout/page_undo.h"
#include "layout/parameter_print.h"
#include "layout/paste_object.h"
#include "layout/print_setup.h"
#include "platform/prompt.h"
#include "layout/render_page.h"

class QAction;
class QComboBox;
class QLabel;

namespace velk::gui {

class PrintPreview final : public QMainWindow {
  Q_OBJECT

 public:
  // The page shows the session's spectrum as `shown` draws it. `save` is the main window's "Save"
  // (it asks for the file name).
  PrintPreview(document::Session& session, const SpectrumView& shown, std::function<bool()> save,
               platform::Prompt& prompt, QWidget* parent);

  const layout::EditedPage& Page() const { return page_; }
  const layout::PrintedParameters& Parameters() const { return parameters_; }
  PageView& View() { return *view_; }
  QString UndoText() const;
  QString StatusText() const;

  // The commands, as the menus run them. New objects come at the point of the last right click on
  // the page, or at the page's centre.
  void AddText();
  void AddLine();
  void AddCircle();
  void AddRectangle();
  void AddImage();
  bool AddImageFile(const std::string& path);
  void Undo();
  void DeleteSelected();
  void MoveSelected(bool toFront);
  void ChangeProperty();
  void EditComment();
  void SetZoom(int percent);
  // A change of the objects made by the caller (a script, the screenshots), undone like the others.
  void ChangeObjects(int undoCode, const std::function<void(layout::EditedPage&)>& change);

 private:
  void BuildMenus();
  void Insert(layout::ObjectKind kind, const std::function<platform::Outcome(layout::LayoutDocument&)>& add);
  std::optional<layout::DrawOrderEntry> SelectedObject() const;
  layout::PagePoint InsertionPoint();
  void Before(const layout::Target& target, int code);
  void Changed();
  void RenderFrames(platform::Surface& surface, double dotsPerInch);
  // Calls back with the page's content: with its objects, or without them for the frames' picture.
  void WithContent(bool objects, const std::function<void(const layout::PageContent&)>& use);
  void Print(bool askSetting);
  void PrinterSetting();
  void PaperChosen(const layout::Paper& before);

  document::Session& session_;
  document::Document& doc_;
  std::function<bool()> save_;
  platform::Prompt& prompt_;
  layout::PrintSetup setup_;
  const SpectrumView& shown_;
  layout::PrintedParameters parameters_;
  layout::EditedPage page_;
  layout::PageUndo undo_;
  std::optional<layout::CopiedObject> clipboard_;
  std::optional<layout::PagePoint> insertAt_;
  PageView* view_ = nullptr;
  QAction* undoAction_ = nullptr;
  QComboBox* zoom_ = nullptr;
  QLabel* status_ = nullptr;
};

}  // namespace velk::gui
