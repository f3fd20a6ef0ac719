#pragma once
// "Read Phase Correction Data(DQF)": a 1D FID measured to set phases by, usually a DQF-COSY row,
// read by any of the program's 1D readers. The FT window shows it in place of the row on show, so
// that the phases set on it hold for the transform of the main data.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "platform/prompt.h"

namespace velk::document {

struct PhaseReference {
  std::vector<float> re, im;  // the FID's complex points
};

// The file dialog's filters, the one of the current format first.
std::vector<platform::FileFilter> PhaseReferenceFilters(int formatNumber);
// "Invalid File, or" / "not Phase Data" under "File Error", with Retry and Cancel.
platform::Message NotPhaseData();

// Reads the file; nothing when it is not a 1D FID we read or has more than maxPoints points.
std::optional<PhaseReference> ReadPhaseReference(const std::filesystem::path& path, platform::Prompt& prompt,
                                                 std::int32_t maxPoints);
// The command: the file dialog, the read, and on failure the question whose Retry opens the
// dialog again. Nothing when the user gave up.
std::optional<PhaseReference> AskPhaseReference(platform::Prompt& prompt, int formatNumber, std::int32_t maxPoints);

}  // namespace velk::document
