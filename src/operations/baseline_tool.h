#pragma once
// The baseline panel of one axis (F1: mode 6, F2: mode 7): points set on signal-free places of the
// axis, each edit of the list undoable on its own small stack, "Ave.Point" for the width of the
// means, "Preview" to correct RR from the backup and "Fix" to keep it.
#include <optional>
#include <string_view>
#include <vector>

#include "operations/baseline.h"
#include "operations/tool.h"

namespace velk::operations {

class BaselineTool final : public Tool {
 public:
  // avePoint is the remembered width (kept in the settings).
  BaselineTool(ToolHost& host, model::Axis axis, int avePoint);

  std::int16_t Mode() const override;
  const std::vector<BasePoint>& Points() const { return points_; }
  int AvePoint() const { return avePoint_; }

  // The point tools: a point at the data point nearest a click (clamped to the axis), the point
  // nearest a click removed, all removed. False when refused (list full or empty).
  bool AddPoint(std::int32_t position);
  bool DeletePoint(std::int32_t position);
  bool DeleteAllPoints();
  // The point stack: the kind of its top edit (0 when empty) for the Undo entry, and one step back.
  int PointUndoKind() const;
  bool UndoPoint();
  // "Ave.Point": an integer from 1 to 20 is taken, anything else puts the old value back. Returns
  // the text to show.
  std::string SetAvePointText(std::string_view text);

  void Preview() override;
  void Reset() override;
  void Fix() override;
  void Cancel() override;

 private:
  bool CancelsWithoutAsking() const override { return previewPending_ && points_.empty(); }
  std::string_view FixQuestion() const override;
  std::string_view NotFixable() const override;
  void Remember(UndoKind kind);

  struct PointEdit {
    UndoKind kind;
    std::vector<BasePoint> before;
  };
  model::Axis axis_;
  model::Plane backup_;
  std::vector<BasePoint> points_;
  std::vector<PointEdit> pointUndo_;
  int avePoint_;
};

bool BeginBaseCorrection(ToolHost& host, ActiveTool& active, model::Axis axis, int avePoint);

}  // namespace velk::operations
