#include "layout/undo_captions.h"

#include <utility>

namespace velk::layout {

std::string_view UndoCaption(int code) {
  // The spellings, "Graound" among them, are the menu's own.
  static constexpr std::pair<int, std::string_view> kCaptions[] = {
      {0, "UnDo(Change Text)"},
      {1, "UnDo(Delete Text)"},
      {2, "UnDo(Add Text)"},
      {4, "UnDo(Move to Back)"},
      {5, "UnDo(Move to Front)"},
      {9, "UnDo(Move Line)"},
      {10, "UnDo(Delete Line)"},
      {11, "UnDo(Change Line)"},
      {12, "UnDo(Add Line)"},
      {13, "UnDo(Add Circle)"},
      {14, "UnDo(Delete Circle)"},
      {15, "UnDo(Change Circle)"},
      {16, "UnDo(Add Rectangle)"},
      {17, "UnDo(Delete Rectangle)"},
      {18, "UnDo(Change Rectangle)"},
      {19, "UnDo(Add Image)"},
      {20, "UnDo(Delete Image)"},
      {21, "UnDo(Move Image(Parameter))"},
      {22, "UnDo(Enlarge/reduce Image(Parameter))"},
      {25, "UnDo(Size of Frame)"},
      {30, "UnDo(Add Expanded View)"},
      {31, "UnDo(Delete Expanded View)"},
      {32, "UnDo(Position of Expanded View)"},
      {33, "UnDo(Change Expanded Area)"},
      {34, "UnDo(Change Property of Expanded View)"},
      {37, "UnDo(Turn OFF the Expanded View)"},
      {40, "UnDo(Move F1 Scale)"},
      {41, "UnDo(Move F1 Spectrum)"},
      {42, "UnDo(Move F2 Scale)"},
      {43, "UnDo(Move F2 Spectrum)"},
      {100, "UnDo(Print Property)"},
      {101, "UnDo(Print Parameter)"},
      {102, "UnDo(2D Back Graound and Frame)"},
      {103, "UnDo(1D(F2) Back Graound and Frame)"},
      {104, "UnDo(1D(F1) Back Graound and Frame)"},
      {105, "UnDo(Level Back Graound and Frame)"},
  };
  for (const auto& [key, caption] : kCaptions)
    if (key == code) return caption;
  return "UnDo";
}

std::string_view TextEditorUndoCaption(int editCount) { return editCount == 1 ? "UnDo(Text Input)" : "UnDo"; }

}  // namespace velk::layout
