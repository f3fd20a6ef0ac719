#include "operations/tool.h"

#include <string>

#include "operations/messages.h"

namespace velk::operations {

bool Tool::Resolve() {
  using platform::Answer;
  if (CancelsWithoutAsking()) {
    Cancel();
    return false;
  }
  if (!fixEnabled_) {
    const platform::Message m{"", std::string(NotFixable()) + "\n" + std::string(messages::kGoNext),
                              platform::Buttons::OkCancel, platform::Icon::Warning, true};
    if (host_.prompt.Ask(m) != Answer::Ok) return true;
    Cancel();
    return false;
  }
  const platform::Message m{"", std::string(FixQuestion()), platform::Buttons::YesNoCancel, platform::Icon::Question,
                            false};
  switch (host_.prompt.Ask(m)) {
    case Answer::Yes: Fix(); return false;
    case Answer::No: Cancel(); return false;
    default: return true;
  }
}

void Tool::Leave() {
  host_.view.ToolMode = display::kNoTool;
  host_.view.MouseMode = display::kNoDrag;
  host_.view.ToolCode = 0;
}

bool Tool::StartFix(UndoKind kind) {
  if (!fixEnabled_) return false;
  if (host_.pushSnapshotUndo) host_.pushSnapshotUndo(kind);
  Leave();
  return true;
}

void Tool::FinishFix() {
  if (!previewPending_) Call(host_.markUnsaved);
  Call(host_.dataFixed);
}

bool ActiveTool::Resolve(display::DisplayState& view) {
  bool declined = false;
  display::ToolEnders enders;
  if (tool) enders[tool->Mode()] = [this] { return tool->Resolve(); };
  display::ResolveActiveTool(view, enders, declined);
  if (!declined) tool.reset();
  return declined;
}

bool ActiveTool::MayOpen(display::DisplayState& view, std::int16_t mode) {
  if (view.Painting || view.ToolMode == mode) return false;
  return !Resolve(view);
}

std::string_view SaveRecommendation(const model::Spectrum2D& s) {
  return s.Modified == 1 ? messages::kRecommendRealOnly : std::string_view();
}

}  // namespace velk::operations
