#pragma once
// The peak list outside the data set: its rows in ppm, Hz and height, the text file of
// Save_Peak_List (which reads back to the same table), and CSV and JSON for other programs.
#include <filesystem>
#include <string>
#include <vector>

#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::operations {

// One peak as a list shows it: ppm and Hz from 0 ppm, and the stored values it came from.
struct PeakRow {
  int number = 0;  // from 1
  double ppmF2 = 0, ppmF1 = 0;
  double hzF2 = 0, hzF1 = 0;
  model::Peak2D peak;
};

std::vector<PeakRow> PeakRows(const model::Spectrum2D& s);

// A number with a fixed count of decimals, as every list writes its values.
std::string FixedDecimals(double v, int decimals);

enum class PeakListFormat { Text, Csv, Json };

// The list in one of the three forms; name is the data set's file name written into the heading.
std::string FormatPeakList(const model::Spectrum2D& s, const std::string& name, PeakListFormat format);

// Save_Peak_List: the text form, written atomically.
platform::Outcome Save_Peak_List(const std::filesystem::path& file, const model::Spectrum2D& s, const std::string& name,
                                 PeakListFormat format = PeakListFormat::Text);

// Reads the text form back into a table: the stored positions, points, heights and thresholds.
// Code 1 with a message when the text is not such a list; at most 1000 peaks are taken.
platform::Outcome ParsePeakList(const std::string& text, model::PeakTable2D& table);
platform::Outcome ReadPeakList(const std::filesystem::path& file, model::PeakTable2D& table);

}  // namespace velk::operations
