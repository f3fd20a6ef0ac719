#pragma once
// The record numbers and keys of Windows metafiles, written by the recorder and read by the
// player of page images.
#include <cstdint>

namespace velk::layout::metafile {

inline constexpr std::uint32_t kEmfSignature = 0x464D4520;  // " EMF" at byte 40 of the header
inline constexpr std::uint32_t kPlaceableKey = 0x9AC6CDD7;  // the header before a plain metafile
inline constexpr std::size_t kPlaceableHeaderSize = 22;

// Enhanced metafile records.
namespace emr {
inline constexpr std::uint32_t kHeader = 1, kPolygon = 3, kPolyline = 4, kEof = 14, kSetMapMode = 17, kSetBkMode = 18,
                               kSetPolyFillMode = 19, kSetRop2 = 20, kSetTextAlign = 22, kSetTextColor = 24,
                               kMoveToEx = 27, kSelectObject = 37, kCreatePen = 38, kCreateBrushIndirect = 39,
                               kDeleteObject = 40, kLineTo = 54, kExtSelectClipRgn = 75, kStretchDIBits = 81,
                               kExtCreateFontIndirectW = 82, kExtTextOutW = 84, kPolygon16 = 86, kPolyline16 = 87;
}  // namespace emr

}  // namespace velk::layout::metafile
