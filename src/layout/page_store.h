#pragma once
// A 2D data set's page as the editor takes it and gives it back: the objects from the layout
// sections of the file, the frames from the print set block.
#include "layout/page_edit.h"
#include "model/carried.h"

namespace velk::layout {

EditedPage ReadStoredPage(const model::Carried2D& carried, const Paper& paper);
void StorePage(const EditedPage& page, model::Carried2D& carried);

}  // namespace velk::layout
