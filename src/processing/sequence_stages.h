#pragma once
// The steps of the two 2D sequences, in their order, over one Spectrum2D (used by sequence.cpp).
#include "processing/sequence.h"
#include "processing/transforms.h"

namespace velk::processing {

// A run that ends without a spectrum ("CANCEL"): quit, refused, or with a message.
inline SequenceResult Cancelled(platform::Message message = {}) {
  SequenceResult r;
  r.code = 1;
  r.message = std::move(message);
  return r;
}

// The planes re-dimensioned to the current sizes of the settings, keeping what is there; refused
// for sizes that are not powers of two or when memory runs out.
platform::Outcome Resize(model::Spectrum2D& s, const SequenceSettings& settings);

struct Stages {
  Stages(model::Spectrum2D& spectrum, SequenceSettings& settings, const SequenceRun& run);

  SequenceResult Plain();
  SequenceResult WithPrediction();

 private:
  void Caption(std::string_view text) const;
  bool Windows(SequenceResult& result);
  bool F2Transforms();
  bool F1Transforms(bool allowSequential);
  bool Predict();
  bool BrukerCorrection();
  void T1Noise();
  void Power();
  SequenceResult Finish(bool withPrediction);

  model::Spectrum2D& s;
  SequenceSettings& settings;
  const SequenceRun& run;
  Workers workers;
  WindowCurve w1, w2;
  std::int32_t n1, n2;  // current sizes
  std::int32_t rows;    // F1 rows that hold data
  bool phase;           // the phase-sensitive path
};

// The final stage: normalisation (phase path), axes and reference, processing text, "FFT User";
// returns the FFT date, "yyyy/mm/dd  hh:mm:ss" in local time.
std::string FinalStage(model::Spectrum2D& s, SequenceSettings& settings, bool withPrediction);
// The processing text of a finished run, in the fields the file keeps as its history.
void WriteProcessingText(model::Spectrum2D& s, const SequenceSettings& settings, bool withPrediction);

}  // namespace velk::processing
