#pragma once
// The FT window without its widgets: the raw FID of the document, the transform recipe the user
// is shaping, which row or column is on show in the F2 or F1 view, and the preview of that one
// trace (the FID, the window curve, and its transform with the window, zero fill and phase).
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "core/settings.h"
#include "document/document.h"
#include "document/phase_reference.h"
#include "document/transform.h"
#include "processing/ft_controls.h"
#include "processing/sequence.h"
#include "processing/trace_transform.h"
#include "processing/window.h"

namespace velk::document {

struct FtPreview {
  std::vector<float> fidRe, fidIm;          // the trace as read, N points (zero past the data)
  processing::WindowCurve window;           // the curve of the axis shown
  std::vector<float> specRe, specIm;        // the transform, before phase
  std::vector<float> shownRe, shownIm;      // phased, or the magnitude in absolute classes
  processing::TraceScale scale;
  bool windowFailed = false;                // the curve would divide by zero: no transform shown
  platform::Outcome prediction;             // why the trace could not be predicted, if it could not
};

class FtWindow {
 public:
  // Opens on the document's raw FID with its default recipe, in the F2 view on row 0.
  explicit FtWindow(Document& d);

  model::Axis view() const { return view_; }
  std::int32_t row() const { return row_; }
  std::int32_t column() const { return column_; }
  std::int32_t Rows() const;     // rows of the FID (F1 data points)
  std::int32_t Columns() const;  // complex points of a row (F2 data points)
  bool PhaseSensitive() const;

  // The F2 view ("row") or the F1 view ("column"); both rebuild the preview.
  void ShowF2();
  void ShowF1();
  // "Row" and "Colm" up and down: one step, kept inside the data; the preview follows.
  void StepRow(int direction);
  void StepColumn(int direction);

  // The phases of the axis shown. Steps wrap phase 0 and clamp phase 1; a typed or scrolled phase
  // goes through the same rule. Only the phase is reworked, not the transform.
  double Phase0() const { return Axis().phase0; }
  double Phase1() const { return Axis().phase1; }
  double Pivot() const { return Axis().pivot; }
  void AddPhase0(double step);
  void AddPhase1(double step);
  void SetPhase0(double degrees);
  void SetPhase1(double degrees);
  // The F2 pivot is the point the user picked; the F1 pivot stays at N1/2.
  void SetPivot(std::int32_t point);

  // "Y-Span" (the multiplier) and "Y-Level" (the offset on screen).
  float ySpan() const { return yMultiplier_; }
  float yLevel() const { return yLevel_; }
  void SetYSpan(float multiplier);
  void SetYLevel(float level) { yLevel_ = level; }
  // "All" shows the whole FID; "Exp." halves the time range shown (never below 16 points).
  std::int32_t fidShown() const { return fidShown_; }
  void ShowWholeFid() { fidShown_ = static_cast<std::int32_t>(preview_.fidRe.size()); }
  void ExpandFid() { fidShown_ = std::max<std::int32_t>(16, fidShown_ / 2); }

  // The window of an axis has changed (the editor): the curve and the transform are redone.
  void Refresh();
  void Rephase();

  // The chemical shift of a point of the transform shown, from the reader's reference of the axis
  // (point 0 is the low-frequency end).
  double PpmOf(double point) const;

  // The points of an axis as measured (F2: complex points of a row, F1: rows).
  std::int32_t DataPoints(model::Axis a) const;
  // "ZeroFill" doubles the zero fill of an axis, "Cancel ZeroFill" goes back to none, "LP Fill"
  // doubles the extension by forward prediction. The planes take the new size (refused silently
  // past the size limits) and the preview follows.
  platform::Outcome ZeroFill(model::Axis a);
  platform::Outcome CancelZeroFill(model::Axis a);
  platform::Outcome LpFill(model::Axis a);
  // "LP Back": the first points of the axis recalculated from later ones; refused with "Illegal LP
  // parameter" when the prediction does not fit in the data.
  platform::Outcome LpBack(model::Axis a);
  // The factor the axis is extended by, and whether that is prediction.
  std::int32_t Extension(model::Axis a) const;
  bool Predicted(model::Axis a) const { return settings_.axis[a].lpFactor >= 2 && settings_.axis[a].lp.ForwardOn; }
  bool BackPredicted(model::Axis a) const { return settings_.axis[a].lp.BackwardOn != 0; }
  // "Execute 2D-FFT(Use LP)" is open once a prediction was asked for.
  bool PredictionAsked() const;

  // The values the 2D settings keep: read when the window opens, written back when the user has
  // set them (prediction, corrections).
  void UseSettings(const core::Settings& from);
  void KeepSettings(core::Settings& to) const;

  // The recipe: the processing the spectrometer stored beside the data, or the program's, which
  // this window shapes by hand. A change starts afresh from the default of that source.
  bool HasVendorRecipe() const { return document_.spectrum.vendor.recipe.has_value(); }
  bool FollowsVendor() const { return settings_.vendor.has_value(); }
  platform::Outcome SetRecipeSource(processing::RecipeSource source);

  // "Read Phase Correction Data(DQF)": from now on the F2 view shows the reference FID in place
  // of the row (zero past its end); the phases set on it hold for the transform. It may not be
  // longer than the working line length, the larger of the two axes' current sizes.
  std::int32_t WorkingLength() const;
  void SetPhaseReference(PhaseReference reference);
  bool HasPhaseReference() const { return reference_.has_value(); }

  // "PHA" (phase sensitive) or "ABS" (absolute value): the class of the same experiment processed
  // the other way; the F1 phases start again from those of the class.
  void SetPhaseSensitive(bool on);
  // The FID shift of the F2 transform, in points.
  std::int32_t FidShift() const { return document_.spectrum.fidShift; }
  void SetFidShift(std::int32_t shift);

  // "Set up Corrections on FFT".
  struct Corrections {
    bool f1SingleAd = false, f2SingleAd = false;  // "Single AD-Converter" (else "Dual AD-Converter")
    bool fidBaseline = false;                     // "BaseLine Correction of FID"
    bool t1Noise = false;                         // "t1 noise reduction"
    float t1Factor = 1.0f;                        // "Multiple for First Row", 0 .. 2.0
  };
  Corrections CurrentCorrections() const;
  // The converter options count only for Bruker data. The baseline of the FID, once subtracted,
  // stays subtracted (the FID as read is not kept).
  void SetCorrections(const Corrections& c);

  // "Execute 2D-FFT(No LP)", or "Execute 2D-FFT(Use LP)" once its set-up said "OK", with the
  // phases and windows set here. The FID goes to the work file first: a quit or a failure puts it
  // back, with the recipe as it was, and the window stays on it (the caller refreshes the preview
  // on the interface thread). After a transform the phases used wait for the phase correction.
  // Runs on any thread.
  Transformed Execute(platform::Progress& progress, const std::filesystem::path& workFile,
                      std::function<void(std::string_view)> onCaption = {}, bool withPrediction = false);

  const FtPreview& preview() const { return preview_; }
  processing::SequenceSettings& settings() { return settings_; }
  const processing::SequenceSettings& settings() const { return settings_; }
  processing::WindowExpressions& expressions() { return expressions_; }
  Document& document() { return document_; }
  const Document& document() const { return document_; }

 private:
  processing::AxisProcessing& Axis() { return settings_.axis[view_]; }
  const processing::AxisProcessing& Axis() const { return settings_.axis[view_]; }
  platform::Outcome Resized(platform::Outcome out);
  void Predict();

  Document& document_;
  processing::SequenceSettings settings_;
  model::Axis view_ = model::F2;
  std::int32_t row_ = 0, column_ = 0;
  float yMultiplier_ = 1.0f, yLevel_ = 0.0f;
  std::int32_t fidShown_ = 0;
  FtPreview preview_;
  std::optional<PhaseReference> reference_;
  processing::WindowExpressions expressions_ = processing::DefaultWindowExpressions();
  // The transform turned by the first-order part alone, for the phase 1 and pivot it was made
  // with: a step of phase 0 then costs one multiplication per point.
  std::vector<float> rampRe_, rampIm_;
  bool rampValid_ = false;
  double rampPhase1_ = 0, rampPivot_ = 0;
};

}  // namespace velk::document
