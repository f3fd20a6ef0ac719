#include "document/undo_stack.h"

#include <map>

namespace velk::document {

std::string CaptionOf(int kind) {
  // The spellings are the program's own and stay as they are.
  static const std::map<int, const char*> kCaptions{
      {1, "UnDo(Delete Peak)"},
      {2, "UnDo(Add Peak)"},
      {3, "UnDo(Delete All)"},
      {4, "UnDo(Pick All Area)"},
      {5, "UnDo(Pick Displayed Area)"},
      {6, "UnDo(Move Peak Top)"},
      {7, "UnDo(F1 Phase Correction)"},
      {8, "UnDo(F2 Phase Correction)"},
      {9, "UnDo(F1 Base Line Correction)"},
      {10, "UnDo(F2 Base Line Correction)"},
      {11, "UnDo(Add Point)"},
      {12, "UnDo(Delete Point)"},
      {13, "UnDo(Delete All Points)"},
      {15, "UnDo(Symmetrize)"},
      {16, "UnDo(Change Parameter)"},
      {21, "UnDo(Change X:Y)"},
      {26, "UnDo(Tnadwquate Extension)"},
      {31, "UnDo(Add Expanded View)"},
      {32, "UnDo(Delete Expanded View)"},
      {33, "UnDo(Position of Expanded View)"},
      {34, "UnDo(Change Expanded Area)"},
      {35, "UnDo(Change Property of Expanded View)"},
      {38, "UnDo(Turn OFF the Expanded View)"},
      {41, "UnDo(2D Refernec Setting)"},
      {51, "UnDo(F1-1D Refernec Setting)"},
      {52, "UnDo(F2-1D Refernec Setting)"},
      {101, "UnDo(F1-1D Edit)"},
      {102, "UnDo(F2-1D Edit)"},
      {133, "UnDo(Change Grid)"},
  };
  const auto found = kCaptions.find(kind);
  return found == kCaptions.end() ? "UnDo" : found->second;
}

std::string UndoCaption(const UndoStack& stack) {
  return CanUndo(stack) ? CaptionOf(stack.records.back().Kind) : "UnDo";
}

bool CanUndo(const UndoStack& stack) { return !stack.records.empty() && stack.records.back().Kind > 0; }

void PushUndo(UndoStack& stack, UndoRecord record) {
  // Without redo, a saved state above the present depth can never come back.
  if (stack.cleanDepth && *stack.cleanDepth > stack.records.size()) stack.cleanDepth.reset();
  stack.records.push_back(std::move(record));
}

const UndoRecord* TopUndo(const UndoStack& stack) { return stack.records.empty() ? nullptr : &stack.records.back(); }

void PopUndo(UndoStack& stack) {
  if (!stack.records.empty()) stack.records.pop_back();
}

void ClearUndo(UndoStack& stack) {
  std::error_code ignored;
  for (const UndoRecord& record : stack.records)
    if (!record.FileName.empty()) std::filesystem::remove(record.FileName, ignored);
  stack.records.clear();
  stack.cleanDepth = 0;
}

bool AtCleanMark(const UndoStack& stack) { return stack.cleanDepth == stack.records.size(); }

void SetCleanMark(UndoStack& stack) { stack.cleanDepth = stack.records.size(); }

void LoseCleanMark(UndoStack& stack) { stack.cleanDepth.reset(); }

}  // namespace velk::document
