#pragma once
// What the picture commands (plot, page) share: the 2D spectrum to draw, its window and captions.
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "display/contour.h"
#include "display/display_state.h"
#include "document/document.h"

namespace velk::cli {

// Reads a 2D data set for a picture; a raw FID is transformed with the default recipe first, the
// same as `process` would. Null after a complaint, with the status set.
std::unique_ptr<document::Document> ReadPictureInput(std::string_view command, const std::string& input,
                                                     const std::string& output, int& status);

// The window: the whole spectrum, high ppm at the left and at the bottom, unless given. A given
// window must overlap the data; the overlap is what is shown.
std::optional<display::DisplayState> PictureView(const model::Spectrum2D& s, const std::vector<double>& f2,
                                                 const std::vector<double>& f1);

// The contour limits as fractions of the largest value shown, so that spectra stored on any scale
// show the same levels as one normalised to 1.0.
void SetLevelLimits(model::Spectrum2D& s, int pulseModeClass, const display::ContourSetting& setting, double lower,
                    double upper);

// "F2 1H (ppm)".
std::string AxisCaption(const char* axis, const std::string& nucleus);

}  // namespace velk::cli
