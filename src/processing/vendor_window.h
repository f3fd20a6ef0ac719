#pragma once
// The window shapes of the spectrometer's processing recipe (exponential, Gaussian, sine and
// squared sine with their shift, trapezoid, and Varian's product of terms) over the points a
// window spans.
#include <cstdint>
#include <vector>

#include "model/vendor_recipe.h"

namespace velk::processing {

// Values for points 0 .. points-1 of a signal sampled at swHz (the acquisition time is
// points / swHz); all ones without a window or for a shape not listed.
std::vector<float> VendorWindowCurve(const model::VendorAxisRecipe& r, double swHz, std::int32_t points);

}  // namespace velk::processing
