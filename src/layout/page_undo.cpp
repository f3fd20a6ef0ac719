#include "layout/page_undo.h"

#include "layout/undo_captions.h"

namespace velk::layout {

void PageUndo::Before(const EditedPage& page, const Target& target, int code) {
  if (target.what == Target::What::Frame) {
    Push(std::make_unique<FrameCommand>(code, target.frame, page.frames[target.frame]));
  } else {
    Push(std::make_unique<ObjectsCommand>(code, page.objects));
  }
}

std::string_view PageUndo::Caption() const {
  return commands_.empty() ? std::string_view("UnDo") : UndoCaption(commands_.back()->code());
}

bool PageUndo::Undo(EditedPage& page) {
  if (commands_.empty()) return false;
  commands_.back()->Undo(page);
  commands_.pop_back();
  return true;
}

}  // namespace velk::layout
