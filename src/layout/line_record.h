#pragma once
// The stored form of an arrow or line, 64 bytes in the file. The arrow kind and, for files older
// than Ver.4, the line pattern are folded into the thousands of the head lengths; only
// PackLineRecord and UnpackLineRecord know the fold.
#include <array>
#include <cstdint>

#include "layout/layout_objects.h"

namespace velk::layout {

inline constexpr std::size_t kLineRecordSize = 64;
using LineRecordBytes = std::array<std::uint8_t, kLineRecordSize>;

// Where the record goes: the Ver.4 file keeps the pattern in its own field; other targets (the
// clipboard of the page, older files) fold it into the end head length.
enum class LineTarget { Ver4, Folded };

// The record zero-filled, then: coordinates X1 X2 Y1 Y2 and colour at 0..16, the start and end
// head lengths at 20 and 24, width 28, Reserved1 32, the fill colour XOR 0xFFFFFF at 36,
// Reserved2 40, the line type 44; every 2-byte value in a 4-byte slot.
LineRecordBytes PackLineRecord(const LayoutLine& line, LineTarget target);
LayoutLine UnpackLineRecord(const LineRecordBytes& record, LineTarget target);

}  // namespace velk::layout
