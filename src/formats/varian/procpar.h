#pragma once
// Varian parameter files (procpar, curpar) and what is taken from them: the 1D/2D decision and
// class (RMV) and the parameters of 1D and 2D records.
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/format_entry.h"
#include "model/spectrum.h"
#include "platform/prompt.h"

namespace velk::formats::varian {

// Values by parameter name in upper case. Each parameter is a name line ("sfrq 1 1 1e9 0 0 2 1 0 1
// 64"), a value line with the count first (strings quoted, one a line after the first), and an
// enumeration line.
using VarianParameters = std::map<std::string, std::vector<std::string>>;

std::optional<VarianParameters> ReadVarianParameters(const std::filesystem::path& file);

// procpar, else curpar, in the data file's folder or its parent.
std::optional<std::filesystem::path> FindVarianParameterFile(const std::filesystem::path& dataFile);

// The value of a parameter: text or number by index 0; fallback when absent.
std::string VarianText(const VarianParameters& p, const std::string& name);
double VarianNumber(const VarianParameters& p, const std::string& name, double fallback = 0);

// RMV: "1D:" and the sequence for a 1D set, or the class name (VPH_HOMO, V_HOMO, VPH_HETERO,
// V_HETERO), ":" and the sequence for a 2D set; kind is "HOMO" or "HETERO" by the frequency
// test. For arrays that may be either, asks "2D Data(Yes) or Array Data(No)?". Code -1 on failure.
model::ModeResult RMV(const std::filesystem::path& parameterFile, platform::Prompt& prompt);

// The pulse mode class of a mode text of RMV.
int VarianClassOf(const std::string& modeText);

// The parameters of a 1D record (ReadParaVarian) and of a 2D record.
void ReadParaVarian(const VarianParameters& p, model::Spectrum1D& s);
void ReadParaVarian2D(const VarianParameters& p, model::Spectrum2D& s);

}  // namespace velk::formats::varian
