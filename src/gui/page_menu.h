#pragma once
// The page commands of the main window's File menu: print (with "Printer Setting" first, or on
// the present paper), "Printer Setting", and "Save Screen as ..." the PNG, BMP, EMF, PDF and SVG
// pictures of the page of the spectrum shown. The page is built from what the window shows.
#include <memory>

#include "document/session.h"
#include "gui/page_output.h"
#include "gui/spectrum_view.h"
#include "layout/page_edit.h"
#include "layout/parameter_print.h"

class QMenu;
class QWidget;

namespace velk::gui {

// The parameters' source of the document's spectrum, printed now.
layout::ParameterSource PageSource(const document::Document& document);

// The page of the spectrum the window shows, with the objects and frames the data set keeps for
// it on the given paper, in the look of the session's print set, and everything it refers to.
struct ShownPage {
  ShownPage(const document::Session& session, const SpectrumView& view, const layout::Paper& paper,
            layout::PrintedParameters parameters = {});
  ShownPage(const ShownPage&) = delete;
  ShownPage& operator=(const ShownPage&) = delete;

  display::MainViewInput view;
  layout::PrintedParameters parameters;
  layout::ParameterSource source;
  layout::EditedPage page;
  layout::PictureDecoder pictures;
  layout::PageContent content;
  operations::PrintList peakList;
};

// Adds the page commands to the menu; each does nothing while the view shows no spectrum. The
// paper and printer chosen are kept in the session's 2D settings.
void AddPageOutputActions(QMenu& menu, QWidget* window, document::Session& session, const SpectrumView& view);

}  // namespace velk::gui
