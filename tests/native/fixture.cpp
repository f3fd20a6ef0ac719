#include "native/fixture.h"

#include <fstream>
#include <iterator>

#include "native/file_layout.h"
#include "platform/progress.h"

namespace velk::test {

std::unique_ptr<model::Spectrum2D> MakeSpectrum2D(std::int32_t f2Points, std::int32_t f1Points) {
  auto s = std::make_unique<model::Spectrum2D>();
  model::AllocateSpectrum2D(*s, f2Points, f1Points);
  model::Plane* planes[4] = {&s->RR, &s->RI, &s->IR, &s->II};
  for (int k = 0; k < 4; ++k)
    for (std::int32_t r = 0; r < f1Points; ++r)
      for (std::int32_t c = 0; c < f2Points; ++c)
        planes[k]->at(c, r) = static_cast<float>(k * 1000000 + r * 1000 + c) * 0.25f;
  for (int a : {model::F1, model::F2}) {
    s->axis[a].Point = a == model::F2 ? f2Points : f1Points;
    s->axis[a].Frequency = a == model::F2 ? 6000.0f : 5500.0f;
    s->axis[a].Resolution = s->axis[a].Frequency / s->axis[a].Point;
    s->axis[a].RefPoint = 7;
    s->axis[a].Reference = 4.75f;
    s->axis[a].window = {1.5f, 0.5f, 2.0f, {10, 20, 30, 40}, {90, 80, 70}};
    s->extras[a] = {500.13, 500.0, -0.0125, 11.5, 1024, 3, 1, static_cast<std::int16_t>(a + 1), {5, 10, 90, 95}, "1H"};
  }
  auto& p = s->params;
  p.OBNUC = "1H";
  p.IRNUC = "13C";
  p.TRNUC = "15N";
  p.OFR = 500.13f;
  p.POINT = 2048;
  p.SCANS = 16;
  p.RGAIN = 40000;
  p.ACQTM = 0.2f;
  p.PD = 1.5f;
  p.SLVNT = "ＣＤＣｌ３";
  p.EXMOD = "VPHDQFH";
  p.DATIM = "12/Nov/2026 10:11:12";
  s->texts = {"Ver.4", "/data/cosy/ser", "", "ID-7", "Spectrometer", "Probe 5 mm", "grad", "Operator San", "fft user",
              "サンプル 7", "sample 7 old"};
  s->comment = "first line\r\nsecond line";
  s->commentRtf = "{\\rtf1 first line}";
  s->history.operations = {"2D-FFT", "Save"};
  s->history.dates = {"12/Nov/2026 10:20:00", "12/Nov/2026 10:30:00"};
  s->firstFftDate = "12/Nov/2026 10:20:00";
  s->processing[0] = "HOMO Nucler, Phase Sensitive";
  s->processing[5] = "FID Shift 3";
  s->processing[37] = "last line";
  s->peaks.peaks = {{10, 20, 2.5f, 5.0f, 0, 0, 0.75f}, {11, 21, 2.75f, 5.25f, 0, 0, -0.5f}};
  s->peaks.thresholds[1] = 0.1f;
  s->regions[2] = {{1.0f, 2.0f, 3.0f, 4.0f}, 1};
  s->fidShift = 3;
  s->Modified = 1;
  return s;
}

model::Spectrum1D MakeSpectrum1D(std::int32_t points, std::int16_t mode) {
  model::Spectrum1D s;
  s.mode = mode;
  model::AllocateSpectrum1D(s, points);
  s.params.POINT = points;
  s.params.OBNUC = mode == 1 ? "1H" : "13C";
  s.params.SLVNT = "CDCl3";
  s.absFreq0ppm = 500.0;
  s.absFreqCenter = 500.13;
  s.axisFirst = 10.0f;
  s.axisStep = -0.0123456789;
  for (std::int32_t i = 0; i < points; ++i) {
    s.re[i] = static_cast<float>(i);
    s.im[i] = static_cast<float>(-i);
    s.axisPpm[i] = s.axisFirst + i * s.axisStep;
  }
  s.params.FREQU = static_cast<float>((points - 1) * 0.0123456789 * 500.0);
  s.params.RESOL = s.params.FREQU / points;
  s.comment = "trace";
  s.xLabels = {"x 1", "x 2", "x 3"};
  s.history.operations = {"FFT"};
  s.history.dates = {"today"};
  return s;
}

namespace {

std::vector<std::uint8_t> Body(const std::string& tag, std::size_t size, std::uint8_t seed) {
  std::vector<std::uint8_t> bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(seed + i * 7);
  std::fill_n(bytes.begin(), 16, 0);
  std::copy(tag.begin(), tag.end(), bytes.begin());
  return bytes;
}

}  // namespace

void AddEveryCarriedSection(model::Spectrum2D& s, model::Spectrum1D& f2, model::Spectrum1D& f1) {
  std::uint8_t seed = 1;
  for (const native::FileSection& section : native::kFileSections)
    if (section.tag != native::kFileHistoryTag)
      s.carried.fileSections.push_back({std::string(section.tag), Body(std::string(section.tag), 40 + seed * 3, seed++)});
  for (const char* tag : {"## 1D Data 05", "## 1D Data 25"}) s.carried.fileSections.push_back({tag, Body(tag, 304, seed++)});  // sets end on a boundary
  s.carried.printSet = Body("", 256, seed++);
  s.carried.parameterBlock = Body("%% PARAMETER", 2560, seed++);
  for (model::Spectrum1D* set : {&f2, &f1})
    for (const char* tag : {"%% INTEGRAL", "%% PEAK PICK", "%% MULTIVIEW", "%% SIMULATE", "%% PRINT SET", "%% FONTS",
                            "%% REGION COLOR", "%% X LABELS NEW", "%% ARRAY"})
      set->carried.sections.push_back({tag, Body(tag, 64 + seed, seed++)});
}

std::unique_ptr<ReadBack> Read2D(std::span<const std::uint8_t> file) {
  auto back = std::make_unique<ReadBack>();
  platform::NoProgress progress;
  model::ReadContext context{back->prompt, progress, back->words, nullptr, &back->f2, &back->f1};
  back->outcome = native::Read2DBytes(file, "/tmp/x.vlk2", *back->s, context);
  return back;
}

std::vector<std::uint8_t> Slurp(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace velk::test
