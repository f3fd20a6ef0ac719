#pragma once
// The transforms over a pair of planes (real part X, imaginary part Y): F2 rows with shift, sign
// and window; F1 columns with sign and window; the sequential F1 form for single-converter data;
// the unwindowed inverse of rows and columns. Each returns false when the user asked to quit; the
// planes then hold a half-done transform and the caller restores them.
#include <cstdint>

#include "model/plane.h"
#include "platform/progress.h"
#include "processing/window.h"

namespace velk::processing {

// Degrees; the rotation of point i is phase0 + (i - pivot) * phase1 / N.
struct PhaseRotation {
  bool on = false;
  double phase0 = 0, phase1 = 0, pivot = 0;
};

struct Workers {
  int threads = 1;  // 0: every core
  platform::Progress* progress = nullptr;
};

// The conjugate flags: whether the imaginary part is negated before the transform, by pulse-mode
// class, format number and converter. They decide whether a peak lands at +f or -f.
bool ConjugateF2(int pulseModeClass, int formatNumber, bool f2SingleAd);
bool ConjugateF1(int pulseModeClass, int formatNumber, bool f1Inverse);
bool ConjugateF1Sequential(int pulseModeClass);

// Rows 0 .. rows-1 of n points: X(i) = X(i+shift)*W(i), Y likewise with the sign, zero where
// i+shift falls outside 0 .. n-1; transform, half swap, then the phase rotation when it is on.
bool TransformF2Rows(model::Plane& X, model::Plane& Y, std::int32_t rows, std::int32_t n, std::int32_t shift,
                     bool conjugate, const WindowCurve& w, const PhaseRotation& phase, const Workers& workers);
// Columns 0 .. columns-1 of n points: sign, window, transform, half swap, phase rotation.
bool TransformF1Columns(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t columns, bool conjugate,
                        const WindowCurve& w, const PhaseRotation& phase, const Workers& workers);
// Columns whose real and imaginary points were taken one after the other by one converter: the
// imaginary channel's spectrum is moved by the half dwell between the channels and added.
bool TransformF1Sequential(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t columns, bool conjugate,
                           const WindowCurve& w, const PhaseRotation& phase, const Workers& workers);
// One trace of the sequential form: window W from index 0, scratch of 4 n doubles.
void TransformSequentialTrace(float* re, float* im, std::int32_t n, bool conjugate, const float* W, double* scratch);
// No window, no half swap: Y negated first when conjugate is set, transform, divide by n.
bool InverseColumns(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t columns, bool conjugate,
                    const Workers& workers);
bool InverseRows(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t rows, bool conjugate,
                 const Workers& workers);

// The phase rotation as a pass of its own, over the F2 index of rows 0 .. rows-1, or over the F1
// index of columns 0 .. columns-1.
void RotatePhaseF2(model::Plane& X, model::Plane& Y, std::int32_t rows, std::int32_t n, const PhaseRotation& p);
void RotatePhaseF1(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t columns, const PhaseRotation& p);
// Rotates one trace of n points in place.
void RotatePhaseTrace(float* re, float* im, std::int32_t n, const PhaseRotation& p);

}  // namespace velk::processing
