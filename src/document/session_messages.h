#pragma once
// The words of the session's messages, in one place.
#include "platform/message.h"

namespace velk::document::messages {

using platform::Buttons;
using platform::Icon;
using platform::Message;

inline Message FileInUse() {
  return {"File Warning", "This File is under using by other application", Buttons::Ok, Icon::Warning, true};
}
inline Message DataChanged() {
  return {"Caution!", "Data has been Changed", Buttons::SaveDontSaveCancel, Icon::Question, false};
}
inline Message NotTwoDimensional() {
  return {"File Name Error", "Invalid Data, or\nFile is not 2D!", Buttons::RetryCancel, Icon::Warning, false};
}
inline Message NotSupported() { return {"Data Error", "Non supported Data !", Buttons::Ok, Icon::Critical, true}; }
inline Message SelectProcessingMethod() {
  return {"Data Error", "Select Processing Method", Buttons::Ok, Icon::Question, false};
}
inline Message ExitChanged() {
  return {"Exit 2D NMR", "Data has been Changed.", Buttons::SaveDontSaveCancel, Icon::Question, false};
}
inline Message Bad1DFile() {
  return {"Data Error", "Data is too Large, or Parameter Error", Buttons::Ok, Icon::Critical, true};
}
inline Message NonTwoDimensionalData() { return {"Data Error", "Non 2D Data !", Buttons::Ok, Icon::Critical, true}; }
inline Message DataSizeTooLarge() {
  return {"Data Size Error", "Data Size is too large!", Buttons::Ok, Icon::Critical, true};
}
inline Message NoOneDimensionalProgram(const std::string& program) {
  return {"File Warning",
          "This is 1D data. The 1D program is not installed (" + program + "), so the file stays unopened.",
          Buttons::Ok, Icon::Warning, true};
}
inline Message RequiredFilesMissing(const std::string& list) {
  return {"Required Files", list, Buttons::Ok, Icon::Warning, false};
}

}  // namespace velk::document::messages
