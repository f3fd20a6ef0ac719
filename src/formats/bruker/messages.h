#pragma once
// The words the Bruker reader shows or logs.
#include "platform/message.h"

namespace velk::formats::bruker::messages {

using platform::Buttons;
using platform::Icon;
using platform::Message;

inline Message DataSizeTooLarge() {
  return {"Data Size Error", "Data Size is too large!", Buttons::Ok, Icon::Warning, true};
}
inline Message TooLargeData() { return {"Data Error", "Too Large Data", Buttons::Ok, Icon::Warning, true}; }
inline Message Invalid2DData() { return {"Data Error", "Invalid 2D Data", Buttons::Ok, Icon::Warning, true}; }
inline Message InvalidData() { return {"Data Error", "Invalid Data", Buttons::Ok, Icon::Warning, true}; }
inline Message ShortFile(const std::string& name) {
  return {"Data Error", "The data file " + name + " is shorter than its parameters say (truncated?)", Buttons::Ok,
          Icon::Warning, true};
}
inline Message BadSubmatrix() {
  return {"Data Error", "The submatrix size (XDIM) of the processing parameters does not fit the data size",
          Buttons::Ok, Icon::Warning, true};
}
inline Message NotVendorFile(const std::string& routine) {
  return {"Data Error", "Invalid Data: the parameter files are not Bruker's (" + routine + ")", Buttons::Ok,
          Icon::Warning, true};
}

// Raw data whose increments were not taken at even steps: transformed as if they were, they give a
// wrong spectrum, so they are refused and the reconstructed spectrum is named instead.
inline Message NonUniformSampling(const std::string& why) {
  return {"Data Error",
          "Non-uniformly sampled data (" + why + "): the F1 increments were not taken at even steps, and this "
          "program transforms evenly sampled data only. Open the spectrum the spectrometer's software "
          "reconstructed (pdata/1/2rr) instead.",
          Buttons::Ok, Icon::Warning, true};
}

inline constexpr const char* kSelectDataType = "Select Data Type";
inline constexpr const char* kDataTypeChoices[] = {"SINGLE", "DOUBLE", "INTEGER"};

// Processing-text notes of what the reader did.
inline constexpr const char* kQuadratureNames[] = {"undefined", "QF", "QSEQ", "TPPI", "States", "States-TPPI",
                                                   "Echo-Antiecho"};

}  // namespace velk::formats::bruker::messages
