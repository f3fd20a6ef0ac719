#pragma once
// The drawing surface: everything the contour tracer, the axes, the traces and the page draw with.
// Coordinates are whole device units (pixels on a screen or image, the writer's dots on paper);
// one drawing serves a window, an image file, a vector file and a printer alike.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velk::platform {

// A colour as the settings files keep it: a 24-bit blue-green-red word, 0x0000FF is red.
using Color = std::uint32_t;

constexpr int RedOf(Color c) { return static_cast<int>(c & 0xFF); }
constexpr int GreenOf(Color c) { return static_cast<int>((c >> 8) & 0xFF); }
constexpr int BlueOf(Color c) { return static_cast<int>((c >> 16) & 0xFF); }
constexpr Color MakeColor(int red, int green, int blue) {
  return static_cast<Color>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}

inline constexpr Color kBlack = 0x000000;
inline constexpr Color kWhite = 0xFFFFFF;

struct Point {
  std::int32_t x = 0;
  std::int32_t y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Extent {
  int width = 0;
  int height = 0;
};

struct Font {
  std::string family = "Sans Serif";
  int pixelHeight = 12;  // the height of a line of text in device units
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikeOut = false;
};

// Copy paints over; Xor inverts what is below, so that drawing the same figure twice removes it
// (rubber bands and cursors).
enum class DrawMode { Copy, Xor };

// A retained picture: 0xAARRGGBB pixels, row by row from the top.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

class Surface {
 public:
  virtual ~Surface() = default;

  // A solid pen of the given width for lines and outlines; width 0 means no outline.
  virtual void SetPen(Color color, int width) = 0;
  // A solid brush for polygons; NoBrush leaves them hollow.
  virtual void SetBrush(Color color) = 0;
  virtual void SetNoBrush() = 0;
  virtual void SetDrawMode(DrawMode mode) = 0;
  // Nothing is drawn outside the clip rectangle until it is cleared.
  virtual void SetClip(int x, int y, int width, int height) = 0;
  virtual void ClearClip() = 0;

  // A current position that survives between calls: LineTo draws from it and moves it.
  virtual void MoveTo(int x, int y) = 0;
  virtual void LineTo(int x, int y) = 0;
  virtual void Polyline(std::span<const Point> points) = 0;
  // Filled by the non-zero winding rule with the current brush, outlined with the current pen.
  virtual void Polygon(std::span<const Point> points) = 0;

  virtual void SetFont(const Font& font) = 0;
  virtual void SetTextColor(Color color) = 0;
  // Text whose box has its top-left corner at (x, y), turned counter-clockwise by the angle
  // in degrees about that corner.
  virtual void Text(int x, int y, double angleDegrees, std::string_view text) = 0;
  virtual Extent MeasureText(std::string_view text) = 0;

  virtual void DrawImage(int x, int y, const Image& image) = 0;
  // The drawable extent in device units.
  virtual Extent Size() const = 0;
};

}  // namespace velk::platform
