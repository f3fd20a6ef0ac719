#pragma once
// The routines of the Bruker reader and the state that one load shares between them. Every routine
// returns 0 on success, 1 when the data set doesn't have what it takes, -1 after an I/O failure or
// for a file that is not the vendor's.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "formats/bruker/param_files.h"
#include "model/format_entry.h"
#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::formats::bruker {

namespace fs = std::filesystem;

// Lives for one load: the parameter routines set it, the data loops read it.
struct LoadState {
  std::int16_t DataTypeCode = 0;   // 0 int32, 1 float32, 2 float64
  std::int16_t ByteOrderCode = 0;  // 1 most significant byte first
  std::int16_t AcquisitionClass = 0;  // 1D: 0 simultaneous, 1 sequential, 2 other
  std::int16_t F2SequentialFlag = 0, F1SequentialFlag = 0;
  std::int32_t PointsInFile1D = 0, PointsInFile2D = 0;
  std::int32_t DecimalFlag = 0;
  std::int32_t XDimF2 = 0, XDimF1 = 0;
  // Raw 1D and 2D sizes.
  std::int32_t ComplexPoints = 0;
  std::int32_t AcquiredComplexPoints = 0, F2Size = 0, F1Rows = 0, F1Size = 0;
  int pulseModeClass = model::kUnknownClass;
  bool originValid = false;
  std::string logTag;  // the routine whose failure was logged last
};

// 1D parameters.
int ReadParaBru(const fs::path& acqus, model::Spectrum1D& s, LoadState& state);
int ReadParaBruAQ(const fs::path& acqus, model::Spectrum1D& s, LoadState& state);
int ReadParaBruProc(const fs::path& procs, model::Spectrum1D& s, LoadState& state);
int ReadParaBruTxt(const fs::path& parmTxt, model::Spectrum1D& s, LoadState& state, int overwrite);
// 2D parameters.
int RPBru(const fs::path& acqus, const fs::path& acqu2s, model::Spectrum2D& s, LoadState& state);
int RPBruAc(const fs::path& acqus, const fs::path& acqu2s, model::Spectrum2D& s, LoadState& state);
int RPBruP(const fs::path& procs, const fs::path& proc2s, model::Spectrum2D& s, LoadState& state);
int RPBruTxt(const fs::path& parmTxt, model::Spectrum2D& s, LoadState& state);
// Data.
platform::Outcome ReadDataBru(const fs::path& fid, model::Spectrum1D& s, LoadState& state, model::ReadContext& context);
platform::Outcome ReadDataBruProc(const fs::path& file, const std::string& tag, model::Spectrum1D& s,
                                  LoadState& state, model::ReadContext& context);
platform::Outcome RDBru(const fs::path& ser, model::Spectrum2D& s, LoadState& state, model::ReadContext& context);
platform::Outcome RDBruP(const fs::path& file, model::Spectrum2D& s, LoadState& state, model::ReadContext& context);
// Planes of f2 x f1 points: those of the record when they have that size and need no zeroing,
// else newly allocated. False when memory ran out.
bool PreparePlanes(model::Spectrum2D& s, std::int32_t f2, std::int32_t f1, bool zeroed);
// Moves the planes, ppm tables and work traces of one record to another, so that a load reuses the
// session's memory; the data routines check everything before they write into them.
void LendPlanes(model::Spectrum2D& from, model::Spectrum2D& to);
// The digital filter's delay in points for files without GRPDLY (DSPFVS 10 to 13); 0 when the
// version or the decimation is not in the vendor's table.
double TabulatedGroupDelay(int decimation, int filterVersion);
// What the rows of a pseudo-2D set step through ("t1ir, vdlist"); empty for a true 2D set.
std::string SeriesOf(const fs::path& experiment, const std::string& pulseProgram);
// The processing stored with a raw data set (experiment/pdata/N), when there is one.
std::optional<model::VendorRecipe> ReadVendorRecipe(const fs::path& experiment);
// The title file: line ends normalised to CR LF; empty when there is none.
std::string ReadTitleFile(const fs::path& title);

// Probes.
model::ModeResult RMBru(const fs::path& acqus, const fs::path& acqu2s);
model::ModeResult RMBruP(const fs::path& procs, const fs::path& proc2s);
model::ModeResult RMBP(const fs::path& procs, LoadState& state);

// Shared by the routines.
// The keys of an acquisition file that 1D and 2D records share (texts, pulses, delays, scans, date).
void ApplyAcquisitionKeys(const AcquisitionFile& a, model::NmrParameters& p, model::DescriptiveTexts& texts,
                          model::VendorAcquisition& vendor);
// NUCLEUS, or NUC1 when NUCLEUS says "OFF", normalised.
std::string ChosenNucleus(const AcquisitionFile& a);
// "dd/mmm/yyyy  hh:nn:ss" of seconds since 1970 UTC in local time; empty when seconds <= 0.
std::string DateFromSeconds(std::int64_t seconds);
// The same text from a comment such as "2007-09-25 13:11:05.875 +0200 user@host"; empty if none.
std::string DateFromComment(const std::string& comment);
// The smallest power of two that is at least n, doubling from 1 at least once.
std::int32_t PaddedSize(std::int32_t n);
// Logs "<tag>/RW1D (" error ")" (or RW2D) for a failed parameter routine and returns -1.
int FailParameterRoutine(LoadState& state, const char* tag, bool twoD);
bool HasLength(const fs::path& file);
// The sibling that exists in the spelling the instruments use (lower case or upper case).
fs::path Sibling(const fs::path& folder, const std::string& name);

}  // namespace velk::formats::bruker
