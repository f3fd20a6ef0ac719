#pragma once
// Decoding of the data elements of binary files into single floats: 2- and 4-byte integers and
// 4- and 8-byte floats, each in both byte orders, through one decoder.
#include <cstdint>
#include <span>

#include "core/bytes.h"

namespace velk::formats {

enum class ElementType { Int16, Int32, Float32, Float64 };

constexpr std::size_t ElementWidth(ElementType type) {
  switch (type) {
    case ElementType::Int16: return 2;
    case ElementType::Int32: case ElementType::Float32: return 4;
    case ElementType::Float64: return 8;
  }
  return 4;
}

// One element at the start of raw (which holds at least ElementWidth(type) bytes). Floats are
// decoded by hand as the instruments' files have always been read: two leading zero bytes give 0,
// no NaN or infinity exists, and doubles are narrowed to single precision.
float DecodeElement(const std::uint8_t* raw, ElementType type, core::ByteOrder order);

// count elements from offset into out; false (and nothing written) when they lie outside bytes.
// reversed stores the run last element first, as readers of spectra stored high frequency first need.
bool DecodeElements(core::Bytes bytes, std::uint64_t offset, std::size_t count, ElementType type,
                    core::ByteOrder order, std::span<float> out, bool reversed = false);

}  // namespace velk::formats
