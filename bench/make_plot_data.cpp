// Writes the synthetic spectrum of the plot comparison twice: as a Ver.4 file for velk2d-cli plot
// and as bare little-endian floats (F1 rows of F2 values) for the matplotlib yardstick.
#include <cstdio>
#include <fstream>
#include <iostream>

#include "model/data_type.h"
#include "native/ver4_file.h"
#include "support/synthetic_2d.h"

int main(int argc, char** argv) {
  using namespace velk;
  if (argc != 5) {
    std::cerr << "usage: velk2d-plot-data OUT.vlk2 OUT.f32 COLS ROWS\n";
    return 2;
  }
  const int cols = std::atoi(argv[3]), rows = std::atoi(argv[4]);
  auto s = test::MakeSynthetic2D(cols, rows, test::ManyPeaks(300), 0.002);
  if (!s) return 2;
  model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
  const auto outcome = native::WriteDataR4(argv[1], *s, nullptr, nullptr, words, native::SaveMode::RealOnly, {false, nullptr});
  if (!outcome.ok()) {
    std::cerr << argv[1] << ": " << outcome.message.text << "\n";
    return 2;
  }
  std::ofstream raw(argv[2], std::ios::binary);
  for (int r = 0; r < rows; ++r)
    raw.write(reinterpret_cast<const char*>(s->RR.row(r).data()), static_cast<std::streamsize>(cols) * sizeof(float));
  return raw ? 0 : 2;
}
