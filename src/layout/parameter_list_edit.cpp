#include "layout/parameter_list_edit.h"

#include <utility>

namespace velk::layout {
namespace {

void Remember(ParameterListEdit& edit) {
  edit.before = edit.list;
  edit.selectedBefore = edit.selected;
  edit.canUndo = true;
  edit.changed = true;
}

void Insert(ParameterListEdit& edit, std::size_t at, const ParameterLine& line) {
  Remember(edit);
  edit.list.insert(edit.list.begin() + static_cast<std::ptrdiff_t>(at), line);
  edit.selected = at;
}

bool HasSelection(const ParameterListEdit& edit) { return edit.selected && *edit.selected < edit.list.size(); }

}  // namespace

ParameterListEdit StartParameterListEdit(ParameterList list) {
  ParameterListEdit edit;
  edit.list = std::move(list);
  return edit;
}

void AddParameterAbove(ParameterListEdit& edit, const ParameterLine& line) {
  Insert(edit, HasSelection(edit) ? *edit.selected : 0, line);
}

void AddParameterBelow(ParameterListEdit& edit, const ParameterLine& line) {
  Insert(edit, HasSelection(edit) ? *edit.selected + 1 : edit.list.size(), line);
}

void MoveParameterUp(ParameterListEdit& edit) {
  if (!HasSelection(edit) || *edit.selected == 0) return;
  Remember(edit);
  std::swap(edit.list[*edit.selected], edit.list[*edit.selected - 1]);
  --*edit.selected;
}

void MoveParameterDown(ParameterListEdit& edit) {
  if (!HasSelection(edit) || *edit.selected + 1 >= edit.list.size()) return;
  Remember(edit);
  std::swap(edit.list[*edit.selected], edit.list[*edit.selected + 1]);
  ++*edit.selected;
}

void DeleteParameter(ParameterListEdit& edit) {
  if (!HasSelection(edit)) return;
  Remember(edit);
  edit.list.erase(edit.list.begin() + static_cast<std::ptrdiff_t>(*edit.selected));
  if (edit.list.empty()) edit.selected.reset();
  else if (*edit.selected >= edit.list.size()) edit.selected = edit.list.size() - 1;
}

void UndoParameterEdit(ParameterListEdit& edit) {
  if (!edit.canUndo) return;
  edit.list = edit.before;
  edit.selected = edit.selectedBefore;
  edit.canUndo = false;
}

void ReplaceParameterList(ParameterListEdit& edit, ParameterList list) {
  Remember(edit);
  edit.list = std::move(list);
  edit.selected.reset();
}

std::optional<platform::Message> CloseQuestion(const ParameterListEdit& edit) {
  if (!edit.changed) return std::nullopt;
  return platform::Message{"Confirmation", "The List has been changed! Anyway, close?", platform::Buttons::YesNo,
                           platform::Icon::Question, false};
}

}  // namespace velk::layout
