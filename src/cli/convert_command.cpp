// velk2d-cli convert: reads any file the program reads and saves it in a file format it writes.
#include <iostream>
#include <map>

#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "cli/jcamp_output.h"
#include "cli/read_input.h"
#include "core/text.h"
#include "formats/alice/alice.h"
#include "native/ver4_file.h"

namespace velk::cli {
namespace {

enum class OutputFormat { Unknown, Ver4, Jcamp, Alice };

// The written format follows the output name's extension.
OutputFormat OutputFormatOf(const std::filesystem::path& out) {
  const std::string extension = core::ToUpper(out.extension().string());
  if (extension == ".VLK" || extension == ".VLK1" || extension == ".VLK2" || extension == ".VL1" || extension == ".VL2")
    return OutputFormat::Ver4;
  if (extension == ".JDX" || extension == ".DX") return OutputFormat::Jcamp;
  if (extension == ".ALS") return OutputFormat::Alice;
  return OutputFormat::Unknown;
}

platform::Outcome WriteVer4(const std::filesystem::path& out, LoadedData& data, native::SaveMode mode, bool keepBackup) {
  const native::WriteOptions options{keepBackup, nullptr};
  if (data.oneD) return native::WriteDataR4(out, *data.oneD, options);
  return native::WriteDataR4(out, *data.twoD, &data.f2, &data.f1, data.words, mode, options);
}

struct ConvertOptions {
  std::string in, out, mode = "all";
  bool keepBackup = false;
  JcampOutputOptions jcamp;
};

// Alice files hold one 1D data set, FID or spectrum.
int WriteAlice(const ConvertOptions& o, const LoadedData& data) {
  if (!data.oneD) {
    std::cerr << "velk2d-cli convert: " << o.out << ": an Alice file holds 1D data only\n";
    return 1;
  }
  const platform::Outcome outcome = formats::alice::WriteDataALS(o.out, *data.oneD, model::IsProcessed(data.detection.code));
  if (!outcome.ok()) {
    std::cerr << "velk2d-cli convert: " << o.out << ": " << outcome.message.text << "\n";
    return 2;
  }
  std::cout << "wrote " << o.out << " (Alice, 1D)\n";
  return 0;
}

int RunConvert(const ConvertOptions& o) {
  const OutputFormat format = OutputFormatOf(o.out);
  if (format == OutputFormat::Unknown) {
    std::cerr << "velk2d-cli convert: " << o.out << ": unknown output type (use .vlk, .vlk1, .vlk2, .vl1, .vl2, .jdx, .dx or .als)\n";
    return 2;
  }
  CliPrompt prompt;
  LoadedData data = LoadAnyFile(o.in, prompt);
  if (data.status != 0) {
    std::cerr << "velk2d-cli convert: " << o.in << ": " << data.error << "\n";
    return data.status;
  }
  if (format == OutputFormat::Alice) return WriteAlice(o, data);
  if (format == OutputFormat::Jcamp) {
    std::string written;
    const platform::Outcome outcome = WriteJcampOutput(o.out, data, o.jcamp, written);
    if (!outcome.ok()) {
      std::cerr << "velk2d-cli convert: " << o.out << ": " << outcome.message.text << "\n";
      return outcome.code == 1 ? 1 : 2;
    }
    std::cout << "wrote " << o.out << " (" << written << ")\n";
    return 0;
  }
  static const std::map<std::string, native::SaveMode> kModes{
      {"all", native::SaveMode::AllPlanes}, {"real", native::SaveMode::RealOnly}, {"power", native::SaveMode::PowerSpectrum}};
  const platform::Outcome outcome = WriteVer4(o.out, data, kModes.at(o.mode), o.keepBackup);
  if (!outcome.ok()) {
    std::cerr << "velk2d-cli convert: " << o.out << ": "
              << (outcome.message.text.empty() ? "the data set holds no points to save" : outcome.message.text) << "\n";
    return 2;
  }
  std::cout << "wrote " << o.out << " (Ver.4, " << (data.oneD ? "1D" : "2D") << ")\n";
  return 0;
}

}  // namespace

void AddConvertCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("convert", "Read any data file the program reads and save it as a Ver.4 or a JCAMP-DX file (or a 1D set as an Alice file)");
  auto options = std::make_shared<ConvertOptions>();
  command->add_option("IN", options->in, "a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", options->out, "the file to write: .vlk2 (or .vlk, .vlk1, .vl1, .vl2), .jdx/.dx for JCAMP-DX, or .als for a 1D set")->required();
  command->add_option("--mode", options->mode, "what a phase-sensitive 2D set keeps: all planes, the real plane, or the power spectrum")
      ->check(CLI::IsMember({"all", "real", "power"}));
  command->add_flag("--keep-backup", options->keepBackup,
                    "when OUT exists, keep the previous file as the \".$\" generation (x.vlk2 gives x.$lk2)");
  command->add_option("--trace", options->jcamp.trace, "for .jdx/.dx from a 2D data set: the F2 trace of a row or the F1 trace of a column")
      ->check(CLI::IsMember({"f1", "f2"}));
  command->add_option("--index", options->jcamp.index, "for --trace: the row (f2) or column (f1), from 0 at the low-frequency end");
  command->add_option("--jcamp-form", options->jcamp.form, "the JCAMP-DX form written: XYDATA, or NTUPLES with the imaginary part")
      ->check(CLI::IsMember({"xydata", "ntuples"}));
  command->callback([options, &status] { status = RunConvert(*options); });
}

}  // namespace velk::cli
