#include "layout/page_edit.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "layout/draw_coded_text.h"

namespace velk::layout {
namespace {

constexpr double kCmPerPoint = 2.54 / 72;
constexpr double kMeasureScale = 10;    // device units per point on the measuring surface
constexpr double kCmPerLineUnit = 0.01;  // line widths are kept in 0.1 mm
constexpr double kDegrees = 57.29577951308232;

struct Box {
  double left = 0, top = 0, right = 0, bottom = 0;
  double width() const { return right - left; }
  double height() const { return bottom - top; }
  bool Holds(PagePoint p, double tolerance) const {
    return p.x >= left - tolerance && p.x <= right + tolerance && p.y >= top - tolerance && p.y <= bottom + tolerance;
  }
};

Box Normal(double x1, double y1, double x2, double y2) {
  return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
}
Box BoxOf(const PageFrame& f) { return {f.X, f.Y, f.X + f.Width, f.Y + f.Height}; }
Box BoxOf(const LayoutShape& s) { return Normal(s.X1, s.Y1, s.X2, s.Y2); }
Box BoxOf(const LayoutImage& i) { return Normal(i.Left, i.Top, i.Right, i.Bottom); }

double Distance(PagePoint a, PagePoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

double DistanceToSegment(PagePoint p, PagePoint a, PagePoint b) {
  const double dx = b.x - a.x, dy = b.y - a.y, length2 = dx * dx + dy * dy;
  const double t = length2 > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length2, 0.0, 1.0) : 0.0;
  return Distance(p, {a.x + t * dx, a.y + t * dy});
}

// The point in a text's own directions: along its baseline and down across its lines.
PagePoint Local(const TextFrame& t, PagePoint p) {
  const double a = t.angle / kDegrees, dx = p.x - t.x, dy = p.y - t.y;
  return {dx * std::cos(a) - dy * std::sin(a), dx * std::sin(a) + dy * std::cos(a)};
}
PagePoint FromLocal(const TextFrame& t, PagePoint q) {
  const double a = t.angle / kDegrees;
  return {t.x + q.x * std::cos(a) + q.y * std::sin(a), t.y - q.x * std::sin(a) + q.y * std::cos(a)};
}

std::vector<HandlePlace> BoxHandles(const Box& b) {
  const double mx = (b.left + b.right) / 2, my = (b.top + b.bottom) / 2;
  return {{Handle::TopLeft, {b.left, b.top}},       {Handle::Top, {mx, b.top}},
          {Handle::TopRight, {b.right, b.top}},     {Handle::Right, {b.right, my}},
          {Handle::BottomRight, {b.right, b.bottom}}, {Handle::Bottom, {mx, b.bottom}},
          {Handle::BottomLeft, {b.left, b.bottom}}, {Handle::Left, {b.left, my}}};
}

double Snap(double v, double grid) { return grid > 0 ? std::round(v / grid) * grid : v; }

// The move of a box by (dx, dy), its corner on the grid and the whole box on the paper.
PagePoint MoveOf(const Box& b, double dx, double dy, const Paper& paper, double grid) {
  dx = Snap(b.left + dx, grid) - b.left;
  dy = Snap(b.top + dy, grid) - b.top;
  if (b.width() <= paper.widthCm) dx = std::clamp(dx, -b.left, paper.widthCm - b.right);
  if (b.height() <= paper.heightCm) dy = std::clamp(dy, -b.top, paper.heightCm - b.bottom);
  return {dx, dy};
}

bool Moves(Handle h, Handle a, Handle b, Handle c) { return h == a || h == b || h == c; }

// The box with the sides that the handle holds moved to the pointer, on the grid and the paper,
// never narrower than the smallest side.
Box Resized(Box b, Handle h, double dx, double dy, const Paper& paper, double grid, double smallest) {
  if (Moves(h, Handle::Left, Handle::TopLeft, Handle::BottomLeft))
    b.left = std::clamp(Snap(b.left + dx, grid), 0.0, std::max(0.0, b.right - smallest));
  if (Moves(h, Handle::Right, Handle::TopRight, Handle::BottomRight))
    b.right = std::clamp(Snap(b.right + dx, grid), std::min(paper.widthCm, b.left + smallest), paper.widthCm);
  if (Moves(h, Handle::Top, Handle::TopLeft, Handle::TopRight))
    b.top = std::clamp(Snap(b.top + dy, grid), 0.0, std::max(0.0, b.bottom - smallest));
  if (Moves(h, Handle::Bottom, Handle::BottomLeft, Handle::BottomRight))
    b.bottom = std::clamp(Snap(b.bottom + dy, grid), std::min(paper.heightCm, b.top + smallest), paper.heightCm);
  return b;
}

Box BoxAfter(const Box& b, Handle h, double dx, double dy, const Paper& paper, double grid, double smallest) {
  if (h != Handle::Body) return Resized(b, h, dx, dy, paper, grid, smallest);
  const PagePoint d = MoveOf(b, dx, dy, paper, grid);
  return {b.left + d.x, b.top + d.y, b.right + d.x, b.bottom + d.y};
}

PagePoint OnPaper(PagePoint p, const Paper& paper, double grid) {
  return {std::clamp(Snap(p.x, grid), 0.0, paper.widthCm), std::clamp(Snap(p.y, grid), 0.0, paper.heightCm)};
}

void Put(LayoutShape& s, const Box& b) {
  s.X1 = float(b.left), s.Y1 = float(b.top), s.X2 = float(b.right), s.Y2 = float(b.bottom);
}

// A box of the size centred on the point, pulled onto the paper.
Box Centred(const EditedPage& page, PagePoint at, double width, double height) {
  const Box b{at.x - width / 2, at.y - height / 2, at.x + width / 2, at.y + height / 2};
  const PagePoint d = MoveOf(b, 0, 0, page.paper, 0);
  return {b.left + d.x, b.top + d.y, b.right + d.x, b.bottom + d.y};
}

}  // namespace

TextFrame TextFrameOf(platform::Surface& measure, const LayoutText& text) {
  const TextFont font{text.FontName, text.Points, text.Bold != 0, text.Italic != 0, text.Underline != 0,
                      text.StrikeOut != 0};
  const platform::Extent e = MeasureCodedText(measure, text.Text, font, kMeasureScale);
  // An empty text still has a place to grab.
  const double width = std::max(e.width / kMeasureScale, double(text.Points)) * kCmPerPoint;
  const double height = std::max(e.height / kMeasureScale, double(text.Points)) * kCmPerPoint;
  return {text.X, text.Y, width, height, text.Angle};
}

std::vector<TextFrame> TextFramesOf(platform::Surface& measure, const LayoutDocument& doc) {
  std::vector<TextFrame> frames;
  for (const LayoutText& t : doc.texts) frames.push_back(TextFrameOf(measure, t));
  return frames;
}

std::vector<HandlePlace> HandlesOf(const EditedPage& page, const std::vector<TextFrame>& texts, const Target& target) {
  if (target.what == Target::What::Frame) return BoxHandles(BoxOf(page.frames[target.frame]));
  const LayoutDocument& doc = page.objects;
  if (!IsLive(doc, target.object)) return {};
  const auto i = static_cast<std::size_t>(target.object.index);
  switch (target.object.kind) {
    case ObjectKind::Text:
      if (i >= texts.size()) return {};
      return {{Handle::Rotate, FromLocal(texts[i], {texts[i].width, texts[i].height / 2})}};
    case ObjectKind::Line:
      return {{Handle::Start, {doc.lines[i].X1, doc.lines[i].Y1}}, {Handle::End, {doc.lines[i].X2, doc.lines[i].Y2}}};
    case ObjectKind::Circle: return BoxHandles(BoxOf(doc.circles[i]));
    case ObjectKind::Rectangle: return BoxHandles(BoxOf(doc.rectangles[i]));
    case ObjectKind::Image: return BoxHandles(BoxOf(doc.images[i]));
  }
  return {};
}

std::optional<Hit> HitTest(const EditedPage& page, const std::vector<TextFrame>& texts, PagePoint p, double tolerance,
                           const std::optional<Target>& selected) {
  if (selected)
    for (const HandlePlace& h : HandlesOf(page, texts, *selected))
      if (Distance(h.at, p) <= tolerance) return Hit{*selected, h.handle};
  const LayoutDocument& doc = page.objects;
  const std::vector<DrawOrderEntry> order = ResolveDrawOrder(doc).order;
  for (auto entry = order.rbegin(); entry != order.rend(); ++entry) {
    const auto i = static_cast<std::size_t>(entry->index);
    bool under = false;
    switch (entry->kind) {
      case ObjectKind::Text: {
        if (i >= texts.size()) break;
        const PagePoint q = Local(texts[i], p);
        under = q.x >= -tolerance && q.x <= texts[i].width + tolerance && q.y >= -tolerance &&
                q.y <= texts[i].height + tolerance;
        break;
      }
      case ObjectKind::Line: {
        const LayoutLine& l = doc.lines[i];
        under = DistanceToSegment(p, {l.X1, l.Y1}, {l.X2, l.Y2}) <= tolerance + l.Width * kCmPerLineUnit / 2;
        break;
      }
      case ObjectKind::Circle: {
        const Box b = BoxOf(doc.circles[i]);
        const double rx = b.width() / 2 + tolerance, ry = b.height() / 2 + tolerance;
        const double u = (p.x - (b.left + b.right) / 2) / rx, v = (p.y - (b.top + b.bottom) / 2) / ry;
        under = u * u + v * v <= 1;
        break;
      }
      case ObjectKind::Rectangle: under = BoxOf(doc.rectangles[i]).Holds(p, tolerance); break;
      case ObjectKind::Image: under = BoxOf(doc.images[i]).Holds(p, tolerance); break;
    }
    if (under) return Hit{Target::Of(*entry), Handle::Body};
  }
  // The small frames lie above the large ones.
  for (FrameKind f : {FrameKind::Comment, FrameKind::Level, FrameKind::TraceF1, FrameKind::TraceF2,
                      FrameKind::Parameter, FrameKind::Spectrum})
    if (page.frames[f].Shown && BoxOf(page.frames[f]).Holds(p, 0)) return Hit{Target::Of(f), Handle::Body};
  return std::nullopt;
}

int DragModeOf(const Hit& hit) {
  if (hit.target.what == Target::What::Object) {
    switch (hit.target.object.kind) {
      case ObjectKind::Text: return hit.handle == Handle::Rotate ? 2 : 1;
      case ObjectKind::Line: return hit.handle == Handle::Body ? 4 : 3;
      default: break;
    }
  }
  return hit.handle == Handle::Body ? 10 : 11;
}

std::string_view HintOf(const Hit& hit) {
  const bool body = hit.handle == Handle::Body;
  if (hit.target.what == Target::What::Object) {
    switch (hit.target.object.kind) {
      case ObjectKind::Text: return body ? "Move Text. " : "Rotate Text";
      case ObjectKind::Line: return body ? "Move Arrow. " : "Rotate Arrow/Change Length";
      default: return {};
    }
  }
  switch (hit.target.frame) {
    case FrameKind::Parameter: return body ? "Move Parameter" : "Change Parameter Size";
    case FrameKind::TraceF1: return body ? "Move F1 Spectrum" : "Change Frame Size";
    case FrameKind::TraceF2: return body ? "Move F2 Spectrum" : "Change Frame Size";
    default: return body ? std::string_view{} : "Change Frame Size";
  }
}

int DragUndoCode(const Hit& hit) {
  const bool body = hit.handle == Handle::Body;
  if (hit.target.what == Target::What::Frame) {
    switch (hit.target.frame) {
      case FrameKind::Parameter: return body ? 21 : 22;
      case FrameKind::TraceF1: return body ? 41 : 25;
      case FrameKind::TraceF2: return body ? 43 : 25;
      default: return 25;
    }
  }
  switch (hit.target.object.kind) {
    case ObjectKind::Line: return body ? 9 : 11;
    case ObjectKind::Image: return body ? 21 : 22;
    default: return ChangeUndoCode(hit.target.object.kind);
  }
}

int AddUndoCode(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Text: return 2;
    case ObjectKind::Line: return 12;
    case ObjectKind::Circle: return 13;
    case ObjectKind::Rectangle: return 16;
    case ObjectKind::Image: return 19;
  }
  return -1;
}
int DeleteUndoCode(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Text: return 1;
    case ObjectKind::Line: return 10;
    case ObjectKind::Circle: return 14;
    case ObjectKind::Rectangle: return 17;
    case ObjectKind::Image: return 20;
  }
  return -1;
}
int ChangeUndoCode(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Text: return 0;
    case ObjectKind::Line: return 11;
    case ObjectKind::Circle: return 15;
    case ObjectKind::Rectangle: return 18;
    case ObjectKind::Image: return 22;
  }
  return -1;
}

void ApplyDrag(EditedPage& page, const EditedPage& begun, const Hit& hit, PagePoint from, PagePoint to, double grid) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  const Paper& paper = page.paper;
  if (hit.target.what == Target::What::Frame) {
    const PageFrame& was = begun.frames[hit.target.frame];
    const Box b = BoxAfter(BoxOf(was), hit.handle, dx, dy, paper, grid, kSmallestFrame);
    PageFrame& f = page.frames[hit.target.frame];
    f.X = float(b.left), f.Y = float(b.top), f.Width = float(b.width()), f.Height = float(b.height());
    return;
  }
  const DrawOrderEntry e = hit.target.object;
  if (!IsLive(begun.objects, e) || !IsLive(page.objects, e)) return;
  const auto i = static_cast<std::size_t>(e.index);
  switch (e.kind) {
    case ObjectKind::Text: {
      const LayoutText& was = begun.objects.texts[i];
      LayoutText& t = page.objects.texts[i];
      if (hit.handle == Handle::Rotate) {
        const double angle = std::round(std::atan2(-(to.y - was.Y), to.x - was.X) * kDegrees);
        t.Angle = float(angle < 0 ? angle + 360 : angle);
      } else {
        const PagePoint at = OnPaper({was.X + dx, was.Y + dy}, paper, grid);
        t.X = float(at.x), t.Y = float(at.y);
      }
      return;
    }
    case ObjectKind::Line: {
      const LayoutLine& was = begun.objects.lines[i];
      LayoutLine& l = page.objects.lines[i];
      if (hit.handle == Handle::Start || hit.handle == Handle::End) {
        const bool start = hit.handle == Handle::Start;
        const PagePoint at = OnPaper({(start ? was.X1 : was.X2) + dx, (start ? was.Y1 : was.Y2) + dy}, paper, grid);
        (start ? l.X1 : l.X2) = float(at.x);
        (start ? l.Y1 : l.Y2) = float(at.y);
      } else {
        const PagePoint d = MoveOf(Normal(was.X1, was.Y1, was.X2, was.Y2), dx, dy, paper, 0);
        const PagePoint start = OnPaper({was.X1 + d.x, was.Y1 + d.y}, paper, grid);
        const double sx = start.x - was.X1, sy = start.y - was.Y1;
        l.X1 = float(start.x), l.Y1 = float(start.y);
        l.X2 = float(std::clamp(was.X2 + sx, 0.0, paper.widthCm));
        l.Y2 = float(std::clamp(was.Y2 + sy, 0.0, paper.heightCm));
      }
      return;
    }
    case ObjectKind::Circle:
    case ObjectKind::Rectangle: {
      const bool circle = e.kind == ObjectKind::Circle;
      const LayoutShape& was = circle ? begun.objects.circles[i] : begun.objects.rectangles[i];
      LayoutShape& s = circle ? page.objects.circles[i] : page.objects.rectangles[i];
      const Box b = BoxAfter(BoxOf(was), hit.handle, dx, dy, paper, grid, kSmallestObject);
      Put(s, b);
      if (circle && b.width() > 0) s.Ratio = float(b.height() / b.width());
      return;
    }
    case ObjectKind::Image: {
      const Box b = BoxAfter(BoxOf(begun.objects.images[i]), hit.handle, dx, dy, paper, grid, kSmallestObject);
      LayoutImage& image = page.objects.images[i];
      image.Left = float(b.left), image.Top = float(b.top), image.Right = float(b.right), image.Bottom = float(b.bottom);
      return;
    }
  }
}

int LineUnitsOfMm(double mm) { return std::clamp(static_cast<int>(std::lround(mm * 10)), 0, 999); }
double MmOfLineUnits(int units) { return units / 10.0; }

void SetArrowKind(LayoutLine& line, int styleCode, int headUnits) {
  line.StyleCode = static_cast<std::int16_t>(std::clamp(styleCode, 0, 15));
  const int flags = line.StyleCode % 4;
  const auto units = static_cast<std::int16_t>(std::clamp(headUnits, 0, 999));
  line.HeadLengthStart = flags >= 2 ? units : 0;
  line.HeadLengthEnd = flags % 2 ? units : 0;
}

void ApplyRatio(LayoutShape& circle, double ratio) {
  if (!(ratio > 0)) return;
  const float top = std::min(circle.Y1, circle.Y2);
  circle.Y1 = top;
  circle.Y2 = top + float(std::abs(circle.X2 - circle.X1) * ratio);
  circle.Ratio = float(ratio);
}

std::string PositionText(PagePoint p) {
  char text[64];
  std::snprintf(text, sizeof text, "X= %.2f   Y= %.2f cm", p.x, p.y);
  return text;
}

std::string FrameText(const PageFrame& f) {
  char text[96];
  std::snprintf(text, sizeof text, "%.2f x %.2f cm   Left %.2f, Bottom %.2f", f.Width, f.Height, f.X, f.Y + f.Height);
  return text;
}

LayoutText NewText(const EditedPage& page, PagePoint at, std::string codedText) {
  LayoutText t;
  t.FontName = "Sans Serif";
  t.Points = 12;
  t.Text = std::move(codedText);
  const PagePoint p = OnPaper(at, page.paper, 0);
  t.X = float(p.x), t.Y = float(p.y);
  return t;
}

LayoutLine NewLine(const EditedPage& page, PagePoint at) {
  const Box b = Centred(page, at, 3, 0);
  LayoutLine l;
  l.X1 = float(b.left), l.Y1 = float(b.top), l.X2 = float(b.right), l.Y2 = float(b.top);
  SetArrowKind(l, 5, 30);  // "6. Right Arrow Solid Line", 3 mm head
  l.Width = 3;             // 0.3 mm
  return l;
}

LayoutShape NewCircle(const EditedPage& page, PagePoint at) {
  LayoutShape s;
  Put(s, Centred(page, at, 2, 2));
  s.LineWidth = 3;
  return s;
}

LayoutShape NewRectangle(const EditedPage& page, PagePoint at) {
  LayoutShape s;
  Put(s, Centred(page, at, 3, 2));
  s.LineWidth = 3;
  return s;
}

LayoutImage NewImage(const EditedPage& page, PagePoint at, PictureBytes picture, double aspect) {
  const double width = 5, height = std::clamp(width * (aspect > 0 ? aspect : 1), kSmallestObject, page.paper.heightCm);
  const Box b = Centred(page, at, width, height);
  LayoutImage image;
  image.Kind = static_cast<std::int32_t>(picture.empty() ? PictureKind::Unknown : SniffPicture(*picture.bytes));
  image.Left = float(b.left), image.Top = float(b.top), image.Right = float(b.right), image.Bottom = float(b.bottom);
  image.Picture = std::move(picture);
  return image;
}

}  // namespace velk::layout
