#pragma once
// The function expressions of the five window types: the formula text, in the text codes, that the
// window dialog shows and the page prints as the window's description. Each type has its initial
// expression and the current one, which the person edits.
#include <array>
#include <string>

namespace velk::processing {

inline constexpr int kWindowTypes = 5;

struct WindowExpressions {
  std::array<std::string, kWindowTypes> initial;
  std::array<std::string, kWindowTypes> current;
};

// The program's own wording of the expressions; the current ones start as the initial ones.
WindowExpressions DefaultWindowExpressions();

// "Set Initial Expression": the current expression of the type is its initial one again. A type
// outside the five changes nothing.
void SetInitialExpression(WindowExpressions& expressions, int type);
void SetCurrentExpression(WindowExpressions& expressions, int type, std::string text);
const std::string& CurrentExpression(const WindowExpressions& expressions, int type);

}  // namespace velk::processing
