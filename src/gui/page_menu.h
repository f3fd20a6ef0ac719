#pragma once
// The page commands of the main window's File menu: print (with "Printer Setting" first, or on
// the present paper), "Printer Setting", and "Save Screen as ..." the PNG, BMP, EMF, PDF and SVG
// pictures of the page of the spectrum shown. The page is built from what the window shows.
#include <memory>

#include "document/session.h"
#include "gui/page_output.h"
#include "gui/spectrum_view.h"

class QMenu;
class QWidget;

namespace velk::gui {

// The page of the spectrum the window shows, with everything it refers to.
struct ShownPage {
  ShownPage(const document::Session& session, const ViewData& data);
  std::unique_ptr<display::MainViewInput> view;
  layout::ParameterList parameters;
  std::unique_ptr<layout::ParameterSource> source;
  layout::LayoutDocument objects;
  std::unique_ptr<layout::PageContent> content;
  operations::PrintList peakList;
};

// Adds the page commands to the menu; each does nothing while no spectrum is shown. The paper and
// printer chosen are kept in the session's 2D settings.
void AddPageOutputActions(QMenu& menu, QWidget* window, document::Session& session, const ViewData& data);

}  // namespace velk::gui
