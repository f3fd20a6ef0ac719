// The file layout checked against hand-placed bytes, independently of the writer's and the
// reader's own tables.
#include <gtest/gtest.h>

#include <cstring>

#include "native/fixture.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

template <class T>
void Put(std::vector<std::uint8_t>& file, std::size_t at, T value) {
  std::memcpy(file.data() + at, &value, sizeof value);
}
template <class T>
T Get(const std::vector<std::uint8_t>& file, std::size_t at) {
  T value;
  std::memcpy(&value, file.data() + at, sizeof value);
  return value;
}
std::string Text(const std::vector<std::uint8_t>& file, std::size_t at) { return reinterpret_cast<const char*>(file.data() + at); }

TEST(Ver4Layout, AHandBuiltFileReads) {
  // 2D block at 1280 (base 1296): parameters at base + 768, one plane of 128 x 130 at base + 3328.
  constexpr std::size_t base = 1296, parameters = base + 768, data = base + 3328, planeBytes = 128 * 130 * 4;
  std::vector<std::uint8_t> file(data + 16 + planeBytes + 16, 0);
  std::memcpy(file.data(), "VK NMR Ver.4.01", 15);
  Put<std::int32_t>(file, 512, 1280);
  Put<std::int32_t>(file, 516, static_cast<std::int32_t>(file.size() - 1280));
  std::memcpy(file.data() + 1280, "## 2D Data", 10);
  std::memcpy(file.data() + base, "2D HETE PH RR", 13);
  Put<std::int32_t>(file, base + 40, static_cast<std::int32_t>(parameters));
  Put<std::int32_t>(file, base + 44, 2560);
  Put<std::int32_t>(file, base + 48, static_cast<std::int32_t>(data));
  Put<std::int32_t>(file, base + 52, static_cast<std::int32_t>(planeBytes));
  Put<std::int32_t>(file, parameters + 384, 64);            // SCANS
  std::memcpy(file.data() + parameters + 1064, "1H", 2);   // OBNUC
  std::memcpy(file.data() + parameters + 1056, "13C", 3);  // IRNUC
  std::memcpy(file.data() + parameters + 1232, "DMSO\0d6", 7);  // zero bytes inside are skipped
  Put<std::int32_t>(file, parameters + 1280, 128);          // Point F2
  Put<float>(file, parameters + 1284, 8000.0f);             // Frequency F2
  Put<double>(file, parameters + 1376, -0.01);              // axis step F2
  Put<float>(file, parameters + 1384, 12.0f);               // first F2 value
  Put<std::int32_t>(file, parameters + 1392, 130);          // Point F1
  Put<float>(file, parameters + 1396, 20000.0f);            // Frequency F1
  Put<double>(file, parameters + 1456, 125.7);              // Abs Freq(Center) F1
  Put<float>(file, data + 16 + (5 * 128 + 3) * 4, 42.0f);   // RR at column 3, row 5
  const auto back = Read2D(file);
  ASSERT_TRUE(back->outcome.ok()) << back->outcome.message.text;
  const model::Spectrum2D& s = *back->s;
  EXPECT_EQ(back->words.pulseModeClass, 3);
  EXPECT_EQ(back->words.realOnly, 1);
  EXPECT_EQ(s.params.SCANS, 64);
  EXPECT_EQ(s.params.SLVNT, "DMSOd6");
  EXPECT_EQ(s.extras[model::F1].nucleus, "13C");
  EXPECT_EQ(s.extras[model::F2].nucleus, "1H");
  EXPECT_DOUBLE_EQ(s.extras[model::F1].absFreqCenter, 125.7);
  EXPECT_EQ(s.RR.at(3, 5), 42.0f);
  EXPECT_FLOAT_EQ(s.ppmF2[100], 11.0f);
  EXPECT_EQ(s.texts.dataTypeText, "Ver.4");
}

TEST(Ver4Layout, AWrittenFileHasItsFieldsInPlace) {
  TempFolder folder;
  auto s = MakeSpectrum2D(128, 130);
  model::Spectrum1D f2 = MakeSpectrum1D(128, 1);
  const auto path = folder / "w.vlk2";
  ASSERT_TRUE(native::WriteDataR4(path, *s, &f2, nullptr, {0x210C, 0, 0}, native::SaveMode::AllPlanes, {}).ok());
  const auto file = Slurp(path);
  constexpr std::size_t base = 1296, parameters = base + 768;
  EXPECT_EQ(Text(file, 0), "VK NMR Ver.4.01");
  EXPECT_EQ(Text(file, 16), path.string());
  EXPECT_EQ(Text(file, 496), "## ADDRESS");
  EXPECT_EQ(Get<std::int32_t>(file, 512), 1280);
  EXPECT_EQ(Text(file, base), "2D HOMO PH RI");
  EXPECT_EQ(Text(file, base + 16), "%% ADDRESS");
  EXPECT_EQ(Get<std::int32_t>(file, base + 32), static_cast<std::int32_t>(base + 240));
  EXPECT_EQ(Get<std::int32_t>(file, base + 36), 256);
  EXPECT_EQ(Text(file, base + 256), "/data/cosy/ser");
  EXPECT_EQ(Text(file, parameters), "%% PARAMETER");
  EXPECT_EQ(Get<std::int32_t>(file, parameters + 384), 16);
  EXPECT_EQ(Get<std::int32_t>(file, parameters + 368), -1);  // RGAIN 40000
  EXPECT_FLOAT_EQ(Get<float>(file, parameters + 16), 1.7f);  // cycle time
  EXPECT_EQ(Text(file, parameters + 1064), "1H");
  EXPECT_EQ(Get<std::int32_t>(file, parameters + 1392), 130);
  EXPECT_EQ(Get<std::int16_t>(file, parameters + 1444), 1);  // window function number F1
  EXPECT_EQ(Text(file, base + 3328), "%% RR,RI,IR,II");
  EXPECT_EQ(Get<std::int32_t>(file, base + 52), 128 * 130 * 16);
  EXPECT_EQ(Get<float>(file, base + 3344 + (128 * 130 + 128 + 2) * 4), s->RI.at(2, 1));  // RI second, row 1
  // Sections begin on 16-byte boundaries; a 2D block and the sets behind it end in "%% END".
  const std::size_t end2D = 1280 + static_cast<std::size_t>(Get<std::int32_t>(file, 516));
  EXPECT_EQ(Text(file, end2D - 16), "%% END");
  const std::int32_t set00 = Get<std::int32_t>(file, 520);
  EXPECT_EQ(set00 % 16, 0);
  EXPECT_EQ(static_cast<std::size_t>(set00), (end2D / 16 + 1) * 16);
  EXPECT_EQ(Text(file, static_cast<std::size_t>(set00) + 16), "1D NORM NORM ");
  EXPECT_EQ(Get<std::int32_t>(file, 532), 0);  // set 01: a tag only
  EXPECT_EQ(Text(file, static_cast<std::size_t>(Get<std::int32_t>(file, 528))), "## 1D Data 01");
  EXPECT_EQ(Text(file, file.size() - 16), "## END");
}

}  // namespace
}  // namespace velk::test
