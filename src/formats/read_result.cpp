#include "formats/read_result.h"

namespace velk::formats {

platform::Outcome FinishRead(platform::Outcome outcome, const char* tag, const model::DetectedFile& file,
                             model::ReadContext& context) {
  if (!context.log) return outcome;
  if (outcome.ok()) context.log("Read", file.path.string());
  else context.log(std::string(tag) + std::to_string(outcome.code) + ")", file.path.string());
  return outcome;
}

}  // namespace velk::formats
