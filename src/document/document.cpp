#include "document/document.h"

namespace velk::document {

void Replace(Document& present, Document&& fresh) {
  ClearUndo(present.undo);
  fresh.contour = present.contour;
  fresh.grid = present.grid;
  present = std::move(fresh);
}

formats::DataSetRef RefOf(const Document& d) {
  formats::DataSetRef ref;
  ref.words = d.words;
  if (DimensionOf(d) == 1) {
    ref.oneD = &d.oneD;
    return ref;
  }
  ref.twoD = &d.spectrum;
  ref.companionF2 = &d.companionF2;
  ref.companionF1 = &d.companionF1;
  return ref;
}

}  // namespace velk::document
