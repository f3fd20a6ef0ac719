#pragma once
// The section "## 2D Data": mode string, its own address table, parameters, planes, comment,
// sample ID, peaks, divided-display regions, print set and history.
#include <span>
#include <string>
#include <vector>

#include "model/format_entry.h"
#include "model/spectrum.h"
#include "native/fields.h"

namespace velk::native {

// What goes into the data section: the mode string and one or four planes of F2 * F1 floats,
// row 0 of F1 first.
struct PlaneSet {
  std::string modeString;
  std::vector<std::span<const float>> planes;
  std::vector<std::vector<float>> owned;  // planes made for the save (power spectrum, copies)
};

// Writes the section at head's end: everything up to the plane data into head, the rest into
// tail, whose base it sets behind the planes. Returns the section's table entry.
Entry Write2DSection(FileSink& head, FileSink& tail, const model::Spectrum2D& s, const PlaneSet& planes,
                     const std::string& fileName);

enum class Read2DResult { Ok, Invalid, TooLarge, NoMemory, Quit };
// Reads the section of the file that the entry names into the record and the data words. The
// planes are copied in runs of rows, each reported to `progress`, whose quit ends the read.
Read2DResult Read2DSection(Bytes file, Entry entry, model::Spectrum2D& s, model::DataWords& words,
                           platform::Progress& progress);

}  // namespace velk::native
