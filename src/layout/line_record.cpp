#include "layout/line_record.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace velk::layout {
namespace {

constexpr int kFold = 1000;             // head lengths live below it, folded values above
constexpr int kLineTypes = 25;
constexpr int kLineTypeFoldBase = 5;    // a folded pattern p is stored as (p + 5) thousands
constexpr std::uint32_t kFillInversion = 0xFFFFFF;

template <class T>
void Put(LineRecordBytes& r, std::size_t at, T value) {
  std::memcpy(r.data() + at, &value, sizeof value);  // the record is little-endian like the machine
}
template <class T>
T Get(const LineRecordBytes& r, std::size_t at) {
  T value;
  std::memcpy(&value, r.data() + at, sizeof value);
  return value;
}

int NonNegativeMod(int value, int modulus) { return ((value % modulus) + modulus) % modulus; }

}  // namespace

static_assert(std::endian::native == std::endian::little, "line records are copied as they lie in memory");

LineRecordBytes PackLineRecord(const LayoutLine& line, LineTarget target) {
  LineRecordBytes r{};
  const int kind = std::max(0, line.StyleCode / 4);
  const int flags = NonNegativeMod(line.StyleCode, 4);
  const bool endHead = flags == 1 || flags == 3;
  const bool startHead = flags == 2 || flags == 3;
  int start = startHead ? NonNegativeMod(line.HeadLengthStart, kFold) : 0;
  int end = endHead ? NonNegativeMod(line.HeadLengthEnd, kFold) : 0;
  start += kind * kFold;
  const int lineType = NonNegativeMod(line.LineType, kLineTypes);
  if (target != LineTarget::Ver4) end += (lineType + kLineTypeFoldBase) * kFold;

  Put(r, 0, line.X1);
  Put(r, 4, line.X2);
  Put(r, 8, line.Y1);
  Put(r, 12, line.Y2);
  Put(r, 16, line.Color);
  Put(r, 20, static_cast<std::int16_t>(start));
  Put(r, 24, static_cast<std::int16_t>(end));
  Put(r, 28, line.Width);
  Put(r, 32, line.Reserved1);
  Put(r, 36, line.FillColor ^ kFillInversion);
  Put(r, 40, line.Reserved2);
  Put(r, 44, static_cast<std::int32_t>(lineType));
  return r;
}

LayoutLine UnpackLineRecord(const LineRecordBytes& r, LineTarget target) {
  LayoutLine line;
  line.X1 = Get<float>(r, 0);
  line.X2 = Get<float>(r, 4);
  line.Y1 = Get<float>(r, 8);
  line.Y2 = Get<float>(r, 12);
  line.Color = Get<std::uint32_t>(r, 16);
  const int start = Get<std::int16_t>(r, 20);
  const int end = Get<std::int16_t>(r, 24);
  line.Width = Get<std::int16_t>(r, 28);
  line.Reserved1 = Get<std::int16_t>(r, 32);
  line.FillColor = Get<std::uint32_t>(r, 36) ^ kFillInversion;
  line.Reserved2 = Get<std::int16_t>(r, 40);
  line.LineType = NonNegativeMod(Get<std::int32_t>(r, 44), kLineTypes);
  if (target != LineTarget::Ver4 && end >= kLineTypeFoldBase * kFold)
    line.LineType = NonNegativeMod(end / kFold - kLineTypeFoldBase, kLineTypes);
  line.HeadLengthStart = static_cast<std::int16_t>(NonNegativeMod(start, kFold));
  line.HeadLengthEnd = static_cast<std::int16_t>(NonNegativeMod(end, kFold));
  const int kind = std::max(0, start / kFold);  // a damaged record's negative kind becomes a plain line
  // The head flags are not stored: a head is there when it has a length.
  const int flags = (line.HeadLengthEnd > 0 ? 1 : 0) + (line.HeadLengthStart > 0 ? 2 : 0);
  line.StyleCode = static_cast<std::int16_t>(kind * 4 + flags);
  return line;
}

}  // namespace velk::layout
