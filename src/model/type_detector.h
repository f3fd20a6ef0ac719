#pragma once
// The type detector turns any path into DataTypeCode, a tag and the path parts, in three stages:
// the name and sibling files, the first bytes of the contents, and the format's header probe.
#include <filesystem>
#include <string>
#include <vector>

#include "model/format_entry.h"

namespace velk::model {

// A user's own extension tied to one of the data types ("USER EXTENSION DEF").
struct UserExtension {
  std::string label;      // shown in the Open dialog's filter
  std::string extension;  // ".XYZ"
  std::string extensionWord;  // the word of the data type it stands for
};

struct Detection {
  DataTypeCode code = kUnknownType;
  std::string tag = "ERR";
  DetectedFile file;
  std::string modeText;
  int pulseModeClass = kUnknownClass;
  std::string reason;  // why the detector gave "ERR", for the command line; never shown as a dialog
};

// Stage 2: the content test. Returns 0 and the text ("ECP", "VLMX_2", "" ...).
int ReadDataMode(const std::filesystem::path& path, std::string& typeText);

Detection TypeDetector(const std::filesystem::path& path, FormatTable formats,
                       const std::vector<UserExtension>& userExtensions = {}, platform::Prompt* prompt = nullptr);

}  // namespace velk::model
