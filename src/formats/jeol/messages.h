#pragma once
// The words the JEOL Delta readers show, in one place.
#include <string>

#include "platform/message.h"

namespace velk::formats::jeol {

inline constexpr const char* kDataErrorTitle = "Data Error";
inline constexpr const char* kTwoDData = "2D Data!";
inline constexpr const char* kTooLargeData = "Too Large Data";
inline constexpr const char* kSizeErrorTitle = "Data Size Error";
inline constexpr const char* kSizeTooLarge = "Data Size is too large!";
// A damaged file: the readers' own trap gives no words, the callers show these.
inline constexpr const char* kInvalidData = "Invalid Data";
inline constexpr const char* kInvalid2DData = "Invalid 2D Data";

// The data-domain question, asked when the X axis unit says neither time nor frequency.
inline constexpr const char* kDomainTitle = "Data Domain";
inline constexpr const char* kDomainFid = "FID (Time Domain)";
inline constexpr const char* kDomainSpectrum = "Spectrum (Frequency Domain)";

inline platform::Message DataError(std::string text) {
  return {kDataErrorTitle, text, platform::Buttons::Ok, platform::Icon::Warning, true};
}
inline platform::Message SizeError() {
  return {kSizeErrorTitle, kSizeTooLarge, platform::Buttons::Ok, platform::Icon::Warning, true};
}

}  // namespace velk::formats::jeol
