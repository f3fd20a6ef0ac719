#pragma once
// The one way a file the user sees is written: the bytes go to a temporary file in the target's
// folder, are flushed to the disk, and the temporary file is renamed over the target. A reader of
// the target therefore sees either the old file or the whole new one; on any failure the temporary
// file is removed and the target is left exactly as it was.
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>

#include "platform/message.h"

namespace velk::core {

// A writer that opens the file itself (Qt's image, SVG and PDF writers): it writes the temporary
// path it is given and returns an empty text, or says why it failed.
using PathWriter = std::function<std::string(const std::filesystem::path& temporary)>;
// A writer of a byte stream: returns false when it gave up; stream failures are caught as well.
using StreamWriter = std::function<bool(std::ostream& out)>;

// Both return code 0, or -1 with the reason ("No space left on device") under the title
// "File Write Error". The temporary name keeps the target's extension at its end, so writers
// that choose a format by name still see it.
platform::Outcome WriteAtomically(const std::filesystem::path& target, const PathWriter& write);
platform::Outcome WriteAtomically(const std::filesystem::path& target, const StreamWriter& write);

}  // namespace velk::core
