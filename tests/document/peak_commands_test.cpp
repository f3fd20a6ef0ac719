// The peak commands and the INADEQUATE extension on a document: every Undo brings back exactly
// what was there before, the list of the earlier step or the planes of the folded set.
#include "document/peak_commands.h"

#include <gtest/gtest.h>

#include <cstring>

#include "document/inadequate_commands.h"
#include "operations/peak_synthetic.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using namespace document;
using operations::kPeakOnDataPoint;
using operations::kVirtualPeakTop;

bool SameList(const model::PeakTable2D& a, const model::PeakTable2D& b) {
  return a.peaks.size() == b.peaks.size() &&
         (a.peaks.empty() || std::memcmp(a.peaks.data(), b.peaks.data(), a.peaks.size() * sizeof(model::Peak2D)) == 0);
}

TEST(PeakCommands, EveryUndoRestoresTheListBefore) {
  Document d;
  d.spectrum = PeakSpectrum(96, 72, {{20.3, 17.8, 1.0, 5.0}, {45.45, 20.2, -0.8, 6.0}, {70.77, 50.5, 0.9, 5.0}});
  std::vector<model::PeakTable2D> lists{d.spectrum.peaks};  // the list before each step
  EXPECT_EQ(PickAllArea(d, 0.1f, kVirtualPeakTop), 3);
  lists.push_back(d.spectrum.peaks);
  EXPECT_TRUE(AddPeakByClick(d, 60, 10, 0.1f, kPeakOnDataPoint));
  lists.push_back(d.spectrum.peaks);
  EXPECT_FALSE(AddPeakByClick(d, 0, 10, 0.1f, kPeakOnDataPoint));  // the rim: no record
  EXPECT_TRUE(MovePeakByDrag(d, 3, 62, 12, kPeakOnDataPoint));
  lists.push_back(d.spectrum.peaks);
  EXPECT_TRUE(DeletePeakByClick(d, 20, 18));
  lists.push_back(d.spectrum.peaks);
  // A band over tops already listed adds nothing and leaves no record; one over a top removes it.
  EXPECT_EQ(PickInArea(d, {40, 95, 0, 71}, 0.1f, kVirtualPeakTop), 0);
  EXPECT_EQ(DeleteInArea(d, {66, 75, 46, 55}), 1);
  lists.push_back(d.spectrum.peaks);
  EXPECT_EQ(DeleteInArea(d, {0, 10, 0, 10}), 0);
  EXPECT_FALSE(DeletePeakAt(d, 5));  // a row the list does not have
  EXPECT_TRUE(DeletePeakAt(d, 0));
  lists.push_back(d.spectrum.peaks);
  EXPECT_TRUE(DeleteAllPeaksOf(d));
  EXPECT_FALSE(DeleteAllPeaksOf(d));  // nothing left to delete: no record
  EXPECT_EQ(UndoCaption(d.undo), "UnDo(Delete All)");
  for (const char* caption :
       {"UnDo(Delete Peak)", "UnDo(Delete Peak)", "UnDo(Delete Peak)", "UnDo(Move Peak Top)", "UnDo(Add Peak)", "UnDo(Pick All Area)", "UnDo"}) {
    ASSERT_TRUE(UndoPeakEdit(d));
    EXPECT_TRUE(SameList(d.spectrum.peaks, lists.back())) << "before " << caption;
    lists.pop_back();
    EXPECT_EQ(UndoCaption(d.undo), caption);
    if (!CanUndo(d.undo)) break;
  }
  EXPECT_TRUE(d.spectrum.peaks.peaks.empty());  // the pick's earlier list was empty
  EXPECT_FALSE(UndoPeakEdit(d));
}

TEST(InadequateCommands, UndoRestoresThePlanes) {
  Document d;
  d.spectrum = PeakSpectrum(128, 128, {{30, 40, 1.0, 3.0, true}, {50, 40, 1.0, 3.0, true}});
  for (int a : {model::F1, model::F2}) d.spectrum.axis[a].Frequency = 1280;
  for (int c = 0; c < 128; ++c)
    for (int r = 0; r < 128; ++r) d.spectrum.II.at(c, r) = d.spectrum.RR.at(c, r) * 0.25f + c;
  d.spectrum.InadequateMode = 1;
  d.spectrum.peaks.peaks.push_back({30, 40, 300, 200, 0, 0, 1});
  const model::Spectrum2D before = d.spectrum;
  TempFolder work;
  ASSERT_TRUE(ExtendFoldedDataOf(d, work.path).ok());
  EXPECT_EQ(d.spectrum.axis[model::F1].Point, 256);
  EXPECT_EQ(UndoCaption(d.undo), "UnDo(Tnadwquate Extension)");
  ASSERT_TRUE(UndoInadequateExtension(d));
  EXPECT_EQ(d.spectrum.axis[model::F1].Point, 128);
  EXPECT_EQ(d.spectrum.axis[model::F1].Frequency, 1280.0f);
  EXPECT_EQ(d.spectrum.InadequateFull, 0);
  EXPECT_TRUE(SameList(d.spectrum.peaks, before.peaks));
  EXPECT_EQ(d.spectrum.ppmF1[127], before.ppmF1[127]);
  for (int c = 0; c < 128; ++c)
    for (int r = 0; r < 128; ++r) {
      ASSERT_EQ(d.spectrum.RR.at(c, r), before.RR.at(c, r));
      ASSERT_EQ(d.spectrum.II.at(c, r), before.II.at(c, r));
    }
  EXPECT_FALSE(std::filesystem::exists(work / kInadequateUndoFile));
  EXPECT_FALSE(CanUndo(d.undo));
}

}  // namespace
}  // namespace velk::test
