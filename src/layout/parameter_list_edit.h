#pragma once
// The rules of editing the printed page's parameter list: entries from the list of all parameters
// go above or below the selected line, lines move up and down or are deleted, and the last change
// can be taken back once. The changed flag is what asks before the editor closes.
#include <cstddef>
#include <optional>

#include "layout/parameter_file.h"
#include "platform/message.h"

namespace velk::layout {

struct ParameterListEdit {
  ParameterList list;
  std::optional<std::size_t> selected;  // the selected line of `list`
  ParameterList before;                 // the list before the last change, for one "UnDo"
  std::optional<std::size_t> selectedBefore;
  bool canUndo = false;
  bool changed = false;
};

ParameterListEdit StartParameterListEdit(ParameterList list);
// Inserts `line` above (or below) the selected line; with nothing selected it goes to the top (or
// the end). The new line becomes the selection.
void AddParameterAbove(ParameterListEdit& edit, const ParameterLine& line);
void AddParameterBelow(ParameterListEdit& edit, const ParameterLine& line);
// Moving the first line up or the last line down does nothing and changes nothing.
void MoveParameterUp(ParameterListEdit& edit);
void MoveParameterDown(ParameterListEdit& edit);
void DeleteParameter(ParameterListEdit& edit);
// Takes back the last change; a second UnDo does nothing.
void UndoParameterEdit(ParameterListEdit& edit);
// A list read from a file replaces the edited one; it counts as a change that UnDo takes back.
void ReplaceParameterList(ParameterListEdit& edit, ParameterList list);
// What leaving the editor without taking the list asks: "The List has been changed! Anyway,
// close?" under "Confirmation" (Yes closes), nothing when the list is unchanged.
std::optional<platform::Message> CloseQuestion(const ParameterListEdit& edit);

}  // namespace velk::layout
