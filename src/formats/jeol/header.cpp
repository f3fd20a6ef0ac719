#include "formats/jeol/header.h"

#include <algorithm>

#include "formats/damage.h"

#include <cstring>

#include "core/text.h"
#include "formats/bytes_to_text.h"

namespace velk::formats::jeol {
namespace {

constexpr char kMagic[] = "JEOL.NMR";

template <class T>
T Number(core::Bytes bytes, std::uint64_t offset, core::ByteOrder order) {
  return core::DecodeOr<T>(bytes, offset, order, T{});
}

std::string Field(core::Bytes bytes, std::uint64_t offset, std::uint64_t length) {
  return core::Trim(BytesToText(bytes, offset, length));
}

void ReadNumbers(core::Bytes bytes, core::ByteOrder order, DeltaHeader& h) {
  h.headerOrder = order;
  for (int a : {kX, kY}) {
    h.points[a] = Number<std::int32_t>(bytes, 176 + 4 * a, order);
    h.start[a] = Number<double>(bytes, 272 + 8 * a, order);
    h.stop[a] = Number<double>(bytes, 336 + 8 * a, order);
    h.baseFrequency[a] = Number<double>(bytes, 1064 + 8 * a, order);
  }
  h.parameterStart = Number<std::uint32_t>(bytes, 1212, order);
  h.parameterLength = Number<std::uint32_t>(bytes, 1216, order);
  h.dataStart = Number<std::uint32_t>(bytes, 1284, order);
  h.dataLength = Number<std::uint64_t>(bytes, 1288, order);
}

bool InFile(std::uint64_t offset, std::uint64_t length, std::uint64_t fileSize) {
  return offset >= kHeaderBytes && offset <= fileSize && length <= fileSize - offset;
}

bool NumbersFit(const DeltaHeader& h, std::uint64_t fileSize) {
  for (int a = 0; a < h.dimensions && a < 2; ++a)
    if (h.points[a] < 1 || static_cast<std::uint64_t>(h.points[a]) > fileSize) return false;
  return InFile(h.parameterStart, h.parameterLength, fileSize) && InFile(h.dataStart, h.dataLength, fileSize);
}

}  // namespace

bool ParametersFit(const DeltaHeader& h, std::uint64_t fileSize) {
  return InFile(h.parameterStart, h.parameterLength, fileSize);
}

bool SectionsFit(const DeltaHeader& h, std::uint64_t fileSize) {
  return ParametersFit(h, fileSize) && InFile(h.dataStart, h.dataLength, fileSize);
}

std::string SectionsFault(const DeltaHeader& h, std::uint64_t fileSize) {
  const auto end = [](std::uint64_t start, std::uint64_t length) {
    return length > UINT64_MAX - start ? UINT64_MAX : start + length;
  };
  if (h.parameterStart < kHeaderBytes || h.dataStart < kHeaderBytes)
    return "a section starts inside the " + std::to_string(kHeaderBytes) + "-byte header";
  return TruncatedAt(fileSize, std::max(end(h.parameterStart, h.parameterLength), end(h.dataStart, h.dataLength)));
}

std::optional<DeltaHeader> ReadDeltaHeader(core::Bytes bytes) {
  if (bytes.size() < 8 || std::memcmp(bytes.data(), kMagic, 8) != 0) return std::nullopt;
  DeltaHeader h;
  const auto byteAt = [&](std::uint64_t offset) -> std::uint8_t { return offset < bytes.size() ? bytes[offset] : 0; };
  h.dataOrder = byteAt(8) == 0 ? core::ByteOrder::Big : core::ByteOrder::Little;
  h.dimensions = byteAt(12);
  // The top two bits of byte 14 give the element type: 0 doubles, 1 singles.
  h.elementType = (byteAt(14) >> 6) == 1 ? ElementType::Float32 : ElementType::Float64;
  for (int a : {kX, kY}) {
    h.axisType[a] = byteAt(24 + a);
    h.unit[a] = {byteAt(32 + 2 * a), byteAt(33 + 2 * a)};
    h.nucleus[a] = Field(bytes, 808 + 32 * a, 16);
  }
  h.sampleId = Field(bytes, 48, 128);
  h.comment = Field(bytes, 680, 128);
  h.instrument = Field(bytes, 424, 16);
  ReadNumbers(bytes, h.dataOrder, h);
  if (h.dataOrder != core::ByteOrder::Big && !NumbersFit(h, bytes.size())) ReadNumbers(bytes, core::ByteOrder::Big, h);
  return h;
}

}  // namespace velk::formats::jeol
