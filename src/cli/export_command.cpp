// velk2d-cli export: one plane of a 2D data set as a NumPy .npy file with a .json of its axes.
#include <iostream>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "document/write_data_set.h"
#include "formats/numpy/numpy.h"

namespace velk::cli {
namespace {

struct ExportOptions {
  std::string in, out, plane = "RR";
};

int RunExport(const ExportOptions& o) {
  const formats::FileFormat& numpy = *formats::FindFormat("NumPy");
  if (std::string why = document::RefuseExtension(o.out, numpy); !why.empty()) return Complain("export", o.out, why, kFailed);
  CliPrompt prompt;
  int status = kDone;
  const auto input = ReadInput("export", o.in, prompt, status);
  if (!input) return status;
  for (const std::filesystem::path& output : {std::filesystem::path(o.out), formats::numpy::AxesFileOf(o.out)})
    if (int refused = CheckOutput("export", output, *input); refused != kDone) return refused;
  formats::WriteChoices choices;
  choices.plane = o.plane;
  std::string written;
  const platform::Outcome outcome = document::WriteDataSet(*input, o.out, numpy, choices, written);
  if (!outcome.ok()) return Complain("export", outcome.code == 1 ? o.in : o.out, TextOf(outcome.message), StatusOf(outcome));
  std::cout << "wrote " << o.out << " and " << formats::numpy::AxesFileOf(o.out).string() << "\n";
  return kDone;
}

}  // namespace

void AddExportCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("export", "Write one plane of a 2D data set as a NumPy .npy file with a .json of its axes");
  command->footer(kStatusHelp);
  auto options = std::make_shared<ExportOptions>();
  command->add_option("IN", options->in, "a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", options->out, "the .npy file to write; the .json goes beside it")->required();
  command->add_option("--plane", options->plane, "the plane: RR (real in F2 and F1), RI, IR or II")
      ->check(CLI::IsMember({"RR", "RI", "IR", "II"}));
  command->callback([options, &status] { status = RunExport(*options); });
}

}  // namespace velk::cli
