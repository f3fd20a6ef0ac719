#include "processing/lp_form.h"

#include <algorithm>
#include <string>

#include "processing/messages.h"

namespace velk::processing {

using model::F1;
using model::F2;

LpForm::LpForm(const SequenceSettings& settings, const std::array<std::int32_t, 2>& dataPoints)
    : dataPoints_(dataPoints) {
  for (model::Axis a : {F1, F2}) {
    stored_[a] = edit_[a] = settings.axis[a].lp;
    lpFactor_[a] = settings.axis[a].lpFactor;
  }
}

std::int32_t LpForm::Leave(model::Axis a, LpField f, std::int32_t value) {
  LpSetting& s = edit_[a];
  switch (f) {
    case LpField::Order:
      s.Order = value >= 20 && value <= 100 ? value : stored_[a].Order;
      s.Start = std::min(s.Start, dataPoints_[a] - 2 * s.Order - 1);
      return s.Order;
    case LpField::Points:
      s.Points = value;
      return s.Points;
    case LpField::Start:
      s.Start = std::min(value, dataPoints_[a] - 2 * s.Order);
      return s.Start;
    case LpField::BackPoints:
      s.BackPoints = value >= 1 && value <= 10 ? value : stored_[a].BackPoints;
      return s.BackPoints;
  }
  return value;
}

platform::Message LpForm::GoFft() {
  const platform::Message problem =
      CheckLpDialog({&edit_[F1], dataPoints_[F1], lpFactor_[F1] >= 2 && edit_[F1].ForwardOn != 0},
                    {&edit_[F2], dataPoints_[F2], lpFactor_[F2] >= 2 && edit_[F2].ForwardOn != 0});
  if (!problem.empty()) return problem;
  const bool any = std::any_of(edit_.begin(), edit_.end(), [](const LpSetting& s) { return s.ForwardOn || s.BackwardOn; });
  if (any) return {};
  return {std::string(messages::kLpIsNotSet), std::string(messages::kLpIsNotSet) + "\n" + std::string(messages::kGoAnyway),
          platform::Buttons::OkCancel, platform::Icon::Question};
}

void LpForm::Apply(SequenceSettings& settings) const {
  for (model::Axis a : {F1, F2}) settings.axis[a].lp = edit_[a];
}

platform::Message PredictionAsked(const SequenceSettings& settings) {
  const AxisProcessing& f1 = settings.axis[F1];
  const AxisProcessing& f2 = settings.axis[F2];
  if (f1.lpFactor == 1 && f2.lpFactor == 1 && !f1.lp.BackwardOn && !f2.lp.BackwardOn)
    return {std::string(messages::kLpSettingError), std::string(messages::kSetLpFills), platform::Buttons::Ok,
            platform::Icon::Warning, true};
  return {};
}

}  // namespace velk::processing
