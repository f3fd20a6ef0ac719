#pragma once
// INADEQUATE in the main window: "Change Inadequate Spectrum", "Direction of Slope 2 Line" and
// "Extend Folded Data", with their windows; the window's "UnDo" takes the extension back. The
// slope 2 line itself is drawn with the peak marks over the contour while the set is treated as
// INADEQUATE.
#include <QObject>
#include <functional>

#include "document/session.h"
#include "gui/spectrum_view.h"
#include "platform/prompt.h"

class QAction;
class QMenu;

namespace velk::gui {

class InadequateMenu final : public QObject {
  Q_OBJECT

 public:
  // The three entries go at the end of the given menu.
  InadequateMenu(QMenu& menu, document::Session& session, display::ToolBox& tools, SpectrumView& view,
                 platform::Prompt& prompt, std::function<bool()> busy);

  // Each command refuses during a paint and ends when the open tool stays.
  void ChangeInadequateSpectrum();
  void SlopeDirection();
  void ExtendFoldedData();
  // The entries as the set's two words allow them.
  void ShowState();

 private:
  bool MayStart();

  document::Session& session_;
  display::ToolBox& tools_;
  SpectrumView& view_;
  platform::Prompt& prompt_;
  std::function<bool()> busy_;  // a file being read: no command
  QAction* change_ = nullptr;
  QAction* direction_ = nullptr;
  QAction* extend_ = nullptr;
};

}  // namespace velk::gui
