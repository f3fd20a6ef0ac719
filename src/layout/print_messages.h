#pragma once
// The words of printing and picture export, in one place.
#include <string>
#include <string_view>

#include "platform/message.h"

namespace velk::layout::messages {

inline platform::Message NoPrinter() {
  return {"Print Error", "No Printer is available", platform::Buttons::Ok, platform::Icon::Warning, true};
}
inline platform::Message PaperDoesNotFit() {
  return {"Print Size Error", "Can not print the paper\nChange Printer Name, or Paper Size", platform::Buttons::Ok,
          platform::Icon::Warning, true};
}
inline platform::Message NoReverseSide() {
  return {"Dual Side Print", "The Printer cannot print on a reverse side!", platform::Buttons::Ok,
          platform::Icon::Warning, true};
}
inline platform::Message PrintFailed() {
  return {"Print Error", "Document could not be printed\nPlease, Retry", platform::Buttons::Ok, platform::Icon::Critical,
          true};
}
// extension: "PNG", "EMF", "PR2" ...
inline platform::Message WrongExtension(std::string_view extension) {
  return {"File Name Error", "Invalid File, or\nExtension of File is not ." + std::string(extension),
          platform::Buttons::Ok, platform::Icon::Warning, true};
}

}  // namespace velk::layout::messages
