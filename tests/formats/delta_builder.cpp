#include "formats/delta_builder.h"

#include <cstring>

namespace velk::test {
namespace {

constexpr std::uint32_t kParameters = 1360;
constexpr std::uint32_t kRecordSize = 64;

void Text(std::vector<std::uint8_t>& b, std::size_t at, const std::string& text) {
  std::memcpy(b.data() + at, text.data(), text.size());
}

template <class T>
void Put(std::vector<std::uint8_t>& b, std::size_t at, T value, core::ByteOrder order) {
  core::Encode<T>(b, at, value, order);
}

}  // namespace

std::vector<std::uint8_t> BuildDelta(const DeltaLayout& s) {
  const std::uint32_t parameterLength = 16 + kRecordSize * static_cast<std::uint32_t>(s.records.size());
  const std::uint32_t dataStart = kParameters + parameterLength;
  const std::size_t width = s.singles ? 4 : 8;
  std::vector<std::uint8_t> b(dataStart + s.data.size() * width, 0);
  const core::ByteOrder h = s.headerOrder, d = s.dataOrder;
  Text(b, 0, "JEOL.NMR");
  b[8] = d == core::ByteOrder::Big ? 0 : 1;
  b[12] = static_cast<std::uint8_t>(s.dimensions);
  b[14] = static_cast<std::uint8_t>((s.singles ? 0x40 : 0) | s.dimensions);
  for (int a = 0; a < 2; ++a) {
    b[24 + a] = s.axisType[a];
    Put<std::int32_t>(b, 176 + 4 * a, s.points[a], h);
    Put<double>(b, 272 + 8 * a, s.start[a], h);
    Put<double>(b, 336 + 8 * a, s.stop[a], h);
    Put<double>(b, 1064 + 8 * a, s.frequency[a], h);
    Text(b, 808 + 32 * a, s.nucleus[a]);
  }
  std::memcpy(b.data() + 32, s.units.data(), 4);
  Text(b, 48, s.title);
  Text(b, 680, s.comment);
  Put<std::uint32_t>(b, 1212, kParameters, h);
  Put<std::uint32_t>(b, 1216, parameterLength, h);
  Put<std::uint32_t>(b, 1284, dataStart, h);
  Put<std::uint64_t>(b, 1288, s.data.size() * width, h);

  Put<std::int32_t>(b, kParameters, kRecordSize, d);
  Put<std::int32_t>(b, kParameters + 8, static_cast<std::int32_t>(s.records.size()) - 1, d);
  for (std::size_t i = 0; i < s.records.size(); ++i) {
    const DeltaRecordSpec& r = s.records[i];
    const std::size_t at = kParameters + 16 + i * kRecordSize;
    b[at + 6] = r.prefix;
    b[at + 7] = r.unit;
    Put<std::int32_t>(b, at + 32, r.valueType, d);
    Text(b, at + 36, r.name);
    if (r.valueType == 0) Text(b, at + 16, r.text);
    else if (r.valueType == 1) Put<std::int32_t>(b, at + 16, static_cast<std::int32_t>(r.value), d);
    else Put<double>(b, at + 16, r.value, d);
  }
  for (std::size_t i = 0; i < s.data.size(); ++i) {
    if (s.singles) Put<float>(b, dataStart + 4 * i, static_cast<float>(s.data[i]), d);
    else Put<double>(b, dataStart + 8 * i, s.data[i], d);
  }
  return b;
}

std::vector<double> Submatrices(int sections, std::int32_t columns, std::int32_t rows,
                                const std::function<double(int, std::int32_t, std::int32_t)>& value) {
  std::vector<double> out;
  for (int s = 0; s < sections; ++s)
    for (std::int32_t bi = 0; bi < rows / 32; ++bi)
      for (std::int32_t bj = 0; bj < columns / 32; ++bj)
        for (std::int32_t i = 0; i < 32; ++i)
          for (std::int32_t j = 0; j < 32; ++j) out.push_back(value(s, bj * 32 + j, bi * 32 + i));
  return out;
}

}  // namespace velk::test
