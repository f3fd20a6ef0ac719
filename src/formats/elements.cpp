#include "formats/elements.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace velk::formats {
namespace {

// b[0] is the most significant byte whatever the order in the file.
void MostSignificantFirst(const std::uint8_t* raw, std::size_t width, core::ByteOrder order, std::uint8_t* b) {
  for (std::size_t i = 0; i < width; ++i) b[i] = order == core::ByteOrder::Big ? raw[i] : raw[width - 1 - i];
}

float SingleByHand(const std::uint8_t* b) {
  if (b[0] == 0 && b[1] == 0) return 0.0f;
  const int exponent = (b[0] % 128) * 2 + (b[1] / 128) - 150;
  const double mantissa = ((b[1] % 128) + 128) * 65536.0 + b[2] * 256.0 + b[3];
  const double value = std::ldexp(mantissa, exponent);
  return static_cast<float>(b[0] & 0x80 ? -value : value);
}

float DoubleByHand(const std::uint8_t* b) {
  if (b[0] == 0 && b[1] == 0) return 0.0f;
  const int exponent = (b[0] % 128) * 16 + (b[1] / 16) - 1059;
  const double mantissa = ((b[1] % 16) + 16) * 4294967296.0 + b[2] * 16777216.0 + b[3] * 65536.0 +
                          b[4] * 256.0 + b[5] + b[6] / 256.0 + b[7] / 65536.0;
  const double value = std::ldexp(mantissa, exponent);
  return static_cast<float>(b[0] & 0x80 ? -value : value);
}

inline float FromMostSignificantFirst(const std::uint8_t* b, ElementType type) {
  switch (type) {
    case ElementType::Int16: return static_cast<float>(static_cast<std::int16_t>(b[0] << 8 | b[1]));
    case ElementType::Int32:
      return static_cast<float>(static_cast<std::int32_t>(static_cast<std::uint32_t>(b[0]) << 24 | b[1] << 16 |
                                                          b[2] << 8 | b[3]));
    case ElementType::Float32: return SingleByHand(b);
    case ElementType::Float64: return DoubleByHand(b);
  }
  return 0.0f;
}

template <ElementType Type, bool Big>
// out advances by step (1, or -1 for a run stored in reverse) after every element.
void DecodeRun(const std::uint8_t* raw, std::size_t count, float* out, std::ptrdiff_t step) {
  constexpr std::size_t width = ElementWidth(Type);
  if constexpr (Type == ElementType::Int16 || Type == ElementType::Int32) {
    // Integers need no hand rule: a plain load, swapped when the file's order is not the machine's.
    using Int = std::conditional_t<Type == ElementType::Int16, std::int16_t, std::int32_t>;
    constexpr bool swap = Big != (std::endian::native == std::endian::big);
    for (std::size_t i = 0; i < count; ++i, raw += width, out += step) {
      Int value;
      std::memcpy(&value, raw, width);
      if constexpr (swap) value = core::SwapBytes(value);
      *out = static_cast<float>(value);
    }
    return;
  }
  // The hand rules give the IEEE value for every normal number (biased exponent neither all zeros
  // nor all ones), so those take the machine's conversion; the rest go by hand.
  using Bits = std::conditional_t<Type == ElementType::Float64, std::uint64_t, std::uint32_t>;
  using Float = std::conditional_t<Type == ElementType::Float64, double, float>;
  constexpr int kMantissaBits = Type == ElementType::Float64 ? 52 : 23;
  constexpr Bits kExponentMask = Type == ElementType::Float64 ? 0x7FF : 0xFF;
  constexpr bool swap = Big != (std::endian::native == std::endian::big);
  for (std::size_t i = 0; i < count; ++i, raw += width, out += step) {
    Bits bits;
    std::memcpy(&bits, raw, width);
    if constexpr (swap) bits = core::SwapBytes(bits);
    const Bits exponent = (bits >> kMantissaBits) & kExponentMask;
    if (exponent != 0 && exponent != kExponentMask) {
      Float value;
      std::memcpy(&value, &bits, width);
      *out = static_cast<float>(value);
    } else {
      std::uint8_t b[width];
      for (std::size_t k = 0; k < width; ++k) b[k] = Big ? raw[k] : raw[width - 1 - k];
      *out = FromMostSignificantFirst(b, Type);
    }
  }
}

}  // namespace

float DecodeElement(const std::uint8_t* raw, ElementType type, core::ByteOrder order) {
  std::uint8_t b[8];
  MostSignificantFirst(raw, ElementWidth(type), order, b);
  return FromMostSignificantFirst(b, type);
}

bool DecodeElements(core::Bytes bytes, std::uint64_t offset, std::size_t count, ElementType type,
                    core::ByteOrder order, std::span<float> out, bool reversed) {
  const std::size_t width = ElementWidth(type);
  if (count > out.size() || count > UINT64_MAX / width || !core::Fits(bytes, offset, count * width)) return false;
  if (count == 0) return true;
  const std::uint8_t* raw = bytes.data() + offset;
  float* first = reversed ? out.data() + count - 1 : out.data();
  const std::ptrdiff_t step = reversed ? -1 : 1;
  // One loop per type and byte order, chosen once: no test stands in the inner loop.
  const bool big = order == core::ByteOrder::Big;
  switch (type) {
    case ElementType::Int16:
      big ? DecodeRun<ElementType::Int16, true>(raw, count, first, step)
          : DecodeRun<ElementType::Int16, false>(raw, count, first, step);
      break;
    case ElementType::Int32:
      big ? DecodeRun<ElementType::Int32, true>(raw, count, first, step)
          : DecodeRun<ElementType::Int32, false>(raw, count, first, step);
      break;
    case ElementType::Float32:
      big ? DecodeRun<ElementType::Float32, true>(raw, count, first, step)
          : DecodeRun<ElementType::Float32, false>(raw, count, first, step);
      break;
    case ElementType::Float64:
      big ? DecodeRun<ElementType::Float64, true>(raw, count, first, step)
          : DecodeRun<ElementType::Float64, false>(raw, count, first, step);
      break;
  }
  return true;
}

}  // namespace velk::formats
