#pragma once
// The records of a data set: one Spectrum2D and three Spectrum1D live for the whole run, owned by
// the session; readers overwrite them in place.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/axis_info.h"
#include "model/carried.h"
#include "model/nmr_parameters.h"
#include "model/peak_table.h"
#include "model/plane.h"
#include "model/vendor_acquisition.h"

namespace velk::model {

inline constexpr std::int32_t kMinAxisPoints = 128;
inline constexpr std::int32_t kMaxAxisPoints = 1048576;
inline constexpr std::int32_t kTraceBufferPoints = 16384;
inline constexpr int kProcessingLines = 42;
enum Axis : int { F1 = 0, F2 = 1 };

struct History {
  std::vector<std::string> operations;  // the count is the size; two parallel text lists
  std::vector<std::string> dates;
};

struct Spectrum2D {
  std::int16_t mode = 0;
  DescriptiveTexts texts;
  float cycleTime = 0;  // ACQTM + PD, recomputed at every load
  NmrParameters params;
  std::string comment;
  std::string commentRtf;
  std::array<AxisInfo, 2> axis;     // F1 first, F2 second
  std::array<AxisExtras, 2> extras;  // same order
  std::string userText;
  History history;
  std::array<std::string, kProcessingLines> processing;
  Plane RR, IR, RI, II;
  std::vector<float> ppmF1, ppmF2;  // ppm of every row and every column
  std::int32_t fidShift = 0;        // "FID Shift", points
  std::int16_t Modified = 0;        // 1 after symmetrization or baseline correction
  PeakTable2D peaks;
  // Work traces of the fixed length 0..16384: F2 and F1 sums, two projections, one work trace.
  std::array<std::vector<float>, 5> workTraces;
  // Further values of the stored file.
  std::string firstFftDate;  // date of the first transform, beside texts.fftUser
  std::array<DisplayRegion, 4> regions;
  Carried2D carried;
  VendorAcquisition vendor;
  // The contour limits, fractions of full scale; the transform sets them to 1.0 and 0.1.
  float UpperLimit = 1.0f;
  float LowerLimit = 0.1f;
  // INADEQUATE: 1 when the set is treated as one; 1 when its F1 span already covers the whole
  // double-quantum range (0 while the data are still folded).
  std::int16_t InadequateMode = 0;
  std::int16_t InadequateFull = 0;
};

struct Spectrum1D {
  std::int16_t mode = 0;  // 1 the F2 trace of a 2D set, 2 the F1 trace
  DescriptiveTexts texts;
  NmrParameters params;
  std::string comment;
  History history;
  std::vector<float> re, im;      // 0..POINT
  std::vector<double> axisPpm;    // 0..POINT
  std::vector<float> work1, work2;
  std::vector<float> moduleWork1, moduleWork2;
  std::vector<float> baselineWork;  // index -5000..POINT, stored with an offset of 5000
  AxisWindowValues window;
  std::int32_t arrayCount = 1;  // ARRAY: at least 1
  std::array<float, 2> verticalRange{10.6f, 10.6f};  // percent, strictly between 0 and 100
  double axisStep = 0;  // ppm per point
  float axisFirst = 0;  // ppm of point 0, kept as float in files
  std::array<std::string, 3> xLabels;
  // Further values of the stored file.
  std::string commentRtf, simComment;
  double absFreqCenter = 0, absFreq0ppm = 0;  // MHz: "Obs. Center Freq.", "Obs. Freq.(0 ppm)"
  std::int32_t fidShift = 0;
  std::string firstFftDate;
  std::vector<std::string> processing;  // summary lines by number, index 0 for "01 "
  Carried1D carried;
  VendorAcquisition vendor;
};

inline constexpr std::int32_t kBaselineWorkOffset = 5000;

// The planes' buffers are at least 128 on each axis; Point of the axes is not changed.
// Returns 0, or non-zero when memory ran out (the caller shows "Data Size is too large!").
int AllocateSpectrum2D(Spectrum2D& s, std::int32_t f2Points, std::int32_t f1Points);
int AllocateSpectrum1D(Spectrum1D& s, std::int32_t points);
void EraseSpectrum1D(Spectrum1D& s);

// Repairs done before a 1D set is written (width, resolution, axis step, array count).
void RepairBeforeWrite1D(Spectrum1D& s, double zeroPpmFrequencyMHz);
// Repairs done after a 2D set is read: cycle time; one frequency for homonuclear classes.
void RepairAfterRead2D(Spectrum2D& s, int pulseModeClass);
// The ppm tables are rebuilt from first value plus index times step whenever a file is read.
void RebuildPpmTables(Spectrum2D& s);

}  // namespace velk::model
