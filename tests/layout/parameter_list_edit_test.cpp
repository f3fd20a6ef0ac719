// Editing the parameter list: where added lines land, moves at the ends, delete keeps a valid
// selection, and one-level undo.
#include <gtest/gtest.h>

#include "layout/parameter_list_edit.h"

namespace velk::layout {
namespace {

std::string Kinds(const ParameterList& list) {
  std::string s;
  for (const auto& l : list) s += l.Kind;
  return s;
}

ParameterList Abc() { return {{"A", {}, {}}, {"B", {}, {}}, {"C", {}, {}}}; }

TEST(ParameterListEdit, AddsAroundTheSelectionOrAtTheEnds) {
  auto edit = StartParameterListEdit(Abc());
  AddParameterAbove(edit, {"X", {}, {}});
  AddParameterBelow(edit, {"Y", {}, {}});
  EXPECT_EQ(Kinds(edit.list), "XYABC") << "nothing selected: above goes to the top, then below the new line";
  edit.selected.reset();
  AddParameterBelow(edit, {"Z", {}, {}});
  EXPECT_EQ(Kinds(edit.list), "XYABCZ");
  edit.selected = 3;
  AddParameterAbove(edit, {"W", {}, {}});
  EXPECT_EQ(Kinds(edit.list), "XYAWBCZ");
  EXPECT_EQ(edit.selected, 3u);
  EXPECT_TRUE(edit.changed);
}

TEST(ParameterListEdit, MovesStopAtTheEndsAndChangeNothingThere) {
  auto edit = StartParameterListEdit(Abc());
  edit.selected = 0;
  MoveParameterUp(edit);
  EXPECT_FALSE(edit.changed);
  EXPECT_FALSE(edit.canUndo);
  EXPECT_FALSE(CloseQuestion(edit)) << "an unchanged list closes without a question";
  MoveParameterDown(edit);
  MoveParameterDown(edit);
  EXPECT_EQ(Kinds(edit.list), "BCA");
  EXPECT_EQ(edit.selected, 2u);
  MoveParameterDown(edit);
  EXPECT_EQ(Kinds(edit.list), "BCA");
  UndoParameterEdit(edit);
  EXPECT_EQ(Kinds(edit.list), "BAC") << "undo takes back the last move only";
  EXPECT_EQ(edit.selected, 1u);
  UndoParameterEdit(edit);
  EXPECT_EQ(Kinds(edit.list), "BAC") << "one level of undo";
}

TEST(ParameterListEdit, DeleteKeepsASelectionInsideTheList) {
  auto edit = StartParameterListEdit(Abc());
  edit.selected = 2;
  DeleteParameter(edit);
  EXPECT_EQ(Kinds(edit.list), "AB");
  EXPECT_EQ(edit.selected, 1u);
  DeleteParameter(edit);
  DeleteParameter(edit);
  EXPECT_TRUE(edit.list.empty());
  EXPECT_FALSE(edit.selected.has_value());
  DeleteParameter(edit);  // nothing left: no change, no crash
  UndoParameterEdit(edit);
  EXPECT_EQ(Kinds(edit.list), "A");
  edit.selected = 7;  // a stale selection moves nothing
  MoveParameterUp(edit);
  EXPECT_EQ(Kinds(edit.list), "A");
}

TEST(ParameterListEdit, AReadListIsAChangeThatUndoTakesBack) {
  auto edit = StartParameterListEdit(Abc());
  ReplaceParameterList(edit, {{"Q", {}, {}}});
  EXPECT_TRUE(edit.changed);
  UndoParameterEdit(edit);
  EXPECT_EQ(Kinds(edit.list), "ABC");
  const auto question = CloseQuestion(edit);
  ASSERT_TRUE(question) << "a change taken back still asks, as the list was worked on";
  EXPECT_EQ(question->title, "Confirmation");
  EXPECT_EQ(question->text, "The List has been changed! Anyway, close?");
}

}  // namespace
}  // namespace velk::layout
