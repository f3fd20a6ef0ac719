#pragma once
// The "##$" parameter lines of JCAMP-DX files: the JEOL keys (which this program also writes) and
// the Bruker keys that a 1D data set keeps.
#include <string>
#include <vector>

#include "formats/text_lines.h"
#include "model/spectrum.h"

namespace velk::formats::jcamp {

// The "##$" keys of the JEOL parameter section in the order the writer puts them, each with the
// record field's value as text.
std::vector<std::pair<std::string, std::string>> JeolParameterLines(const model::Spectrum1D& s);

// One "##$KEY= value" line of a JEOL (or this program's own) parameter section: fills the record
// field of that key. Unknown keys are skipped.
void ReadParaJeolJcamp(const std::string& line, model::Spectrum1D& s);

// One line of the Bruker parameter section of a JCAMP-DX file ("##$PULPROG= <zg30>"); array keys
// ("##$P= (0..63)") take their values from the following lines of the cursor.
void ReadParaBruJcamp(const std::string& line, TextCursor& cursor, model::Spectrum1D& s);

}  // namespace velk::formats::jcamp
