#include "operations/baseline_tool.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "operations/messages.h"

namespace velk::operations {

using model::F1;

BaselineTool::BaselineTool(ToolHost& host, model::Axis axis, int avePoint)
    : Tool(host),
      axis_(axis),
      backup_(host.spectrum.RR),
      avePoint_(std::clamp(avePoint, kMinAvePoint, kMaxAvePoint)) {
  host.view.ToolMode = Mode();
}

std::int16_t BaselineTool::Mode() const { return axis_ == F1 ? display::kBaselineF1 : display::kBaselineF2; }

std::string_view BaselineTool::FixQuestion() const {
  return axis_ == F1 ? messages::kFixF1Base : messages::kFixF2Base;
}

std::string_view BaselineTool::NotFixable() const { return messages::kBaseNotFixable; }

void BaselineTool::Remember(UndoKind kind) { pointUndo_.push_back({kind, points_}); }

bool BaselineTool::AddPoint(std::int32_t position) {
  if (static_cast<int>(points_.size()) >= kMaxBasePoints) return false;
  Remember(kUndoAddPoint);
  const std::int32_t last = std::max(host_.spectrum.axis[axis_].Point - 1, 0);
  InsertBasePoint(points_, std::clamp(position, 0, last));
  return true;
}

bool BaselineTool::DeletePoint(std::int32_t position) {
  const int k = NearestBasePoint(points_, position);
  if (k < 0) return false;
  Remember(kUndoDeletePoint);
  points_.erase(points_.begin() + k);
  return true;
}

bool BaselineTool::DeleteAllPoints() {
  if (points_.empty()) return false;
  Remember(kUndoDeleteAllPoints);
  points_.clear();
  return true;
}

int BaselineTool::PointUndoKind() const { return pointUndo_.empty() ? 0 : pointUndo_.back().kind; }

bool BaselineTool::UndoPoint() {
  if (pointUndo_.empty()) return false;
  points_ = std::move(pointUndo_.back().before);
  pointUndo_.pop_back();
  return true;
}

std::string BaselineTool::SetAvePointText(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size() && value >= kMinAvePoint && value <= kMaxAvePoint)
    avePoint_ = value;
  return std::to_string(avePoint_);
}

void BaselineTool::Preview() {
  if (axis_ == F1) ApplyBaseF1(backup_, host_.spectrum, points_, avePoint_, host_.threads);
  else ApplyBaseF2(backup_, host_.spectrum, points_, avePoint_, host_.threads);
  fixEnabled_ = true;
  previewPending_ = false;
}

void BaselineTool::Reset() {
  host_.spectrum.RR.data = backup_.data;
  fixEnabled_ = false;
  previewPending_ = true;
}

void BaselineTool::Fix() {
  if (!StartFix(axis_ == F1 ? kUndoF1Base : kUndoF2Base)) return;
  pointUndo_.clear();
  host_.spectrum.Modified = 1;
  FinishFix();
}

void BaselineTool::Cancel() {
  Leave();
  pointUndo_.clear();
  host_.spectrum.RR.data = backup_.data;
}

bool BeginBaseCorrection(ToolHost& host, ActiveTool& active, model::Axis axis, int avePoint) {
  return active.OpenOnSnapshot<BaselineTool>(host, axis == F1 ? display::kBaselineF1 : display::kBaselineF2, axis,
                                              avePoint);
}

}  // namespace velk::operations
