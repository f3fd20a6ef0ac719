#include "formats/read_result.h"

namespace velk::formats {

platform::Outcome FinishRead(int code, const std::string& reason, const char* tag, const char* title,
                             const model::DetectedFile& file, model::ReadContext& context) {
  if (code == 0) {
    if (context.log) context.log("Read", file.path.string());
    return {};
  }
  if (context.log) context.log(std::string(tag) + std::to_string(code) + ")", file.path.string());
  return {code, {title, reason}};
}

}  // namespace velk::formats
