// Vendor-processed spectra of the real-data corpus, saved as Ver.4 and read back: every plane
// value, axis and text the reader took from the vendor's files comes back unchanged.
#include <gtest/gtest.h>

#include <algorithm>

#include "formats/registry.h"
#include "model/type_detector.h"
#include "native/fixture.h"
#include "support/corpus.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

TEST(Ver4RealData, VendorSpectraComeBackUnchanged) {
  TempFolder folder;
  for (const char* set : {"bruker/cyclosporin_hsqc/3/pdata/1/2rr", "bruker/cyclosporin_cosy/1/pdata/1/2rr"}) {
    SCOPED_TRACE(set);
    const model::Detection d = model::TypeDetector(CorpusPath(set), formats::Formats());
    const auto entry = std::find_if(formats::Formats().begin(), formats::Formats().end(),
                                    [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
    ASSERT_NE(entry, formats::Formats().end());
    auto vendor = std::make_unique<model::Spectrum2D>();
    ScriptedPrompt prompt;
    platform::NoProgress progress;
    model::DataWords words{d.code, d.pulseModeClass, 0};
    model::ReadContext context{prompt, progress, words, nullptr};
    ASSERT_TRUE(entry->read2D(d.file, *vendor, context).ok());

    const auto file = folder / "vendor.vlk2";
    ASSERT_TRUE(native::WriteDataR4(file, *vendor, nullptr, nullptr, words, native::SaveMode::AllPlanes, {}).ok());
    const auto back = Read2D(Slurp(file));
    ASSERT_TRUE(back->outcome.ok()) << back->outcome.message.text;
    const model::Spectrum2D& r = *back->s;
    EXPECT_EQ(back->words.pulseModeClass, words.pulseModeClass);
    EXPECT_EQ(back->words.realOnly, words.realOnly);
    const std::int32_t columns = vendor->axis[model::F2].Point, rows = vendor->axis[model::F1].Point;
    ASSERT_EQ(r.axis[model::F2].Point, columns);
    ASSERT_EQ(r.axis[model::F1].Point, rows);
    const std::size_t planes = words.realOnly ? 1 : 4;
    const model::Plane* ours[4] = {&r.RR, &r.RI, &r.IR, &r.II};
    const model::Plane* theirs[4] = {&vendor->RR, &vendor->RI, &vendor->IR, &vendor->II};
    for (std::size_t k = 0; k < planes; ++k)
      for (std::int32_t row = 0; row < rows; ++row)
        ASSERT_TRUE(std::equal(theirs[k]->row(row).begin(), theirs[k]->row(row).begin() + columns, ours[k]->row(row).begin()))
            << "plane " << k << " row " << row;
    for (int a : {model::F1, model::F2}) {
      EXPECT_EQ(r.extras[a].nucleus, vendor->extras[a].nucleus);
      EXPECT_EQ(r.extras[a].absFreq0ppm, vendor->extras[a].absFreq0ppm);
      EXPECT_EQ(r.axis[a].Frequency, vendor->axis[a].Frequency);
      EXPECT_EQ(r.extras[a].ppmStep, vendor->extras[a].ppmStep);
      // The first axis value is kept as a float in the file.
      EXPECT_EQ(r.extras[a].ppmFirst, static_cast<float>(vendor->extras[a].ppmFirst));
    }
    EXPECT_EQ(r.params.EXMOD, vendor->params.EXMOD);
    EXPECT_EQ(r.params.SLVNT, vendor->params.SLVNT);
    EXPECT_EQ(r.params.SCANS, vendor->params.SCANS);
  }
}

}  // namespace
}  // namespace velk::test
