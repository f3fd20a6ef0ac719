#include "formats/writers.h"

#include "formats/alice/alice.h"
#include "formats/jcamp/writer.h"
#include "formats/numpy/numpy.h"
#include "model/trace.h"
#include "native/ver4_file.h"

namespace velk::formats {
namespace {

platform::Outcome Refused(const std::string& why) { return {1, {"", why}}; }

// One trace of a 2D set: the F2 trace of a row or the F1 trace of a column.
platform::Outcome PickTrace(const model::Spectrum2D& s, const WriteChoices& choices, model::Spectrum1D& trace,
                            std::string& written) {
  if (!choices.traceIndex) return Refused("--trace takes the row or column it writes: give --index N");
  const int axis = choices.trace == "f1" ? model::F1 : model::F2;
  const int across = axis == model::F1 ? model::F2 : model::F1;
  if (model::TraceAsSpectrum1D(s, axis, *choices.traceIndex, trace) != 0)
    return Refused("--index " + std::to_string(*choices.traceIndex) + " lies outside the " +
                   std::to_string(s.axis[across].Point) + " " +
                   (axis == model::F2 ? "rows (F1 points)" : "columns (F2 points)") + " of the data set");
  written = (axis == model::F2 ? "F2 trace of row " : "F1 trace of column ") + std::to_string(*choices.traceIndex);
  return {};
}

}  // namespace

platform::Outcome WriteVer4(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                            std::string& written) {
  const native::WriteOptions options{choices.keepBackup, choices.log};
  platform::Outcome outcome =
      data.oneD ? native::WriteDataR4(file, *data.oneD, options)
                : native::WriteDataR4(file, *data.twoD, data.companionF2, data.companionF1, data.words,
                                      choices.saveMode, options);
  if (!outcome.ok() && outcome.message.text.empty()) outcome.message.text = "the data set holds no points to save";
  written = data.oneD ? "Ver.4, 1D" : "Ver.4, 2D";
  return outcome;
}

platform::Outcome WriteJcamp(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                             std::string& written) {
  if (!model::IsProcessed(data.words.dataTypeCode))
    return Refused("JCAMP-DX output holds spectra, and this data set is a FID: transform it first");
  if (data.twoD && choices.trace.empty()) {
    if (choices.ntuples) return Refused("a 2D spectrum is written as NTUPLES pages already: leave out --jcamp-form");
    written = "JCAMP-DX nD NMR SPECTRUM, 2D";
    return jcamp::WriteDataJCAMPDX2D(file, *data.twoD, model::IsPhaseSensitive(data.words.pulseModeClass));
  }
  model::Spectrum1D trace;
  const model::Spectrum1D* oneD = data.oneD;
  if (data.twoD) {
    if (platform::Outcome picked = PickTrace(*data.twoD, choices, trace, written); !picked.ok()) return picked;
    oneD = &trace;
  } else if (!choices.trace.empty()) {
    return Refused("--trace takes a trace of a 2D data set, and this data set is 1D");
  } else {
    written = "1D";
  }
  const platform::Outcome outcome =
      choices.ntuples ? jcamp::WriteDataJCAMPDX2(file, *oneD) : jcamp::WriteDataJCAMPDX(file, *oneD);
  if (!outcome.ok()) return outcome;
  written = std::string("JCAMP-DX ") + (choices.ntuples ? "NTUPLES" : "XYDATA") + ", " + written;
  return {};
}

platform::Outcome WriteAlice(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices&,
                             std::string& written) {
  if (!data.oneD) return Refused("an Alice file holds 1D data only");
  written = "Alice, 1D";
  return alice::WriteDataALS(file, *data.oneD, model::IsProcessed(data.words.dataTypeCode));
}

platform::Outcome WriteNumpy(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                             std::string& written) {
  if (!data.twoD) return Refused("not a 2D data set");
  written = "NumPy, plane " + choices.plane + ", with " + numpy::AxesFileOf(file).filename().string();
  return numpy::WritePlane(file, *data.twoD, data.words.realOnly != 0, choices.plane);
}

}  // namespace velk::formats
