// velk2d-cli convert: reads any file the program reads and saves it in a format the program writes.
#include <iostream>
#include <map>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "document/write_data_set.h"

namespace velk::cli {
namespace {

struct ConvertOptions {
  std::string in, out, mode = "all", trace, form = "xydata";
  std::optional<std::int32_t> index;
  bool keepBackup = false;
};

int RunConvert(const ConvertOptions& o) {
  const formats::FileFormat* format = formats::WrittenFormatOf(o.out);
  if (!format || format->name == "NumPy")
    return Complain("convert", o.out, "unknown output type (use " + formats::WrittenExtensionsText() + "; .npy through export)",
                    kFailed);
  CliPrompt prompt;
  int status = kDone;
  const auto input = ReadInput("convert", o.in, prompt, status);
  if (!input) return status;
  if (int refused = CheckOutput("convert", o.out, *input); refused != kDone) return refused;
  static const std::map<std::string, native::SaveMode> kModes{
      {"all", native::SaveMode::AllPlanes}, {"real", native::SaveMode::RealOnly}, {"power", native::SaveMode::PowerSpectrum}};
  formats::WriteChoices choices;
  choices.saveMode = kModes.at(o.mode);
  choices.keepBackup = o.keepBackup;
  choices.trace = o.trace;
  choices.traceIndex = o.index;
  choices.ntuples = o.form == "ntuples";
  std::string written;
  const platform::Outcome outcome = document::WriteDataSet(*input, o.out, *format, choices, written);
  if (!outcome.ok()) return Complain("convert", o.out, TextOf(outcome.message), StatusOf(outcome));
  std::cout << "wrote " << o.out << " (" << written << ")\n";
  return kDone;
}

}  // namespace

void AddConvertCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("convert", "Read any data file the program reads and save it as a Ver.4 or a JCAMP-DX file (or a 1D set as an Alice file)");
  command->footer(kStatusHelp);
  auto options = std::make_shared<ConvertOptions>();
  command->add_option("IN", options->in, "a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", options->out, "the file to write: .vlk2 (or .vlk, .vlk1, .vl1, .vl2), .jdx/.dx/.jcamp for JCAMP-DX (a 2D spectrum as nD NMR SPECTRUM pages, or one trace with --trace), or .als for a 1D set; never one of the input's files")->required();
  command->add_option("--mode", options->mode, "what a phase-sensitive 2D set keeps: all planes, the real plane, or the power spectrum")
      ->check(CLI::IsMember({"all", "real", "power"}));
  command->add_flag("--keep-backup", options->keepBackup,
                    "when OUT exists, keep the previous file as the \".$\" generation (x.vlk2 gives x.$lk2)");
  command->add_option("--trace", options->trace, "for JCAMP-DX from a 2D data set: only the F2 trace of a row or the F1 trace of a column")
      ->check(CLI::IsMember({"f1", "f2"}));
  command->add_option("--index", options->index, "for --trace: the row (f2) or column (f1), from 0 at the low-frequency end");
  command->add_option("--jcamp-form", options->form, "the JCAMP-DX form of a 1D spectrum or trace: XYDATA, or NTUPLES with the imaginary part")
      ->check(CLI::IsMember({"xydata", "ntuples"}));
  command->callback([options, &status] { status = RunConvert(*options); });
}

}  // namespace velk::cli
