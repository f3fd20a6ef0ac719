#pragma once
// The page editor's undo: each change pushes a command that knows how to put back what it changed,
// with the code that names it in the menu ("UnDo(Add Circle)"). The window keeps them as long as it
// is open; undoing pops them newest first.
#include <memory>
#include <string_view>
#include <vector>

#include "layout/page_edit.h"

namespace velk::layout {

class PageCommand {
 public:
  explicit PageCommand(int code) : code_(code) {}
  virtual ~PageCommand() = default;
  virtual void Undo(EditedPage& page) const = 0;
  int code() const { return code_; }

 private:
  int code_;
};

// A change of the objects (added, deleted, moved, reordered, their properties): the objects as
// they were. Pictures are shared, not copied.
class ObjectsCommand final : public PageCommand {
 public:
  ObjectsCommand(int code, LayoutDocument before) : PageCommand(code), before_(std::move(before)) {}
  void Undo(EditedPage& page) const override { page.objects = before_; }

 private:
  LayoutDocument before_;
};

// A change of one frame: the frame as it was.
class FrameCommand final : public PageCommand {
 public:
  FrameCommand(int code, FrameKind kind, PageFrame before) : PageCommand(code), kind_(kind), before_(before) {}
  void Undo(EditedPage& page) const override { page.frames[kind_] = before_; }

 private:
  FrameKind kind_;
  PageFrame before_;
};

class PageUndo {
 public:
  void Push(std::unique_ptr<PageCommand> command) { commands_.push_back(std::move(command)); }
  // Records the page as it stands before a change of the target (an object or a frame).
  void Before(const EditedPage& page, const Target& target, int code);
  bool CanUndo() const { return !commands_.empty(); }
  // "UnDo(Move Line)" for the newest command, the plain "UnDo" when there is none.
  std::string_view Caption() const;
  // Puts back the newest change; false when there was none.
  bool Undo(EditedPage& page);
  std::size_t size() const { return commands_.size(); }

 private:
  std::vector<std::unique_ptr<PageCommand>> commands_;
};

}  // namespace velk::layout
