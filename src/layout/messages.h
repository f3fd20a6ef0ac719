#pragma once
// The words the page document shows, in one place.
#include <string_view>

namespace velk::layout::messages {

inline constexpr std::string_view kTextFull = "Exceed Max String Number";
// A full arrow list says the string message too.
inline constexpr std::string_view kLineFull = "Exceed Max String Number!";
inline constexpr std::string_view kLineFullTitle = "Arrow/Line Paste Error";
inline constexpr std::string_view kCircleFull = "Exceed Max Circle Number!";
inline constexpr std::string_view kCircleFullTitle = "Circle Paste Error";
inline constexpr std::string_view kRectangleFull = "Exceed Max Rectangle Number!";
inline constexpr std::string_view kImageFull = "Exceed Max Image Number";
inline constexpr std::string_view kImageFullTitle = "Image Paste Error";

inline constexpr std::string_view kDrawOrderError = "There are Display Errors of Text/Image/figure.";
inline constexpr std::string_view kDrawOrderErrorTitle = "Draw Order Error";

}  // namespace velk::layout::messages
