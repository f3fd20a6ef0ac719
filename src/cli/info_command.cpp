// velk2d-cli info: what the detector and the reader make of a file.
#include <iomanip>
#include <iostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "cli/cli_io.h"
#include "document/read_data_set.h"
#include "model/pulse_mode.h"
#include "model/spectrum.h"

namespace velk::cli {
namespace {

using nlohmann::json;

std::string Hex(model::DataTypeCode code) {
  if (code < 0) return "-1";
  std::ostringstream out;
  out << "0x" << std::hex << std::uppercase << std::setw(4) << std::setfill('0') << code;
  return out.str();
}

json DescribeDetection(const model::Detection& d) {
  return {{"path", d.file.path.string()}, {"code", Hex(d.code)}, {"tag", d.tag}, {"extension", d.file.extensionWord},
          {"class", d.pulseModeClass}, {"class_name", model::MakeClassName(d.pulseModeClass, d.modeText)},
          {"pulse_mode", d.modeText}, {"dimension", model::Dimension(d.code)},
          {"processed", model::IsProcessed(d.code)}};
}

json DescribeTexts(const model::NmrParameters& p, const model::DescriptiveTexts& t) {
  return {{"scans", p.SCANS}, {"date", p.DATIM}, {"instrument", t.instrument}, {"solvent", p.SLVNT},
          {"data_type", t.dataTypeText}};
}

json Describe2D(const model::Spectrum2D& s) {
  json j = DescribeTexts(s.params, s.texts);
  const auto per = [&](auto field) { return json{{"f2", field(model::F2)}, {"f1", field(model::F1)}}; };
  j["points"] = per([&](int a) { return s.axis[a].Point; });
  j["nuclei"] = per([&](int a) { return s.extras[a].nucleus; });
  j["observe_mhz"] = per([&](int a) { return s.extras[a].absFreqCenter; });
  j["zero_ppm_mhz"] = per([&](int a) { return s.extras[a].absFreq0ppm; });
  j["spectral_width_hz"] = per([&](int a) { return s.axis[a].Frequency; });
  j["ppm_first"] = per([&](int a) { return s.extras[a].ppmFirst; });
  j["ppm_step"] = per([&](int a) { return s.extras[a].ppmStep; });
  j["pulse_program"] = s.params.EXMOD;
  j["comment"] = s.comment;
  j["sample_id"] = s.texts.sampleId;
  j["operations"] = s.history.operations.size();
  j["carried_sections"] = s.carried.fileSections.size();
  j["fid_points"] = per([&](int a) { return s.extras[a].fidPoints; });
  if (!s.vendor.series.empty()) j["pseudo_2d"] = "1D spectra along a list (" + s.vendor.series + ")";
  return j;
}

json Describe1D(const model::Spectrum1D& s) {
  json j = DescribeTexts(s.params, s.texts);
  j["points"] = s.params.POINT;
  j["nuclei"] = s.params.OBNUC;
  j["observe_mhz"] = s.params.OFR;
  j["centre_mhz"] = s.absFreqCenter;
  j["zero_ppm_mhz"] = s.absFreq0ppm;
  j["spectral_width_hz"] = s.params.FREQU;
  return j;
}

void PrintText(const json& j, const std::string& indent = "") {
  for (const auto& [key, value] : j.items()) {
    if (value.is_object()) {
      std::cout << indent << key << ":\n";
      PrintText(value, indent + "  ");
    } else {
      std::cout << indent << key << ": " << (value.is_string() ? value.get<std::string>() : value.dump()) << "\n";
    }
  }
}

int RunInfo(const std::string& path, bool asJson) {
  CliPrompt prompt;
  const document::ReadResult read = document::ReadDataSet(path, prompt);
  json out = DescribeDetection(read.detection);
  const int status = StatusOf(read.outcome);
  if (status != kDone) {
    Complain("info", path, TextOf(read.outcome.message), status);
  } else if (document::DimensionOf(*read.document) == 2) {
    const document::Document& d = *read.document;
    out["data"] = Describe2D(d.spectrum);
    out["data"]["real_only"] = d.words.realOnly != 0;
    out["data"]["trace_points"] = {{"f2", d.companionF2.params.POINT}, {"f1", d.companionF1.params.POINT}};
  } else {
    out["data"] = Describe1D(read.document->oneD);
  }
  if (asJson) std::cout << out.dump(2) << "\n";
  else PrintText(out);
  return status;
}

}  // namespace

void AddInfoCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("info", "Detect a file's type and show what its reader finds in it");
  auto path = std::make_shared<std::string>();
  auto asJson = std::make_shared<bool>(false);
  command->footer(kStatusHelp);
  command->add_option("PATH", *path, "a data file or a vendor's data folder")->required();
  command->add_flag("--json", *asJson, "print one JSON object with stable keys");
  command->callback([path, asJson, &status] { status = RunInfo(*path, *asJson); });
}

}  // namespace velk::cli
