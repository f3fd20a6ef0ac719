#pragma once
// The transform of a document's raw 2D FID into its spectrum, with a recipe or with the default one.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "platform/progress.h"
#include "processing/recipe.h"
#include "processing/sequence.h"

namespace velk::document {

struct Transformed {
  platform::Outcome outcome;        // code 1: quit or refused, with the sequence's message
  std::vector<std::string> list;    // the progress list
  std::int32_t fidShift = 0;        // the shift used
  int predictionFailures = 0;       // prediction lines that failed ("(InvGJ)", "(Root)")
};

// The default recipe of the document's FID (processing::DefaultFtSettings).
processing::SequenceSettings DefaultSettingsOf(
    Document& d, processing::RecipeSource source = processing::RecipeSource::kVendorWhenPresent);

// Runs the 2D sequence. On success the document holds the spectrum, typed as processed, and is
// modified (no file holds it yet); on failure the planes are left half done.
Transformed TransformDocument(Document& d, processing::SequenceSettings& settings, bool withPrediction,
                              platform::Progress& progress, std::function<void(std::string_view)> onCaption = {});

}  // namespace velk::document
