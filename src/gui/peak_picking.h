#pragma once
// Peak picking in the main window: the "Peak" menu and its tool bar, the peak tool of mode 20 in
// the window's tool box, the area commands, the choice of threshold and of the kind of top, the
// peak list window. The window makes one and hands it its parts; the window's own "UnDo" takes
// the peak edits back and tells this one through Refresh.
#include <QObject>
#include <QPointer>
#include <cstdint>
#include <functional>

#include "document/session.h"
#include "gui/peak_list_window.h"
#include "gui/spectrum_view.h"
#include "operations/peak_top.h"
#include "platform/prompt.h"

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;
class QToolBar;

namespace velk::gui {

class InadequateMenu;

class PeakPicking final : public QObject {
  Q_OBJECT

 public:
  // `busy` tells when the window is reading a file or has an FID in the FT window: no command then.
  PeakPicking(QMainWindow& window, document::Session& session, display::ToolBox& tools, SpectrumView& view,
              platform::Prompt& prompt, std::function<bool()> busy);

  // Mode 20 with one of the mouse's sub-modes (PeakSubMode); the open tool is resolved first.
  // The add tools are refused with 1000 peaks listed, delete and move with none.
  bool Enter(std::int16_t subMode);
  // "Pick All Area", "Pick Displayed Area", "Delete All": they enter mode 20 too. Return the
  // number of peaks added, or whether the list was emptied.
  int PickAllArea();
  int PickDisplayedArea();
  bool DeleteAll();
  // "Close": the mode ends.
  void Close();
  // "PeaK List": the list window, sorted by F2.
  PeakListWindow* ShowList();
  // The list window, the marks and the entries follow a list or data set changed elsewhere (an
  // undo of the window).
  void Refresh();

  // "Lower Limit" (the contour's, the default) or "Auto" (from the noise of the spectrum).
  void SetAutoThreshold(bool automatic);
  float Threshold() const;
  // "on Data Point" or "Vertual Peak Top"; kept as "PEAK PICK MODE".
  void SetTopKind(operations::PeakMode kind);
  operations::PeakMode TopKind() const { return topKind_; }

  QMenu* Menu() const { return menu_; }
  InadequateMenu& Inadequate() const { return *inadequate_; }

 signals:
  void listChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildMenus(QMainWindow& window);
  bool Ready();
  bool SetMode(std::int16_t subMode);
  bool EnterKeeping();
  void ShowState();

  document::Session& session_;
  display::ToolBox& tools_;
  SpectrumView& view_;
  platform::Prompt& prompt_;
  std::function<bool()> busy_;
  operations::PeakMode topKind_ = operations::kPeakOnDataPoint;
  bool autoThreshold_ = false;
  QMenu* menu_ = nullptr;
  QToolBar* bar_ = nullptr;
  QActionGroup* subModes_ = nullptr;
  QPointer<PeakListWindow> list_;
  InadequateMenu* inadequate_ = nullptr;
};

}  // namespace velk::gui
