// The tracer against grids worked by hand: grid line i lies at pixel 10*i on both axes.
#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "display/tracer.h"
#include "support/recording_surface.h"

namespace velk::display {
namespace {

using platform::Point;
using test::Recorded;
using test::RecordingSurface;
using test::Segment;

// rows[r][c]; column c at ppm c, row r at ppm r, shown on 10 pixels per grid step.
ContourGrid MakeGrid(const std::vector<std::vector<float>>& rows, bool reversedColumns = false) {
  ContourGrid g;
  g.Rows = static_cast<int>(rows.size()) - 1;
  g.Cols = static_cast<int>(rows[0].size()) - 1;
  for (const auto& r : rows) g.Values.insert(g.Values.end(), r.begin(), r.end());
  for (int c = 0; c <= g.Cols; ++c) g.ColPpm.push_back(static_cast<float>(reversedColumns ? g.Cols - c : c));
  for (int r = 0; r <= g.Rows; ++r) g.RowPpm.push_back(static_cast<float>(r));
  g.ViewColStart = 0;
  g.ViewColEnd = static_cast<float>(g.Cols);
  g.ViewRowStart = 0;
  g.ViewRowEnd = static_cast<float>(g.Rows);
  return g;
}

LevelTable OneLevel(float level, int index = 0, int sign = 1) {
  LevelTable t;
  t.Level[index] = level;
  t.Color[index] = 0x123456;
  t.DrawIndex = {};
  t.DrawIndex[0] = index;
  t.DrawIndex[1] = -1;
  t.DrawSign[0] = sign;
  t.DrawCount = 1;
  return t;
}

RecordingSurface Trace(const ContourGrid& g, const LevelTable& t, int mode) {
  RecordingSurface s;
  platform::NoProgress progress;
  const Placement place{0, 10 * g.Cols, 0, 10 * g.Rows};
  TraceContour(s, g, t, place, {0, 0, 10 * g.Cols, 10 * g.Rows}, 1, progress, mode);
  return s;
}

using Piece = std::pair<std::pair<int, int>, std::pair<int, int>>;
std::set<Piece> Undirected(const std::vector<Segment>& segments) {
  std::set<Piece> out;
  for (const Segment& s : segments) {
    std::pair<int, int> a{s.from.x, s.from.y}, b{s.to.x, s.to.y};
    out.insert(a < b ? Piece{a, b} : Piece{b, a});
  }
  return out;
}

std::vector<std::vector<Point>> Polygons(const RecordingSurface& s) {
  std::vector<std::vector<Point>> out;
  for (const Recorded* r : s.Of(Recorded::Polygon)) out.push_back(r->points);
  return out;
}

const std::vector<std::vector<float>> kSpike{{0, 0, 0}, {0, 1, 0}, {0, 0, 0}};

TEST(TraceContour, SinglePointGivesADiamondOfFourPiecesAndOneTrianglePerStrip) {
  const ContourGrid g = MakeGrid(kSpike);
  const auto lines = Trace(g, OneLevel(0.5f), kLines);
  EXPECT_EQ(Undirected(lines.Segments()), (std::set<Piece>{{{5, 10}, {10, 5}}, {{10, 5}, {15, 10}},
                                                           {{5, 10}, {10, 15}}, {{10, 15}, {15, 10}}}));
  for (const Segment& s : lines.Segments()) EXPECT_EQ(s.color, 0x123456u);

  const auto filled = Trace(g, OneLevel(0.5f), kFilled);
  EXPECT_EQ(Polygons(filled), (std::vector<std::vector<Point>>{{{10, 5}, {15, 10}, {5, 10}},
                                                              {{5, 10}, {15, 10}, {10, 15}}}));
}

TEST(TraceContour, SaddleJoinsLeftToBottomAndTopToRightWhicheverDiagonalIsHigh) {
  const std::set<Piece> expected{{{0, 5}, {5, 10}}, {{5, 0}, {10, 5}}};
  EXPECT_EQ(Undirected(Trace(MakeGrid({{1, 0}, {0, 1}}), OneLevel(0.5f), kLines).Segments()), expected);
  EXPECT_EQ(Undirected(Trace(MakeGrid({{0, 1}, {1, 0}}), OneLevel(0.5f), kLines).Segments()), expected);

  // Filled: A, D high keeps one band along both diagonal sides; B, C high the band between them.
  EXPECT_EQ(Polygons(Trace(MakeGrid({{1, 0}, {0, 1}}), OneLevel(0.5f), kFilled)),
            (std::vector<std::vector<Point>>{{{0, 0}, {5, 0}, {10, 5}, {10, 10}, {5, 10}, {0, 5}}}));
  EXPECT_EQ(Polygons(Trace(MakeGrid({{0, 1}, {1, 0}}), OneLevel(0.5f), kFilled)),
            (std::vector<std::vector<Point>>{{{0, 5}, {5, 0}, {10, 0}, {10, 5}, {5, 10}, {0, 10}}}));
}

TEST(TraceContour, ValuesExactlyOnTheLevelCountAsOutside) {
  EXPECT_TRUE(Trace(MakeGrid({{0.5f, 0.5f}, {0.5f, 0.5f}}), OneLevel(0.5f), kLines).Segments().empty());
  EXPECT_TRUE(Polygons(Trace(MakeGrid({{0.5f, 0.5f}, {0.5f, 0.5f}}), OneLevel(0.5f), kFilled)).empty());
  // A on the level with C above: the top crossing falls on A itself.
  EXPECT_EQ(Undirected(Trace(MakeGrid({{0.5f, 1}, {0, 0}}), OneLevel(0.5f), kLines).Segments()),
            (std::set<Piece>{{{0, 0}, {10, 5}}}));
  // A and D inside, C outside, B exactly on the level: the top-to-right piece only.
  EXPECT_EQ(Undirected(Trace(MakeGrid({{1, 0}, {0.5f, 1}}), OneLevel(0.5f), kLines).Segments()),
            (std::set<Piece>{{{5, 0}, {10, 5}}}));
}

TEST(TraceContour, NegativeLevelTracesTheMirroredSurface) {
  const ContourGrid positive = MakeGrid({{0, 0, 0}, {0, 0.5f, 0.2f}, {0, 0.1f, 0}});
  ContourGrid negative = positive;
  for (float& v : negative.Values) v = -v;
  const auto expectLines = Trace(positive, OneLevel(0.4f), kLines).Segments();
  ASSERT_FALSE(expectLines.empty());
  EXPECT_EQ(Trace(negative, OneLevel(-0.4f, 31, -1), kLines).Segments(), expectLines);
  EXPECT_EQ(Polygons(Trace(negative, OneLevel(-0.4f, 31, -1), kFilled)),
            Polygons(Trace(positive, OneLevel(0.4f), kFilled)));
  // The positive level sees nothing of the negative surface.
  EXPECT_TRUE(Trace(negative, OneLevel(0.4f), kLines).Segments().empty());
}

TEST(TraceContour, RunOpenAtTheLastColumnIsClosedThere) {
  const auto polygons = Polygons(Trace(MakeGrid({{0, 0, 1}, {0, 0, 1}, {0, 0, 0}}), OneLevel(0.5f), kFilled));
  EXPECT_EQ(polygons, (std::vector<std::vector<Point>>{{{15, 0}, {20, 0}, {20, 10}, {15, 10}},
                                                      {{15, 10}, {20, 10}, {20, 15}}}));
}

TEST(TraceContour, ReversedAxisDrawsTheMirrorImage) {
  // No saddles, so that the mirror image has the same pieces.
  const std::vector<std::vector<float>> rows{{0, 0.2f, 0.1f, 0, 0}, {0.1f, 0.9f, 0.7f, 0.3f, 0}, {0, 0.3f, 0.8f, 0.6f, 0}, {0, 0, 0.2f, 0.1f, 0}};
  std::vector<std::vector<float>> mirrored = rows;
  for (auto& r : mirrored) std::reverse(r.begin(), r.end());
  for (int mode : {kLines, kFilled}) {
    ContourGrid descending = MakeGrid(rows, true);  // ColPpm 4..0 in an ascending view
    ContourGrid reversedView = MakeGrid(rows);      // ColPpm 0..4 in a descending view
    std::swap(reversedView.ViewColStart, reversedView.ViewColEnd);
    const auto expected = Trace(MakeGrid(mirrored), OneLevel(0.5f), mode);
    for (const ContourGrid* g : {&descending, &reversedView}) {
      const auto got = Trace(*g, OneLevel(0.5f), mode);
      EXPECT_EQ(Undirected(got.Segments()), Undirected(expected.Segments()));
      std::multiset<std::pair<int, int>> a, b;
      for (const auto& poly : Polygons(got))
        for (Point p : poly) a.insert({p.x, p.y});
      for (const auto& poly : Polygons(expected))
        for (Point p : poly) b.insert({p.x, p.y});
      EXPECT_EQ(a.size(), b.size());
      EXPECT_EQ(std::set(a.begin(), a.end()), std::set(b.begin(), b.end()));
    }
  }
}

TEST(TraceContour, LineAndFillModesShareEveryCrossingPoint) {
  // A rough surface with saddles, maxima and minima, several levels of both signs.
  std::vector<std::vector<float>> rows(12, std::vector<float>(15));
  unsigned seed = 12345;
  for (auto& r : rows)
    for (float& v : r) {
      seed = seed * 1103515245u + 12345u;
      v = static_cast<float>((seed >> 8) % 2001) / 1000.0f - 1.0f;
    }
  const ContourGrid g = MakeGrid(rows);
  for (float level : {0.3f, -0.45f, 0.77f}) {
    const LevelTable t = level > 0 ? OneLevel(level) : OneLevel(level, 31, -1);
    std::set<std::pair<int, int>> lineEnds, polygonCrossings;
    for (const Segment& s : Trace(g, t, kLines).Segments()) {
      lineEnds.insert({s.from.x, s.from.y});
      lineEnds.insert({s.to.x, s.to.y});
    }
    for (const auto& poly : Polygons(Trace(g, t, kFilled)))
      for (Point p : poly)
        if (p.x % 10 != 0 || p.y % 10 != 0) polygonCrossings.insert({p.x, p.y});
    ASSERT_FALSE(lineEnds.empty());
    for (const auto& p : polygonCrossings) EXPECT_TRUE(lineEnds.count(p)) << p.first << "," << p.second;
    for (const auto& p : lineEnds) {
      if (p.first % 10 != 0 || p.second % 10 != 0) {
        EXPECT_TRUE(polygonCrossings.count(p)) << p.first << "," << p.second;
      }
    }
  }
}

TEST(TraceContour, ClipAndViewWindowKeepOneGridLineBeyondEachEdge) {
  ContourGrid g = MakeGrid(std::vector<std::vector<float>>(9, std::vector<float>(9, 1.0f)));
  g.ViewColStart = 2.5f;  // columns 2..6 are visited, drawn on 10 pixels per ppm from pixel 0
  g.ViewColEnd = 5.5f;
  RecordingSurface s;
  platform::NoProgress progress;
  TraceContour(s, g, OneLevel(0.5f), {0, 30, 0, 80}, {0, 0, 30, 20}, 1, progress, kFilled);
  const auto polygons = Polygons(s);
  ASSERT_EQ(polygons.size(), 3u);  // rows 0..3: strips 0-1, 1-2, 2-3
  EXPECT_EQ(polygons[0], (std::vector<Point>{{-5, 0}, {35, 0}, {35, 10}, {-5, 10}}));
}

}  // namespace
}  // namespace velk::display
