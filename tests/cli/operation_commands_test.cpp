// The operations on the command line, on the corpus's edited HSQC: transformed with zero phases at
// the vendor's size, "phase --auto" gives RR the vendor's sign at the vendor's strongest peaks; inverting or
// exchanging twice gives back the same data.
#include <gtest/gtest.h>

#include <cmath>

#include "document/read_data_set.h"
#include "formats/bruker_vendor.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

std::unique_ptr<document::Document> Load(const std::filesystem::path& path) {
  ScriptedPrompt prompt;
  document::ReadResult r = document::ReadDataSet(path, prompt);
  EXPECT_TRUE(r.outcome.ok()) << path << ": " << r.outcome.message.text;
  return std::move(r.document);
}

std::string Cli(const std::string& command, const std::filesystem::path& in, const std::filesystem::path& out,
                const std::string& options = "") {
  const CliRun run = RunCli(command + " " + Quoted(in.string()) + " -o " + Quoted(out.string()) + " " + options);
  EXPECT_EQ(run.exitStatus, 0) << command << ": " << run.err;
  return run.out;
}

TEST(OperationCommands, AutoPhaseGivesTheVendorsSignsOnTheEditedHsqc) {
  TempFolder folder;
  const std::filesystem::path set = CorpusPath("bruker/cyclosporin_hsqc/3");
  // Zero filled to the vendor's 1024 x 1024, as the vendor's spectrum was.
  Cli("process", set / "ser", folder / "zero.vlk2", "--phase-f2 0,0 --phase-f1 0,0 --zf 2,8");
  const std::string said = Cli("phase", folder / "zero.vlk2", folder / "auto.vlk2", "--auto");
  const auto ours = Load(folder / "auto.vlk2");
  const auto vendor = Load(set / "pdata/1/2rr");
  ASSERT_TRUE(ours && vendor);
  const model::Spectrum2D &o = ours->spectrum, &v = vendor->spectrum;
  auto peaks =
      LocalMaxima(v.axis[F2].Point, v.axis[F1].Point, [&](int c, int r) { return std::fabs(v.RR.at(c, r)); });
  ASSERT_GE(peaks.size(), 20u);
  peaks.resize(20);
  int agreeing = 0;
  for (const Peak& p : peaks) {
    const std::int32_t c = IndexOf(o, F2, Ppm(v, F2, p.column)), r = IndexOf(o, F1, Ppm(v, F1, p.row));
    ASSERT_TRUE(c >= 0 && c < o.axis[F2].Point && r >= 0 && r < o.axis[F1].Point);
    agreeing += o.RR.at(c, r) * v.RR.at(p.column, p.row) > 0;
  }
  EXPECT_GE(agreeing, 18) << said;
}

TEST(OperationCommands, InvertAndExchangeTwiceGiveTheDataBack) {
  TempFolder folder;
  const std::filesystem::path set = CorpusPath("bruker/cyclosporin_hsqc/3");
  Cli("process", set / "ser", folder / "a.vlk2");
  Cli("invert", folder / "a.vlk2", folder / "b.vlk2", "--f1 --f2");
  Cli("invert", folder / "b.vlk2", folder / "c.vlk2", "--f1 --f2");
  Cli("exchange", folder / "c.vlk2", folder / "d.vlk2");
  Cli("exchange", folder / "d.vlk2", folder / "e.vlk2");
  const auto a = Load(folder / "a.vlk2"), b = Load(folder / "b.vlk2"), d = Load(folder / "d.vlk2");
  const auto e = Load(folder / "e.vlk2");
  ASSERT_TRUE(a && b && d && e);
  const std::int32_t n2 = a->spectrum.axis[F2].Point, n1 = a->spectrum.axis[F1].Point;
  EXPECT_EQ(b->spectrum.RR.at(0, 0), a->spectrum.RR.at(n2 - 1, n1 - 1));
  EXPECT_EQ(d->spectrum.axis[F2].Point, n1);
  EXPECT_EQ(d->spectrum.II.at(7, 100), a->spectrum.II.at(100, 7));
  for (std::int32_t r = 0; r < n1; ++r)
    for (std::int32_t c = 0; c < n2; ++c) {
      ASSERT_EQ(e->spectrum.RR.at(c, r), a->spectrum.RR.at(c, r));
      ASSERT_EQ(e->spectrum.RI.at(c, r), a->spectrum.RI.at(c, r));
    }
  // A heteronuclear spectrum is not symmetrized; an output over the input is refused.
  EXPECT_EQ(RunCli("symmetrize " + Quoted((folder / "a.vlk2").string()) + " -o " + Quoted((folder / "f.vlk2").string()))
                .exitStatus,
            1);
  EXPECT_NE(RunCli("phase " + Quoted((folder / "a.vlk2").string()) + " -o " + Quoted((folder / "a.vlk2").string()) +
                   " --auto")
                .exitStatus,
            0);
}

}  // namespace
}  // namespace velk::test
