#pragma once
// The names of the files the page and the print sets are written to: a name without extension
// gets the kind's own, a name with another one is refused.
#include <optional>
#include <string>
#include <string_view>

#include "platform/message.h"

namespace velk::layout {

// extension without the dot, upper case as the message shows it: "PNG", "BMP", "EMF", "PR2".
// The name to write, or nothing with the refusal ("Invalid File, or" ...).
std::optional<std::string> OutputFileName(const std::string& chosen, std::string_view extension,
                                          platform::Message& refusal);

}  // namespace velk::layout
