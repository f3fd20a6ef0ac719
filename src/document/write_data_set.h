#pragma once
// The one way a data set goes out: to a format of the registry, under a name that fits the
// format, never over a file the data set was read from.
#include <filesystem>
#include <string>
#include <vector>

#include "document/document.h"
#include "formats/registry.h"
#include "native/save_modes.h"
#include "platform/prompt.h"

namespace velk::document {

// Why an output may not be written to the path, or empty: it is one of the inputs (also through
// links), or lies inside an input's data set (a Bruker experiment folder, a Varian folder).
std::string RefuseOverwrite(const std::filesystem::path& output, const std::vector<Source>& inputs);
// Why the name does not fit the format ("OUT.png is not a Ver.4 file name: use .vlk2"), or empty.
std::string RefuseExtension(const std::filesystem::path& output, const formats::FileFormat& format);

// Both checks above, then the format's writer; `written` says what was written. Code 1 when the
// name, the data or the choices do not fit (nothing is written), -1 when the file cannot be
// written (an earlier file stays as it was).
platform::Outcome WriteDataSet(const Document& document, const std::filesystem::path& path,
                               const formats::FileFormat& format, const formats::WriteChoices& choices,
                               std::string& written);

// What the question of a Ver.4 save ("ALL", "REAL" or the power spectrum) goes by.
native::SaveSituation SaveSituationOf(const Document& document);

// Save: the whole data set to the program's own file; on success the document is at its clean
// mark and comes from that file.
platform::Outcome SaveDocument(Document& document, const std::filesystem::path& path,
                               const formats::WriteChoices& choices);

}  // namespace velk::document
