#pragma once
// A document: one data set as the program holds it — the 2D spectrum with its companion traces
// (or a 1D set), the words that type it, where it came from, the view and contour setting it is
// shown with, and its undo stack. "Modified" is not a word anybody sets: it is the undo stack
// standing away from its clean mark.
#include <filesystem>

#include "display/axes.h"
#include "display/contour.h"
#include "display/display_state.h"
#include "document/undo_stack.h"
#include "formats/registry.h"
#include "model/spectrum.h"
#include "model/type_detector.h"

namespace velk::document {

// Where the data set was read from.
struct Source {
  std::filesystem::path path;       // as the user named it
  model::Detection detection;       // code, tag, the file read, pulse mode text
  std::filesystem::path dataSet;    // what belongs to the data set: a vendor's experiment folder, or the file
};

struct Document {
  model::Spectrum2D spectrum;
  model::Spectrum1D companionF2, companionF1;  // the traces beside the contour, when the file has them
  model::Spectrum1D oneD;  // a 1D data set (the command line converts them; the window hands them on)
  model::DataWords words;
  Source source;
  // How the window shows it; the window reads and writes these, it keeps no copy of its own.
  display::DisplayState view;
  display::ContourSetting contour;
  display::GridSetting grid;
  UndoStack undo;
};

inline int DimensionOf(const Document& d) { return model::Dimension(d.words.dataTypeCode); }
inline bool Modified(const Document& d) { return !AtCleanMark(d.undo); }
// A data set read in place of the present one: the new data with a fresh view and undo stack,
// and the present contour setting and grid, which belong to the person's way of looking rather
// than to a file. The undo files of the present data set are removed.
void Replace(Document& present, Document&& fresh);
// The records as the writers take them.
formats::DataSetRef RefOf(const Document& d);

}  // namespace velk::document
