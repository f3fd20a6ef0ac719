// velk2d-cli info: what the detector and the reader make of a file.
#include <iomanip>
#include <iostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "formats/registry.h"
#include "model/pulse_mode.h"
#include "model/spectrum.h"
#include "model/type_detector.h"

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

// Exit status: 0 recognised and read, 1 refused, 2 unreadable.
int RunInfo(const std::string& path, bool asJson) {
  const model::FormatTable formats = formats::Formats();
  const model::Detection d = model::TypeDetector(path, formats);
  json out = DescribeDetection(d);
  int status = 0;
  if (d.code < 0) {
    std::cerr << "velk2d-cli info: " << path << ": " << d.reason << "\n";
    status = std::filesystem::exists(path) ? 1 : 2;
  } else {
    const auto* entry = &*std::find_if(formats.begin(), formats.end(), [&](const model::FormatEntry& e) {
      return e.extensionWord == d.file.extensionWord;
    });
    CliPrompt prompt;
    platform::NoProgress progress;
    model::DataWords words{d.code, d.pulseModeClass, 0};
    model::Spectrum1D f2, f1;
    model::ReadContext context{prompt, progress, words, nullptr, &f2, &f1};
    platform::Outcome outcome{-1, {}};
    if (model::Dimension(d.code) == 2 && entry->read2D) {
      auto spectrum = std::make_unique<model::Spectrum2D>();
      outcome = entry->read2D(d.file, *spectrum, context);
      if (outcome.ok()) {
        out["data"] = Describe2D(*spectrum);
        out["data"]["real_only"] = words.realOnly != 0;
        out["data"]["trace_points"] = {{"f2", f2.params.POINT}, {"f1", f1.params.POINT}};
      }
    } else if (model::Dimension(d.code) == 1 && entry->read1D) {
      auto spectrum = std::make_unique<model::Spectrum1D>();
      outcome = entry->read1D(d.file, *spectrum, context);
      if (outcome.ok()) out["data"] = Describe1D(*spectrum);
    } else {
      outcome.message.text = "no reader for this kind of data yet";
    }
    if (!outcome.ok()) {
      std::cerr << "velk2d-cli info: " << path << ": " << outcome.message.title
                << (outcome.message.title.empty() ? "" : ": ") << outcome.message.text << "\n";
      status = outcome.code == 1 ? 1 : 2;
    }
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
  command->add_option("PATH", *path, "a data file or a vendor's data folder")->required();
  command->add_flag("--json", *asJson, "print one JSON object with stable keys");
  command->callback([path, asJson, &status] { status = RunInfo(*path, *asJson); });
}

}  // namespace velk::cli
