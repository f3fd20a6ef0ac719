#include "document/write_data_set.h"

namespace velk::document {
namespace {

namespace fs = std::filesystem;

// The path with every existing part resolved (links, "..", relative parts).
fs::path Resolved(const fs::path& path) {
  std::error_code error;
  const fs::path resolved = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? path.lexically_normal() : resolved;
}

bool Inside(const fs::path& path, const fs::path& folder) {
  const fs::path relative = path.lexically_relative(folder);
  return !relative.empty() && *relative.begin() != "..";
}

bool SameFile(const fs::path& a, const fs::path& b) {
  std::error_code error;
  return fs::equivalent(a, b, error) || Resolved(a) == Resolved(b);
}

}  // namespace

std::string RefuseOverwrite(const fs::path& output, const std::vector<Source>& inputs) {
  const fs::path out = Resolved(output);
  for (const Source& input : inputs) {
    for (const fs::path& file : {input.path, input.detection.file.path})
      if (!file.empty() && SameFile(out, file))
        return output.string() + " is the input " + input.path.string() + ": choose another output name";
    std::error_code error;
    if (!input.dataSet.empty() && fs::is_directory(input.dataSet, error) && Inside(out, Resolved(input.dataSet)))
      return output.string() + " lies inside the input data set " + input.dataSet.string() +
             ": write it outside that folder";
  }
  return {};
}

std::string RefuseExtension(const fs::path& output, const formats::FileFormat& format) {
  if (formats::HasExtensionOf(format, output)) return {};
  return output.filename().string() + " is not a " + std::string(format.name) + " file name: use " +
         std::string(format.extensions.front());
}

platform::Outcome WriteDataSet(const Document& document, const fs::path& path, const formats::FileFormat& format,
                               const formats::WriteChoices& choices, std::string& written) {
  if (!format.write) return {1, {"", "the program does not write " + std::string(format.name) + " files"}};
  if (std::string why = RefuseExtension(path, format); !why.empty()) return {1, {"", why}};
  std::vector<fs::path> outputs{path};
  for (const std::string& extension : format.companions) outputs.push_back(fs::path(path).replace_extension(extension));
  for (const fs::path& output : outputs)
    if (std::string why = RefuseOverwrite(output, {document.source}); !why.empty()) return {1, {"", why}};
  return format.write(path, RefOf(document), choices, written);
}

native::SaveSituation SaveSituationOf(const Document& document) {
  const model::Spectrum2D& s = document.spectrum;
  return {document.words.pulseModeClass, document.words.realOnly != 0, document.contour.PowerSpectrum != 0,
          s.Modified, s.axis[model::F2].Point, s.axis[model::F1].Point};
}

platform::Outcome SaveDocument(Document& document, const fs::path& path, const formats::WriteChoices& choices) {
  const formats::FileFormat& ver4 = *formats::FindFormat("Ver.4");
  if (std::string why = RefuseExtension(path, ver4); !why.empty()) return {1, {"", why}};
  // Saving over the program's own file it came from is the ordinary Save (the ".$" generation keeps
  // the previous one); any other file it was read from is never written over.
  const bool ownFile = formats::HasExtensionOf(ver4, document.source.path) && SameFile(path, document.source.path);
  if (std::string why = RefuseOverwrite(path, {document.source}); !why.empty() && !ownFile) return {1, {"", why}};
  std::string written;
  platform::Outcome outcome = ver4.write(path, RefOf(document), choices, written);
  if (!outcome.ok()) return outcome;
  document.source.path = document.source.detection.file.path = document.source.dataSet = path;
  SetCleanMark(document.undo);
  return outcome;
}

}  // namespace velk::document
