#pragma once
// The tools of the main window that change a finished spectrum (phase, baseline, symmetrization,
// reference). Each opens from a menu command, works on backups of the data, and ends by "Fix" or
// "Cancel"; when another command starts while one is open, the tool decides by its own rules
// whether it cancels, fixes or asks. The program around the tools (the document with its undo
// stack and snapshot files, the window) is reached only through a ToolHost.
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "display/display_state.h"
#include "model/spectrum.h"
#include "operations/reference.h"
#include "operations/undo_kinds.h"
#include "platform/prompt.h"

namespace velk::operations {

struct ToolHost {
  model::Spectrum2D& spectrum;
  display::DisplayState& view;
  platform::Prompt& prompt;
  model::Spectrum1D& traceF2;  // the high resolution 1D traces beside the contour
  model::Spectrum1D& traceF1;
  int pulseModeClass = 0;
  int threads = 0;  // 0: every core
  // At entry the whole data set goes to the live snapshot file.
  std::function<void()> writeSnapshot;
  // At "Fix": a record of the kind with a copy of the live snapshot (none when no undo file is free).
  std::function<void(UndoKind)> pushSnapshotUndo;
  // A reference change: the record keeps the axes before it.
  std::function<void(const ReferenceState&)> pushReferenceUndo;
  // "Cancel" of a tool that recorded as it went: its `count` newest records go again.
  std::function<void(int count)> dropUndo;
  // A 1D reference change of a trace beside the contour: the record keeps the trace's scale from
  // before (as ScaleRecord writes it).
  std::function<void(UndoKind, const std::array<double, 4>&)> pushTraceReferenceUndo;
  // The data differ from the saved file.
  std::function<void()> markUnsaved;
  // The data changed for good: projections rebuilt, contour made anew.
  std::function<void()> dataFixed;
};

class Tool {
 public:
  explicit Tool(ToolHost& host) : host_(host) { previewPending_ = 1; }
  virtual ~Tool() = default;
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  virtual std::int16_t Mode() const = 0;
  // 1 while the panel shows values that the data do not yet hold.
  bool PreviewPending() const { return previewPending_; }
  bool FixEnabled() const { return fixEnabled_; }

  virtual void Preview() = 0;
  virtual void Reset() = 0;
  virtual void Fix() = 0;
  virtual void Cancel() = 0;

  // Another command wants to start: the tool is cancelled, fixed or asks. True when the user
  // chose to stay in the tool.
  virtual bool Resolve();

 protected:
  virtual bool CancelsWithoutAsking() const { return previewPending_; }
  virtual std::string_view FixQuestion() const = 0;
  virtual std::string_view NotFixable() const = 0;
  void Leave();
  // "Fix" of a tool that changed the data: refused while "Fix" is disabled; otherwise the undo
  // record of the kind, and the mode ends. FinishFix then marks the data unsaved when the
  // panel's values were applied, and has the views rebuilt.
  bool StartFix(UndoKind kind);
  void FinishFix();
  void Call(const std::function<void()>& hook) const {
    if (hook) hook();
  }

  ToolHost& host_;
  // The window's PreviewPending, which the undo records keep.
  std::int16_t& previewPending_ = host_.view.PreviewPending;
  bool fixEnabled_ = false;
};

// The one open tool of the main window.
struct ActiveTool {
  std::unique_ptr<Tool> tool;

  // The question every command asks before it starts (the view's mode names the open tool); the
  // tool is dropped once it has ended. Returns true when the user chose to stay.
  bool Resolve(display::DisplayState& view);
  // Whether a command that opens `mode` may go on: not during a paint, not when that mode is open,
  // and only once the open tool has been resolved.
  bool MayOpen(display::DisplayState& view, std::int16_t mode);
  // Opens a tool that works on the data: the snapshot is written before the tool takes its backups.
  template <class T, class... Args>
  bool OpenOnSnapshot(ToolHost& host, std::int16_t mode, Args&&... args) {
    if (!MayOpen(host.view, mode)) return false;
    if (host.writeSnapshot) host.writeSnapshot();
    tool = std::make_unique<T>(host, std::forward<Args>(args)...);
    return true;
  }
};

// The save dialog's advice once a baseline correction or symmetrization has left the imaginary
// quadrants behind RR; empty otherwise.
std::string_view SaveRecommendation(const model::Spectrum2D& s);

}  // namespace velk::operations
