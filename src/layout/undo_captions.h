#pragma once
// The caption of the page editor's one undo step, by the code of the step.
#include <string_view>

namespace velk::layout {

// "UnDo(Add Line)" and so on; "UnDo" for a code without a caption of its own.
std::string_view UndoCaption(int code);
// While the text editor is active: "UnDo(Text Input)" after exactly one edit, else "UnDo".
std::string_view TextEditorUndoCaption(int editCount);

}  // namespace velk::layout
