// velk2d-cli peaks on the corpus's processed HSQC: the list in its three forms, the text form
// reading back, and the refusals.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "operations/peak_list_file.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

TEST(PeaksCommand, ListsOfTheHsqc) {
  const std::string hsqc = Quoted(CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr").string());
  const CliRun json = RunCli("peaks " + hsqc + " --format json --top data");
  ASSERT_EQ(json.exitStatus, 0) << json.err;
  const auto list = nlohmann::json::parse(json.out);
  EXPECT_GT(list["count"].get<int>(), 20);
  EXPECT_LT(list["count"].get<int>(), 1000);

  TempFolder folder;
  const auto text = folder / "hsqc.txt";
  const CliRun saved = RunCli("peaks " + hsqc + " --area 5,1,10,60 --threshold 0.05 -o " + Quoted(text.string()));
  ASSERT_EQ(saved.exitStatus, 0) << saved.err;
  model::PeakTable2D read;
  ASSERT_TRUE(operations::ReadPeakList(text, read).ok());
  EXPECT_FALSE(read.peaks.empty());
  const CliRun csv = RunCli("peaks " + hsqc + " --area 5,1,10,60 --threshold 0.05 --format csv");
  EXPECT_EQ(std::count(csv.out.begin(), csv.out.end(), '\n'), static_cast<long>(read.peaks.size()) + 1);

  EXPECT_EQ(RunCli("peaks " + hsqc + " -o " + hsqc).exitStatus, 2);  // never over its input
  EXPECT_EQ(RunCli("peaks " + hsqc + " --threshold 1.5").exitStatus, 2);
  EXPECT_EQ(RunCli("peaks " + hsqc + " --area 1,2,3").exitStatus, 2);
}

}  // namespace
}  // namespace velk::test
