#include "layout/page_store.h"

#include "layout/layout_sections.h"

namespace velk::layout {

EditedPage ReadStoredPage(const model::Carried2D& carried, const Paper& paper) {
  return {ReadLayoutSections(carried.fileSections, LayoutPage::Page2D), ReadPageFrames(carried.printSet, paper), paper};
}

void StorePage(const EditedPage& page, model::Carried2D& carried) {
  WriteLayoutSections(page.objects, LayoutPage::Page2D, carried.fileSections);
  WritePageFrames(page.frames, carried.printSet);
}

}  // namespace velk::layout
