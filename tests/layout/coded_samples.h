#pragma once
// Coded strings that together use every control of the text codes.
#include <string>
#include <vector>

namespace velk::layout {

inline std::vector<std::string> CodedSamples() {
  return {
      "\\< \\i1 italic\\i0  \\b1 bold\\b0  \\u1 under\\u0  \\s1 struck\\s0 ",
      "\\< 10\\+1 3\\+0  H\\-1 2\\-0 O",
      "\\< \\g1 a\\g0 -helix, \\g1 d\\g0  7.26 ppm",
      "\\< \\f:Courier New: mono\\f0  \\p:14: big\\p0  \\p:10.5: half\\p0 ",
      "\\< \\c:&HFF: red\\c0  \\c:&H0: black\\c0  after",
      "\\< 3\\g1 \\'b4\\g0 10 25\\'b0C",
      "\\< col1\\tb col2\\cr line two\\cr \\\\path {x}",
      "\\< shown\\> hidden",
      "\\< \\b1 \\i1 both\\i0 \\b0  (paren)",
      "\\< \\f:Times: x\\g1 b\\g0 y\\f0 z",
      "\\< \\c:&H8000: \\p:8: \\+1 13\\+0 C\\p0 \\c0  end",
  };
}

}  // namespace velk::layout
