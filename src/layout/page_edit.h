#pragma once
// The arithmetic of the page editor: what lies under the pointer, which handle of it, what a drag
// does to it (moved or resized, snapped to a grid and kept on the paper), the hint and undo
// caption that go with it, and where new objects appear. Positions are page centimetres.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "layout/layout_document.h"
#include "layout/page_frames.h"
#include "platform/surface.h"

namespace velk::layout {

// What the page editor works on.
struct EditedPage {
  LayoutDocument objects;
  PageFrames frames;
  Paper paper;
  friend bool operator==(const EditedPage&, const EditedPage&) = default;
};

struct PagePoint {
  double x = 0, y = 0;
};

// The place of a text object: its anchor (the top-left corner of its first line), its extent along
// its own directions and its angle.
struct TextFrame {
  double x = 0, y = 0, width = 0, height = 0, angle = 0;
};
// Measured on a surface at the size the text is printed at.
TextFrame TextFrameOf(platform::Surface& measure, const LayoutText& text);
std::vector<TextFrame> TextFramesOf(platform::Surface& measure, const LayoutDocument& doc);

// A frame of the page or one of its objects.
struct Target {
  enum class What { Frame, Object } what = What::Object;
  FrameKind frame = FrameKind::Spectrum;
  DrawOrderEntry object{};
  static Target Of(FrameKind f) { return {What::Frame, f, {}}; }
  static Target Of(DrawOrderEntry o) { return {What::Object, FrameKind::Spectrum, o}; }
  friend bool operator==(const Target&, const Target&) = default;
};

enum class Handle { Body, Left, Right, Top, Bottom, TopLeft, TopRight, BottomLeft, BottomRight, Start, End, Rotate };

struct Hit {
  Target target;
  Handle handle = Handle::Body;
  friend bool operator==(const Hit&, const Hit&) = default;
};

// The frontmost thing under the point: the handles of the selection first, then the objects from
// front to back, then the frames. `tolerance` is how near (cm) a handle or a thin line counts.
std::optional<Hit> HitTest(const EditedPage& page, const std::vector<TextFrame>& texts, PagePoint p, double tolerance,
                           const std::optional<Target>& selected = std::nullopt);

// The handles a target shows when selected, with their places.
struct HandlePlace {
  Handle handle;
  PagePoint at;
};
std::vector<HandlePlace> HandlesOf(const EditedPage& page, const std::vector<TextFrame>& texts, const Target& target);

// The state word of a drag: 1 move text, 2 rotate text, 3 change an arrow's end, 4 move an arrow,
// 10 move a frame, image or shape, 11 resize one.
int DragModeOf(const Hit& hit);
// The status line's hint for a drag ("Move Text. ", "Change Frame Size" ...), empty when it has none.
std::string_view HintOf(const Hit& hit);
// The undo code of a drag, of adding, deleting and changing the properties of an object.
int DragUndoCode(const Hit& hit);
int AddUndoCode(ObjectKind kind);
int DeleteUndoCode(ObjectKind kind);
int ChangeUndoCode(ObjectKind kind);

inline constexpr double kSnapGrid = 0.1;       // cm
inline constexpr double kSmallestObject = 0.2;  // cm, a side of a shape or image
inline constexpr double kSmallestFrame = 1.0;   // cm, a side of a frame

// The page as the drag from `from` to `to` leaves it, worked out from the page as the drag began
// (so that nothing drifts): positions snap to the grid (none when it is 0), moved things stay on
// the paper, and a resized side never becomes shorter than the smallest size.
void ApplyDrag(EditedPage& page, const EditedPage& begun, const Hit& hit, PagePoint from, PagePoint to,
               double grid = kSnapGrid);

// Arrow widths and head lengths are kept in 0.1 mm, below 1000 units.
int LineUnitsOfMm(double mm);
double MmOfLineUnits(int units);
// The arrow kind (its style code) with heads of the length where its head flags put them, and no
// length where they don't, as the file keeps them.
void SetArrowKind(LayoutLine& line, int styleCode, int headUnits);
// A circle's ratio (its height over its width; 1.0 is a true circle), set by moving its lower edge.
void ApplyRatio(LayoutShape& circle, double ratio);

// The status line: "X= 3.25   Y= 4.10 cm", and for a frame its size and place.
std::string PositionText(PagePoint p);
std::string FrameText(const PageFrame& frame);

// New objects centred on the point (pulled onto the paper): a 10-point text, an arrow 3 cm long with
// a head at its end, a 2 cm circle, a 3 x 2 cm rectangle, an image 5 cm wide in the picture's
// proportion (height over width).
LayoutText NewText(const EditedPage& page, PagePoint at, std::string codedText);
LayoutLine NewLine(const EditedPage& page, PagePoint at);
LayoutShape NewCircle(const EditedPage& page, PagePoint at);
LayoutShape NewRectangle(const EditedPage& page, PagePoint at);
LayoutImage NewImage(const EditedPage& page, PagePoint at, PictureBytes picture, double aspect);

}  // namespace velk::layout
