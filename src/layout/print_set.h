#pragma once
// Print sets: the look of the printed page (display modes, colours, transparencies, axis labels,
// line widths, fonts, axis tics) in a ".pr2" text file of "key ; value" lines. The default set is
// "2D.PR2" in the settings folder.
#include <filesystem>
#include <istream>

#include "core/settings.h"
#include "platform/message.h"

namespace velk::layout {

// The keys in the file's order, with the values a new set starts with.
const core::SettingsSchema& PrintSetSchema();
core::Settings DefaultPrintSet();

inline constexpr const char* kDefaultPrintSetName = "2D.PR2";
// "Print Env. & Color Setting|*.pr2|".
inline constexpr const char* kPrintSetFilterLabel = "Print Env. & Color Setting";
inline constexpr const char* kPrintSetFilterPattern = "*.pr2";

// Reads a set over the given one: the first line names the version ("2D PRINT SET DATA",
// "COLOR SET OF PRINT 2D VER.1" or "VER.4"), any other first line refuses the file (code 1) and
// leaves the set as it was; beyond version 1 a key may carry the prefix "2-". Keys the file does
// not hold keep their values. An unreadable file is -1.
platform::Outcome ReadPrintSet(const std::filesystem::path& file, core::Settings& set);
platform::Outcome ReadPrintSet(std::istream& in, core::Settings& set);
// Writes the whole set, version 4, atomically.
platform::Outcome WritePrintSet(const std::filesystem::path& file, const core::Settings& set);

// The set a page starts with: "2D.PR2" of the settings folder when it reads, else the defaults.
core::Settings StartingPrintSet(const std::filesystem::path& settingsFolder);

}  // namespace velk::layout
