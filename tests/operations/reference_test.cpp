// A reference change moves the scale only: every peak stays at its data point, the view keeps the
// same data, and the reference point reads exactly the reference.
#include <gtest/gtest.h>

#include "display/display_state.h"
#include "model/data_type.h"
#include "operations/reference.h"
#include "support/synthetic_2d.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

TEST(Reference, NewScaleKeepsPeaksAndViewOnTheirPoints) {
  auto s = MakeSynthetic2D(256, 128, {{3.0, 7.0, 1.0, 0.05}});
  const model::Spectrum2D before = *s;
  display::DisplayState view;
  view.ViewF2Start = s->ppmF2[200];
  view.ViewF2End = s->ppmF2[20];
  view.ViewF1Start = s->ppmF1[10];
  view.ViewF1End = s->ppmF1[100];

  operations::ApplyReference(*s, view, 4.75f, 100, -1.5f, 37);
  EXPECT_EQ(s->ppmF2[100], 4.75f);
  EXPECT_EQ(s->ppmF1[37], -1.5f);
  EXPECT_EQ(s->axis[F2].RefPoint, 100);
  EXPECT_EQ(s->axis[F1].Reference, -1.5f);
  // The data did not move; the scale moved by one offset per axis, its step unchanged.
  EXPECT_EQ(s->RR.data, before.RR.data);
  const double shift2 = 4.75 - before.ppmF2[100], shift1 = -1.5 - before.ppmF1[37];
  for (std::int32_t i : {0, 77, 255}) EXPECT_NEAR(s->ppmF2[i] - before.ppmF2[i], shift2, 1e-5);
  for (std::int32_t i : {0, 127}) EXPECT_NEAR(s->ppmF1[i] - before.ppmF1[i], shift1, 1e-5);
  // The view shows the same points: its limits are the new positions of the same indices.
  EXPECT_NEAR(view.ViewF2Start, s->ppmF2[200], 1e-5);
  EXPECT_NEAR(view.ViewF2End, s->ppmF2[20], 1e-5);
  EXPECT_NEAR(view.ViewF1Start, s->ppmF1[10], 1e-5);
  EXPECT_NEAR(view.ViewF1End, s->ppmF1[100], 1e-5);

  // Back to the remembered values restores the scale.
  operations::ApplyReference(*s, view, operations::CurrentReference(before));
  for (std::int32_t i : {0, 128, 255}) EXPECT_NEAR(s->ppmF2[i], before.ppmF2[i], 1e-5);
}

TEST(Reference, CentreFrequencyAndInstrumentTable) {
  auto s = MakeSynthetic2D(256, 128, {});
  display::DisplayState view;
  // A 1D record whose centre lies 1000 Hz above its 0 ppm at 500 MHz: 2 ppm at the F2 centre point.
  model::Spectrum1D trace;
  trace.absFreqCenter = 500.001;
  trace.absFreq0ppm = 500.0;
  EXPECT_FALSE(operations::SetReferenceByCenter(*s, view, F2, trace).ok());  // frequencies, but no data
  trace.params.POINT = 4;
  trace.re.assign(4, 0.0f);
  ASSERT_TRUE(operations::SetReferenceByCenter(*s, view, F2, trace).ok());
  EXPECT_NEAR(s->ppmF2[128], 2.0, 1e-4);
  EXPECT_EQ(s->axis[F2].RefPoint, 128);

  // Homonuclear: the F2 instrument frequency serves both axes; centres at 500 MHz read 5 ppm
  // against 0 ppm at 499.9975 MHz.
  s->extras[F1].absFreqCenter = s->extras[F2].absFreqCenter = 500.0;
  ASSERT_TRUE(operations::SetReferenceByInstrument(*s, view, model::VPH_HOMO, 499.9975, std::nullopt).ok());
  EXPECT_NEAR(s->ppmF1[64], 5.0, 1e-3);
  EXPECT_NEAR(s->ppmF2[128], 5.0, 1e-3);
  const auto kept = operations::CurrentReference(*s);
  const auto refused = operations::SetReferenceByInstrument(*s, view, model::VPH_HETERO, 499.9975, std::nullopt);
  EXPECT_FALSE(refused.ok());
  EXPECT_FALSE(refused.message.text.empty());
  EXPECT_EQ(operations::CurrentReference(*s)[F1].Reference, kept[F1].Reference);
}

}  // namespace
}  // namespace velk::test
