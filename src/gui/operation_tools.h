#pragma once
// The spectrum tools of the main window: the Tools menu that opens them, the panel of the open
// tool at the foot of the window, the mouse on the contour and the marks over it while a tool is
// open, and what the window's UnDo asks of an open panel. The rules live in operations/ and
// document/; this file only joins them to the window.
#include <QObject>
#include <QString>
#include <optional>

#include "document/session.h"
#include "document/tool_undo.h"
#include "gui/spectrum_view.h"
#include "operations/phase_tool.h"
#include "operations/tool.h"

class QDockWidget;
class QMainWindow;
class QMenuBar;
class QWidget;

namespace velk::gui {

class OperationTools final : public QObject {
  Q_OBJECT

 public:
  // The tools work on the session's document as `view` shows it; the mouse on the contour reaches
  // them through the window's `tools`.
  OperationTools(document::Session& session, display::ToolBox& tools, SpectrumView& view, platform::Prompt& prompt,
                 QMainWindow& window);
  ~OperationTools() override;

  // The Tools menu.
  void AddMenus(QMenuBar& bar);

  // The menu commands. Each resolves the open tool first; the phase commands warn after a
  // baseline correction or symmetrization.
  void BeginPhase(model::Axis axis);
  void BeginBaseline(model::Axis axis);
  void BeginSymmetrize();
  void BeginReference();
  // "Set Center(F1)", "Set Center(F2)": the axis's centre takes the shift of its 1D trace's centre
  // frequency.
  void SetCenter(model::Axis axis);
  // The 1D reference of the trace beside the contour of an axis (modes 101, 102); a click on that
  // trace's panel picks its point.
  void BeginTraceReference(model::Axis axis);
  void PickOnTrace(int axis, double ppm);
  void Invert(bool f1, bool f2);
  void Exchange();
  // The window's "UnDo" while a baseline panel is open takes back the panel's last point edit, not
  // a record of the document. The kind of that edit (0 when there is none); nothing while no such
  // panel is open.
  std::optional<int> PanelUndoKind() const;
  // The baseline panels' part of "UnDo": true when a baseline panel is open (its last point edit,
  // if any, is taken back); the document's stack is not reached then.
  bool UndoPoint();

  // The window's resolver reached our open tool: it fixes, cancels or asks. False when the person
  // chose to stay in it.
  bool LeaveOpenTool();

  // What the panels call.
  operations::Tool* Active() const { return active_.tool.get(); }
  void Preview();
  void Reset();
  void Fix();
  void Cancel();
  // The panel's values changed the trace or the marks only.
  void MarksChanged();
  // The pointer's shape over the contour: the grab shape over the symmetry line's handles.
  void PointerOverHandle(bool over);
  // Before a panel changes the scale of an axis, which a trace under way reads.
  void StopDrawing() { view_.StopTracing(); }
  // The scale of an axis changed (by a panel, or by the window's UnDo of a reference): axes anew
  // around the same contour (traced again when a trace had to stop for the change).
  void ScaleChanged();
  QWidget* Panel() const;
  // The stored phases and pivots; an undo of a data kind clears the F2 pair.
  const SpectrumView& View() const { return view_; }
  const model::Spectrum2D& Spectrum() const { return session_.document.spectrum; }
  display::DisplayState& State() { return session_.document.view; }
  const model::InstrumentFrequencyTable& Instruments() const { return session_.instruments; }
  platform::Prompt& Prompt() { return prompt_; }

 signals:
  // After every command and change: the panel shows the tool's state anew, the window its UnDo.
  void changed();

 private:
  bool Ready() const;
  // The snapshot files of the run (known once the session has started), and the host through
  // which the tools reach the document, made anew while no tool is open.
  document::SnapshotFiles Files() const { return document::SnapshotFilesOf(session_.run); }
  operations::ToolHost& Host();
  bool ResolveOthers();
  // A tool of `mode` may open: data shown, no paint, not that mode already, the open tool resolved.
  bool MayBegin(std::int16_t mode);
  void Opened(QWidget* panel, const QString& title);
  void Ended();
  void DropPanel();
  void DataChanged();

  document::Session& session_;
  display::ToolBox& tools_;
  SpectrumView& view_;
  platform::Prompt& prompt_;
  QMainWindow& window_;
  std::optional<operations::ToolHost> host_;
  operations::ActiveTool active_;
  QDockWidget* dock_ = nullptr;
};

}  // namespace velk::gui
