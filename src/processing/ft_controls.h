#pragma once
// The hand controls of the FT window and its window editor, without widgets: the phase step
// labels with their wrap and clamp, the repeat of a held step button, and the clamps of the window
// fields with an editor that can put back what it was given.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "processing/window.h"

namespace velk::processing {

// The values of the phase step labels, in degrees.
inline constexpr std::array<double, 14> kPhaseSteps{-10, -5, -2, -1, -0.5, -0.2, -0.1, 0.1, 0.2, 0.5, 1, 2, 5, 10};

// Phase 0 wraps by 360 into -180 .. 180 (180 itself becomes -180); phase 1 stops at -1800 and 1800.
double AddPhase0(double phase, double step);
double AddPhase1(double phase, double step);

// A step button that repeats while held: one step on the press, the next 500 ms later, then one
// every 50 ms. Times are milliseconds of any monotonic clock, so that the caller's clock (or a
// test's) drives it.
class HeldStep {
 public:
  static constexpr std::int64_t kFirstRepeatMs = 500;
  static constexpr std::int64_t kRepeatMs = 50;

  // The step of the press itself: always 1.
  int Press(std::int64_t now);
  // Steps that have fallen due since the last call (0 when released).
  int Due(std::int64_t now);
  void Release() { held_ = false; }
  bool Held() const { return held_; }
  // When the next step falls due; the caller's timer waits until then.
  std::int64_t Next() const { return next_; }

 private:
  bool held_ = false;
  std::int64_t next_ = 0;
};

// "Shift FID Start Position Right" (+1) and "shift FID Start Position Left" (-1): one point a
// step, within 1 - NF2 .. NF2 - 1. A held press that began on the other side of zero stops there:
// going down from a positive shift ends at 0, and so does going up from a negative one.
std::int32_t StepFidShift(std::int32_t shift, int direction, std::int32_t pressStart, std::int32_t nf2);

// Trapezoid corners in percent (index 0..3 for T1..T4): T1 in -100 .. T2, T2 in T1 .. T3 - 10,
// T3 in T2 + 10 .. T4, T4 in T3 .. 200, so the flat top is never narrower than 10%.
float ClampCorner(const std::array<float, 4>& T, int corner, float value);
// The start of a bell (at least -100, below the end) and its end (at most 200, above the start).
float ClampStart(float value, float end);
float ClampEnd(float value, float start);

// The formula text of each window type, shown in the window editor and kept as the window's
// description: the initial wording and the current one the user may have edited.
struct WindowExpressions {
  std::array<std::string, 5> initial, current;  // by window type
};
WindowExpressions DefaultWindowExpressions();
// "Set Initial Expression" of a type; a type outside 0 .. 4 changes nothing.
void SetInitialExpression(WindowExpressions& e, int type);
// The title the expression editor carries for a type.
std::string_view ExpressionTitle(int type);

// The fields of the window editor.
enum class WindowField { Broadening, Start, End, GaussPeak, GaussFactor, GaussBroadening, T1, T2, T3, T4 };

// The window editor's record: it edits the live setting of an axis and keeps the entry state so
// that "Cancel" puts back exactly what was there.
class WindowEditor {
 public:
  explicit WindowEditor(WindowFunctionSetting& live) : live_(live), entry_(live) {}

  float Value(WindowField f) const;
  // A typed value, clamped; answers the value kept.
  float Set(WindowField f, float value);
  // A step button: the field's integer part, plus or minus 1, clamped.
  float Step(WindowField f, int direction);
  void SetMultiplyTrapezoid(bool on) { live_.multiTrape[static_cast<std::size_t>(live_.type)] = on ? 1 : 0; }
  void SetType(std::int16_t type) { live_.type = type; }

  // "Fix": the live setting stays. "Cancel": the entry state comes back.
  void Fix() { entry_ = live_; }
  void Cancel() { live_ = entry_; }
  const WindowFunctionSetting& live() const { return live_; }

 private:
  WindowFunctionSetting& live_;
  WindowFunctionSetting entry_;
};

}  // namespace velk::processing
