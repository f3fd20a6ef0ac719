#include "document/transform.h"

#include <algorithm>

#include "processing/recipe.h"

namespace velk::document {

processing::SequenceSettings DefaultSettingsOf(Document& d, processing::RecipeSource source) {
  return processing::DefaultFtSettings(d.spectrum, d.words.pulseModeClass, model::FormatOf(d.words.dataTypeCode),
                                       d.source.detection.modeText, source);
}

Transformed TransformDocument(Document& d, processing::SequenceSettings& settings, bool withPrediction,
                              platform::Progress& progress, std::function<void(std::string_view)> onCaption) {
  Transformed result;
  result.fidShift = d.spectrum.fidShift;
  const processing::SequenceRun run{progress, result.list, std::move(onCaption)};
  const processing::SequenceResult done = withPrediction ? processing::Execute2DFftWithLp(d.spectrum, settings, run)
                                                         : processing::Execute2DFft(d.spectrum, settings, run);
  result.predictionFailures = static_cast<int>(std::count_if(result.list.begin(), result.list.end(), [](const std::string& l) {
    return l.find("(InvGJ)") != std::string::npos || l.find("(Root)") != std::string::npos;
  }));
  if (done.code != 0) {
    result.outcome = {1, done.message};
    return result;
  }
  d.words.pulseModeClass = settings.pulseModeClass;
  d.words.dataTypeCode = model::MakeTypeCode(2, true, model::FormatOf(d.words.dataTypeCode));
  LoseCleanMark(d.undo);
  return result;
}

}  // namespace velk::document
