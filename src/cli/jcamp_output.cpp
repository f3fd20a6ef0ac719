#include "cli/jcamp_output.h"

#include "formats/jcamp/writer.h"
#include "model/data_type.h"
#include "model/trace.h"

namespace velk::cli {

namespace {

platform::Outcome Refused(const std::string& why) { return {1, {"", why}}; }

}  // namespace

platform::Outcome WriteJcampOutput(const std::filesystem::path& out, const LoadedData& data,
                                   const JcampOutputOptions& options, std::string& written) {
  if (!model::IsProcessed(data.detection.code))
    return Refused("JCAMP-DX output holds spectra, and this data set is a FID: transform it first");
  model::Spectrum1D trace;
  const model::Spectrum1D* oneD = data.oneD.get();
  if (data.twoD) {
    if (options.trace.empty() || !options.index)
      return Refused("a 2D data set goes to JCAMP-DX one trace at a time: give --trace f1|f2 and --index N");
    const int axis = options.trace == "f1" ? model::F1 : model::F2;
    const int across = axis == model::F1 ? model::F2 : model::F1;
    const std::int32_t count = data.twoD->axis[across].Point;
    if (model::TraceAsSpectrum1D(*data.twoD, axis, *options.index, trace) != 0)
      return Refused("--index " + std::to_string(*options.index) + " lies outside the " + std::to_string(count) + " " +
                     (axis == model::F2 ? "rows (F1 points)" : "columns (F2 points)") + " of the data set");
    oneD = &trace;
    written = (axis == model::F2 ? "F2 trace of row " : "F1 trace of column ") + std::to_string(*options.index);
  } else if (!options.trace.empty()) {
    return Refused("--trace takes a trace of a 2D data set, and this data set is 1D");
  } else {
    written = "1D";
  }
  const platform::Outcome outcome = options.form == "ntuples" ? formats::jcamp::WriteDataJCAMPDX2(out, *oneD)
                                                              : formats::jcamp::WriteDataJCAMPDX(out, *oneD);
  if (!outcome.ok()) return {-1, {"", outcome.message.text}};
  written = "JCAMP-DX " + std::string(options.form == "ntuples" ? "NTUPLES" : "XYDATA") + ", " + written;
  return {};
}

}  // namespace velk::cli
