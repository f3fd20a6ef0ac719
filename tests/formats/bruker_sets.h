#pragma once
// Small Bruker data sets written into a temporary folder: parameter files from key lists and data
// files from values, so that tests know the answer before the reader runs.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "formats/bruker/bruker.h"
#include "model/spectrum.h"
#include "platform/progress.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::test {

// A parameter file: the header every real file has (unless origin is empty), then the lines.
inline std::string ParameterFile(const std::string& lines, const std::string& origin = "Bruker BioSpin GmbH") {
  std::string text = "##TITLE= Parameter file\n##JCAMPDX= 5.0\n";
  if (!origin.empty()) text += "##ORIGIN= " + origin + "\n";
  return text + "$$ 2007-09-25 13:11:05.875 +0200  user@host\n" + lines + "##END=\n";
}

template <class T>
std::string Binary(const std::vector<T>& values) {
  std::string bytes(values.size() * sizeof(T), '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

struct ReadResult {
  platform::Outcome outcome;
  model::DataWords words;
};

// Reads the file as the detector would hand it over (folder, name); the words start unknown.
template <class Spectrum>
ReadResult Read(const std::filesystem::path& file, Spectrum& s, ScriptedPrompt& prompt, bool fidBaseline = false) {
  platform::NoProgress progress;
  ReadResult r;
  model::ReadContext context{prompt, progress, r.words, nullptr};
  context.fidBaseline = fidBaseline;
  model::DetectedFile detected;
  detected.path = file;
  detected.folder = file.parent_path();
  if constexpr (std::is_same_v<Spectrum, model::Spectrum2D>) r.outcome = formats::bruker::ReadBruker2D(detected, s, context);
  else r.outcome = formats::bruker::ReadBruker1D(detected, s, context);
  return r;
}

}  // namespace velk::test
