#include "layout/emf_recorder.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "layout/metafile_records.h"

namespace velk::layout {
namespace {

namespace emr = metafile::emr;

constexpr std::uint32_t kPenHandle = 1, kBrushHandle = 2, kFontHandle = 3, kHandleCount = 4;
constexpr std::uint32_t kStockNullBrush = 0x80000005, kStockBlackPen = 0x80000007, kStockNullPen = 0x80000008,
                        kStockSystemFont = 0x8000000D, kStockWhiteBrush = 0x80000000;
constexpr std::uint32_t kTransparent = 1, kWinding = 2, kCopyPen = 13, kRegionCopy = 5, kMapText = 1;
constexpr std::size_t kHeaderSize = 108;

// UTF-8 to UTF-16 code units; a broken sequence gives U+FFFD and moves on by one byte.
std::u16string Utf16(std::string_view text) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size();) {
    const auto b = static_cast<unsigned char>(text[i]);
    const int length = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
    char32_t c = length == 1 ? b : length == 2 ? b & 0x1F : length == 3 ? b & 0x0F : b & 0x07;
    bool good = length > 0 && i + length <= text.size();
    for (int k = 1; good && k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      good = (next & 0xC0) == 0x80;
      c = (c << 6) | (next & 0x3F);
    }
    if (!good || c > 0x10FFFF) {
      out.push_back(u'\uFFFD');
      ++i;
      continue;
    }
    if (c >= 0x10000) {
      c -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(c));
    }
    i += static_cast<std::size_t>(length);
  }
  return out;
}

// The byte length of the UTF-8 sequence that starts at i (1 for a broken one).
std::size_t SequenceLength(std::string_view text, std::size_t i) {
  const auto b = static_cast<unsigned char>(text[i]);
  const std::size_t n = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 1;
  return i + n <= text.size() ? n : 1;
}

}  // namespace

EmfRecorder::EmfRecorder(platform::Extent size, double dotsPerInch, platform::Surface& measure)
    : size_(size), dotsPerInch_(dotsPerInch), measure_(measure) {
  bytes_.resize(kHeaderSize);  // filled in by Finish
  records_ = 1;
  for (const auto& [type, value] : {std::pair{emr::kSetMapMode, kMapText}, std::pair{emr::kSetBkMode, kTransparent},
                                    std::pair{emr::kSetPolyFillMode, kWinding}, std::pair{emr::kSetRop2, kCopyPen},
                                    std::pair{emr::kSetTextAlign, 0u}}) {
    Begin(type);
    U32(value);
    End();
  }
  SetPen(platform::kBlack, 1);
  SetNoBrush();
  SetFont(platform::Font{});
}

void EmfRecorder::Begin(std::uint32_t type) {
  recordStart_ = bytes_.size();
  U32(type);
  U32(0);  // the size, set by End
}

void EmfRecorder::End() {
  const auto size = static_cast<std::uint32_t>(bytes_.size() - recordStart_);
  for (int k = 0; k < 4; ++k) bytes_[recordStart_ + 4 + k] = static_cast<std::uint8_t>(size >> (8 * k));
  ++records_;
}

void EmfRecorder::U32(std::uint32_t v) {
  for (int k = 0; k < 4; ++k) bytes_.push_back(static_cast<std::uint8_t>(v >> (8 * k)));
}

void EmfRecorder::Bounds(std::span<const platform::Point> points) {
  std::int32_t left = 0, top = 0, right = -1, bottom = -1;
  if (!points.empty()) {
    left = right = points.front().x;
    top = bottom = points.front().y;
    for (const platform::Point& p : points) {
      left = std::min(left, p.x), right = std::max(right, p.x);
      top = std::min(top, p.y), bottom = std::max(bottom, p.y);
    }
  }
  I32(left), I32(top), I32(right), I32(bottom);
}

void EmfRecorder::Renew(std::uint32_t handle, std::uint32_t stock) {
  if (!made_[handle]) return;
  Begin(emr::kSelectObject);
  U32(stock);
  End();
  Begin(emr::kDeleteObject);
  U32(handle);
  End();
}

void EmfRecorder::SetPen(platform::Color color, int width) {
  if (color == penColor_ && width == penWidth_) return;
  penColor_ = color, penWidth_ = width;
  Renew(kPenHandle, kStockBlackPen);
  made_[kPenHandle] = width > 0;
  if (width > 0) {
    Begin(emr::kCreatePen);
    U32(kPenHandle);
    U32(0);  // solid
    I32(width), I32(0);
    U32(color);
    End();
  }
  Begin(emr::kSelectObject);
  U32(width > 0 ? kPenHandle : kStockNullPen);
  End();
}

void EmfRecorder::SetBrush(platform::Color color) {
  Renew(kBrushHandle, kStockWhiteBrush);
  made_[kBrushHandle] = true;
  Begin(emr::kCreateBrushIndirect);
  U32(kBrushHandle);
  U32(0);  // solid
  U32(color);
  U32(0);
  End();
  Begin(emr::kSelectObject);
  U32(kBrushHandle);
  End();
}

void EmfRecorder::SetNoBrush() {
  Begin(emr::kSelectObject);
  U32(kStockNullBrush);
  End();
}

// Exclusive-or marks belong to windows; in a file, as on paper, everything is drawn over.
void EmfRecorder::SetDrawMode(platform::DrawMode) {}

void EmfRecorder::SetClip(int x, int y, int width, int height) {
  Begin(emr::kExtSelectClipRgn);
  U32(48);  // the region: its 32-byte header and one rectangle
  U32(kRegionCopy);
  U32(32), U32(1), U32(1), U32(16);
  for (int pass = 0; pass < 2; ++pass) I32(x), I32(y), I32(x + width), I32(y + height);
  End();
  clipped_ = true;
}

void EmfRecorder::ClearClip() {
  if (!clipped_) return;
  Begin(emr::kExtSelectClipRgn);
  U32(0);
  U32(kRegionCopy);
  End();
  clipped_ = false;
}

void EmfRecorder::MoveTo(int x, int y) {
  Begin(emr::kMoveToEx);
  I32(x), I32(y);
  End();
}

void EmfRecorder::LineTo(int x, int y) {
  Begin(emr::kLineTo);
  I32(x), I32(y);
  End();
}

void EmfRecorder::Poly(std::uint32_t type, std::span<const platform::Point> points) {
  if (points.empty()) return;
  Begin(type);
  Bounds(points);
  U32(static_cast<std::uint32_t>(points.size()));
  for (const platform::Point& p : points) I32(p.x), I32(p.y);
  End();
}

void EmfRecorder::Polyline(std::span<const platform::Point> points) { Poly(emr::kPolyline, points); }
void EmfRecorder::Polygon(std::span<const platform::Point> points) { Poly(emr::kPolygon, points); }

void EmfRecorder::SetFont(const platform::Font& font) {
  measure_.SetFont(font);
  font_ = font;
  MakeFont(font, 0);
}

void EmfRecorder::MakeFont(const platform::Font& font, long escapement) {
  Renew(kFontHandle, kStockSystemFont);
  made_[kFontHandle] = true;
  Begin(emr::kExtCreateFontIndirectW);
  U32(kFontHandle);
  I32(-std::max(1, font.pixelHeight));  // negative: the character height, as the pixel size on screen
  I32(0);
  I32(static_cast<std::int32_t>(escapement)), I32(static_cast<std::int32_t>(escapement));
  I32(font.bold ? 700 : 400);
  U32(static_cast<std::uint32_t>(font.italic) | (static_cast<std::uint32_t>(font.underline) << 8) |
      (static_cast<std::uint32_t>(font.strikeOut) << 16) | (1u << 24));  // default character set
  U32(0x00040000);  // out precision (TrueType), clip precision, antialiased quality, pitch
  std::u16string face = Utf16(font.family).substr(0, 31);
  face.resize(32, u'\0');
  for (std::size_t i = 0; i < face.size(); i += 2) U32(face[i] | (static_cast<std::uint32_t>(face[i + 1]) << 16));
  End();
  Begin(emr::kSelectObject);
  U32(kFontHandle);
  End();
}

void EmfRecorder::SetTextColor(platform::Color color) {
  Begin(emr::kSetTextColor);
  U32(color);
  End();
}

platform::Extent EmfRecorder::MeasureText(std::string_view text) { return measure_.MeasureText(text); }

void EmfRecorder::Text(int x, int y, double angleDegrees, std::string_view text) {
  if (text.empty()) return;
  const std::u16string units = Utf16(text);
  // A turned text needs a font turned the same way: the escapement goes with the font.
  const long tenths = std::lround(angleDegrees * 10);
  if (tenths != 0) MakeFont(font_, tenths);

  // Advances from the measures of the growing text, so that the spacing is the one on screen.
  std::vector<std::int32_t> dx;
  int before = 0;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t n = SequenceLength(text, i);
    const int after = measure_.MeasureText(text.substr(0, i + n)).width;
    dx.push_back(after - before);
    if (Utf16(text.substr(i, n)).size() == 2) dx.push_back(0);
    before = after;
    i += n;
  }
  dx.resize(units.size(), 0);

  const platform::Extent box = measure_.MeasureText(text);
  const double a = angleDegrees * 3.14159265358979323846 / 180;
  const double c = std::cos(a), s = std::sin(a);
  std::vector<platform::Point> corners;
  for (const auto& [u, v] : {std::pair{0, 0}, std::pair{box.width, 0}, std::pair{0, box.height},
                             std::pair{box.width, box.height}})
    corners.push_back({static_cast<std::int32_t>(std::lround(x + u * c + v * s)),
                       static_cast<std::int32_t>(std::lround(y - u * s + v * c))});

  const auto count = static_cast<std::uint32_t>(units.size());
  const std::uint32_t stringOffset = 76;
  const std::uint32_t dxOffset = stringOffset + (count * 2 + 3) / 4 * 4;
  Begin(emr::kExtTextOutW);
  Bounds(corners);
  U32(1);  // compatible graphics mode
  U32(0x3F800000), U32(0x3F800000);  // x and y scale 1.0f
  I32(x), I32(y);
  U32(count);
  U32(stringOffset);
  U32(0);  // options
  I32(0), I32(0), I32(-1), I32(-1);
  U32(dxOffset);
  for (std::uint32_t i = 0; i < count; i += 2)
    U32(units[i] | (i + 1 < count ? static_cast<std::uint32_t>(units[i + 1]) << 16 : 0u));
  for (std::int32_t d : dx) I32(d);
  End();
  if (tenths != 0) MakeFont(font_, 0);
}

void EmfRecorder::DrawImage(int x, int y, const platform::Image& image) {
  const std::size_t pixels = static_cast<std::size_t>(std::max(0, image.width)) * static_cast<std::size_t>(std::max(0, image.height));
  if (image.width <= 0 || image.height <= 0 || image.pixels.size() < pixels) return;
  const std::uint32_t headerOffset = 80, bitsOffset = headerOffset + 40;
  Begin(emr::kStretchDIBits);
  I32(x), I32(y), I32(x + image.width - 1), I32(y + image.height - 1);
  I32(x), I32(y), I32(0), I32(0), I32(image.width), I32(image.height);
  U32(headerOffset), U32(40), U32(bitsOffset), U32(static_cast<std::uint32_t>(pixels * 4));
  U32(0);           // colours as they stand
  U32(0x00CC0020);  // copy the source
  I32(image.width), I32(image.height);
  U32(40), I32(image.width), I32(image.height), U32(1 | (32u << 16)), U32(0), U32(static_cast<std::uint32_t>(pixels * 4));
  I32(0), I32(0), U32(0), U32(0);
  // Rows from the bottom up; 0xAARRGGBB words are the blue, green, red, alpha bytes of the file.
  for (int row = image.height - 1; row >= 0; --row)
    for (int col = 0; col < image.width; ++col) U32(image.pixels[static_cast<std::size_t>(row) * image.width + col]);
  End();
}

std::vector<std::uint8_t> EmfRecorder::Finish() {
  ClearClip();
  Begin(emr::kEof);
  U32(0), U32(16), U32(20);
  End();

  std::vector<std::uint8_t> file = std::move(bytes_);
  bytes_.clear();
  std::size_t at = 0;
  const auto put = [&](std::uint32_t v) {
    for (int k = 0; k < 4; ++k) file[at++] = static_cast<std::uint8_t>(v >> (8 * k));
  };
  const auto hundredthsMm = [&](int dots) { return static_cast<std::uint32_t>(std::lround(dots * 2540.0 / dotsPerInch_)); };
  const auto millimetres = [&](int dots) { return static_cast<std::uint32_t>(std::lround(dots * 25.4 / dotsPerInch_)); };
  put(emr::kHeader), put(kHeaderSize);
  put(0), put(0), put(static_cast<std::uint32_t>(size_.width - 1)), put(static_cast<std::uint32_t>(size_.height - 1));
  put(0), put(0), put(hundredthsMm(size_.width)), put(hundredthsMm(size_.height));
  put(metafile::kEmfSignature), put(0x00010000);
  put(static_cast<std::uint32_t>(file.size())), put(records_), put(kHandleCount);
  put(0), put(0), put(0);  // no description, no palette
  put(static_cast<std::uint32_t>(size_.width)), put(static_cast<std::uint32_t>(size_.height));
  put(millimetres(size_.width)), put(millimetres(size_.height));
  put(0), put(0), put(0);  // no pixel format, no OpenGL
  put(hundredthsMm(size_.width) * 10), put(hundredthsMm(size_.height) * 10);
  return file;
}

}  // namespace velk::layout
