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

// The arrow kinds in the order of their style codes (kind * 4 + heads), and the line patterns.
inline constexpr std::string_view kArrowKinds[16] = {
    "1. Non Arrow Line",         "2. Right Arrow Line",         "3. Left Arrow Line",
    "4. Both Arrow Line",        "5. Non Arrow Solid Line",     "6. Right Arrow Solid Line",
    "7. Left Arrow Solid Line",  "8. Both Arrow Solid Line",    "9. Non Arrow Filled Line",
    "10. Right Arrow Filled Line", "11. Left Arrow Filled Line", "12. Both Arrow Filled Line",
    "13. Non Arrow Hollow Line", "14. Right Arrow Hollow Line", "15. Left Arrow Hollow Line",
    "16. Both Arrow Hollow Line"};
inline constexpr std::string_view kLineTypes[10] = {"Solid",           "Broken(1)",         "Chain(1)", "Chain(2)",
                                                   "Chain(3)",        "one Dot Chain(1)",  "two Dots Chain(1)",
                                                   "Dot(2)",          "one Dot Chain(2)",  "two Dots Chain(2)"};

}  // namespace velk::layout::messages
