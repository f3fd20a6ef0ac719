#pragma once
// Symmetrization of a homonuclear spectrum across a diagonal, and the value of RR at any place
// given in ppm. The diagonal runs through the middle of the spectrum, moved by a shift in F2
// points; every point of RR is compared with the value at its mirror place.
#include <cstdint>

#include "model/spectrum.h"

namespace velk::operations {

inline constexpr float kSymShiftLimit = 10.0f;
inline constexpr float kSymShiftStep = 0.25f;

// Where a position falls on an axis of ascending or descending positions: the point below and the
// weight of the next point, from the distances in ppm. Outside the axis `inside` is false.
struct AxisSpot {
  std::int32_t index = 0;
  double weight = 0;
  bool inside = false;
};
AxisSpot LocateOnAxis(const std::vector<float>& positions, std::int32_t points, double ppm);

// RR at (F2 ppm, F1 ppm) by bilinear interpolation between the four nearest points, first along F2
// on the two rows, then along F1; 0 beyond the ends of either axis.
double ValueAtPpm(const model::Plane& plane, const model::Spectrum2D& s, double f2Ppm, double f1Ppm);

// The shift of the diagonal in ppm: F1 position of point N1/2 minus F2 position of point N2/2,
// plus symShift F2 points.
double DiagonalOffset(const model::Spectrum2D& s, float symShift);

// RR from the backup: class V_HOMO keeps the smaller of a value and its mirror (not below 0);
// class VPH_HOMO zeroes values whose sign disagrees with the mirror and otherwise keeps the one of
// smaller magnitude. Other classes are left as they are.
void SymmetrizeData(const model::Plane& backup, model::Spectrum2D& s, int pulseModeClass, float symShift,
                    int threads = 0);

// A press of a shift button: 0.25 points in the direction given, kept within -10 .. 10.
float StepSymShift(float symShift, int direction);

}  // namespace velk::operations
