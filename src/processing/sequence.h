#pragma once
// The 2D sequence: from the four time-domain planes of a Spectrum2D to a spectrum normalised to a
// maximum of 1.0, with zero filling or prediction on each axis, windows, FID shift, corrections,
// both transforms, phase, and the final stage (reference, processing text). It is driven by a
// settings record and reports through a Progress; a quit leaves the planes half done and the
// caller restores them from the FID work file.
#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/spectrum.h"
#include "model/vendor_recipe.h"
#include "platform/message.h"
#include "platform/progress.h"
#include "processing/linear_prediction.h"
#include "processing/window.h"

namespace velk::processing {

struct AxisProcessing {
  WindowFunctionSetting window;
  std::int32_t zeroFill = 1;  // "ZeroFill F1 x"
  std::int32_t lpFactor = 1;  // a pending extension by forward prediction
  LpSetting lp;
  double phase0 = 0, phase1 = 0, pivot = 0;  // degrees; pivot in points
  bool singleAd = false;                     // "Single AD" (else "Dual AD")
  std::int32_t baseSize = 0;                 // points of the axis as read (a power of two)
};

struct SequenceSettings {
  std::array<AxisProcessing, 2> axis;  // indexed by model::F1, model::F2
  int pulseModeClass = 0;              // 0..4; also the transform path
  int mode = 0;                        // the mode of the processing text: 0..4, 10, 11
  int formatNumber = 0;                // low byte of the DataTypeCode
  bool brukerData = false;
  bool f1Exchange = false;  // applied on reading; here only written into the text
  bool f1Inverse = false;
  bool fidEdit = false;
  bool fidBaseline = false;  // applied on reading; here only written into the text
  bool t1Noise = false;
  float t1Factor = 1.0f;
  bool f2Only = false;  // a series of 1D spectra (pseudo-2D): no F1 transform, the F1 axis as read
  int threads = 0;  // 0: every core
  // The spectrometer's own recipe: when set, the run follows it instead of the windows, shift and
  // phases above (see vendor_sequence.h).
  std::optional<model::VendorRecipe> vendor;
  std::string operatorName;
  // The table of reference rows, searched by instrument identifier, solvent and nucleus (upper
  // case) and the centre frequency in MHz; it answers the frequency of 0 ppm in MHz. Without a
  // table, or without a match, the set's own reference stands.
  std::function<std::optional<double>(const std::string& instrumentId, const std::string& solvent,
                                      const std::string& nucleus, double centreMHz)>
      referenceTable;
};

// Settings as the FT window opens them for a freshly read FID: sizes, converters and family from
// the record, windows from the record's window values, phases 0.
SequenceSettings MakeSequenceSettings(const model::Spectrum2D& s, int pulseModeClass, int formatNumber);

// Factor times the size as read; a pending LP factor counts before the zero fill.
std::int32_t CurrentSize(const AxisProcessing& a);

// "ZeroFill", "Cancel ZeroFill", "LP Fill" of an axis. Refused silently (code 1, no message) past
// 8192 F1 points or 33,554,432 points in all; a failed re-dimension gives "Data Size is too large!"
// and the factor is set back. Points already there are kept, new points are zero.
platform::Outcome ZeroFill(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis);
platform::Outcome CancelZeroFill(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis);
platform::Outcome LpFill(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis);

// The window curves for the current sizes: F1 ("CL", column) and F2 ("RW", row, with the shift).
// An error when the curve would divide by zero.
platform::Outcome Make_CL_Wind(const model::Spectrum2D& s, const SequenceSettings& settings, WindowCurve& curve);
platform::Outcome Make_RW_Wind(const model::Spectrum2D& s, const SequenceSettings& settings, WindowCurve& curve);
// The curve of the 1D set under edit, from -5000 to its size.
platform::Outcome MakeWindow1D(const model::Spectrum1D& s, const WindowFunctionSetting& w, std::int32_t fidPoints,
                               std::int32_t lpFactor, std::int32_t fidShift, WindowCurve& curve);

// The initial F1 phases of the F1 view, by class and family.
void InitialF1Phase(const model::Spectrum2D& s, SequenceSettings& settings, std::string_view pulseName);

// On reading with "(F1)Exchage Upper & Lower": every odd row negated, which moves the F1 carrier
// by half the span. Phase classes: four planes over the data points; absolute: RR, IR.
void ApplyF1Exchange(model::Spectrum2D& s, int pulseModeClass, std::int32_t columns, std::int32_t rows);

struct SequenceRun {
  platform::Progress& progress;
  std::vector<std::string>& list;                      // the progress list
  std::function<void(std::string_view)> onCaption = {};  // the caption of the running step
};

struct SequenceResult {
  int code = 0;  // 0 done ("OK"); 1 quit or refused ("CANCEL")
  platform::Message message;
  std::string fftDate;  // "yyyy/mm/dd  hh:mm:ss" of a finished run
};

// "Execute 2D-FFT(No LP)".
SequenceResult Execute2DFft(model::Spectrum2D& s, SequenceSettings& settings, const SequenceRun& run);
// "Execute 2D-FFT(Use LP)", after the parameter dialog has said "OK".
SequenceResult Execute2DFftWithLp(model::Spectrum2D& s, SequenceSettings& settings, const SequenceRun& run);

// The FID work file: the planes and sizes as they were before a zero fill or a run, so that a quit
// can restore them. 0 on success.
int SaveFidWork(const std::filesystem::path& file, const model::Spectrum2D& s);
int RestoreFidWork(const std::filesystem::path& file, model::Spectrum2D& s);

}  // namespace velk::processing
