#pragma once
// The parameter files of a Bruker data set (acqus, acqu2s, procs, proc2s) parsed into plain values.
// The routines that fill the records take from these what each of them needs.
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "model/vendor_recipe.h"

namespace velk::formats::bruker {

using Table31 = std::array<float, 32>;  // elements 1..31 as the files index them

// Key matching ignores case: real files write "##$SW_h", "##$AQ_mod", "##$FnMODE".
struct AcquisitionFile {
  std::string origin;  // upper-cased
  bool originValid = false;  // origin names UXNMR, BRUKER or XWIN-NMR
  std::string pulseProgram, probeHead, gradientProgram, instrument, solvent, decoupledNucleus;
  std::string nuc1, nucleus;  // upper-cased candidates
  std::optional<std::int16_t> aqMod, byteOrder, dataType;
  float deadTime = 0, filterWidth = 0, spinRate = 0, swHz = 0;
  double bf1 = 0;  // kept double: as a single float it is off by some hertz, a point of a 1H axis
  std::optional<float> temperatureK;
  double sfo1 = 0;
  float offsetHz = 0;  // SFO1 - BF1, from the BF1 that stood in front of SFO1
  double swPpm = 0;
  std::int32_t td = 0, receiverGain = 0, scans = 0, dummyScans = 0;
  std::int32_t ymaxDot = 0, yminDot = 0;  // 1-based position of "." in YMAX_A / YMIN_A, 0 none
  std::int64_t date = 0;  // seconds since 1970 UTC
  double groupDelay = 0;
  std::int32_t decimation = 0, filterVersion = 0, fnMode = 0;
  std::int32_t fnType = 0;  // FnTYPE: 0 or 1 evenly sampled, 2 non-uniformly sampled, 3 projections
  Table31 pulses{}, delays{}, constants{}, increments{};
  bool hasPulses = false, hasDelays = false;
};

struct ProcessingFile {
  bool originValid = false;
  double sf = 0;
  std::optional<std::int16_t> byteOrder, dataType;
  std::int32_t maxiDot = 0, ymaxDot = 0, yminDot = 0;
  float swHz = 0;
  std::int32_t si = 0;
  float offsetPpm = 0;
  std::optional<int> window;  // WDW mapped to the window function number
  std::int32_t xdim = 0;
  std::int16_t phaseMode = 0;
  std::string dateComment;  // the first "$$" comment that holds a date, from its third character
  model::VendorAxisRecipe recipe;  // the processing of this axis
  int mc2 = 0;
  std::int32_t ncProc = 0;
};

// 0 on success, -1 when the file cannot be read or a value that must be a number is not one.
int ParseAcquisitionFile(const std::filesystem::path& file, AcquisitionFile& out);
int ParseProcessingFile(const std::filesystem::path& file, ProcessingFile& out);

// The listing printed by the vendor's software (parm.txt): key word and first value, with the
// blocks "F2"/"F1" and the switch to "PROCESSING PARAMETERS" marked by the section number.
struct ListingValue {
  std::string key;  // upper-cased
  std::string value;
  int axis = 0;     // 0 before any axis line, 2 after "F2", 1 after "F1"
  bool processing = false;
};
int ParseListing(const std::filesystem::path& file, std::vector<ListingValue>& out);

}  // namespace velk::formats::bruker
