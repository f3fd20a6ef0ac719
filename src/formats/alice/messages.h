#pragma once
// The words of the Alice reader and writer.
#include "platform/message.h"

namespace velk::formats::alice {

inline constexpr const char* kDataErrorTitle = "Data Error";
inline constexpr const char* kInvalidData = "Invalid Data";
inline constexpr const char* kTooLarge = "Data is too Large(or invalid)";
inline constexpr const char* kWriteTag = "WriteDataALS";  // the tag a failed write carries

inline platform::Message DataError(const char* text) {
  return {kDataErrorTitle, text, platform::Buttons::Ok, platform::Icon::Warning, true};
}

}  // namespace velk::formats::alice
