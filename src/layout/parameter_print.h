#pragma once
// Which parameter list the page prints, and how: the built-in default list, the list the person
// edited, or a parameter file; the character column the values' decimal points stand in; the font
// of the block. The choice is kept in the 2D settings:
//   "PARAMETER TABLE"  the parameter file last chosen (kept while another source is in use);
//   "PARA TABLE"       repeated lines: first "<source> <decimal column>" ("LIST 25"), then the
//                      edited list, one line as a parameter file writes it;
//   "PARAMETER FONT NAME", "... SIZE", "... BOLD", "... ITAL"  the font (a print set read hands
//                      over its "PARA FONT ..." and a print set saved takes the font along).
// Every page (the Print Preview, the print and picture commands) gets its list from
// ApplyParameterPrint, so that there is one place where the list is picked.
#include <filesystem>

#include "core/settings.h"
#include "layout/draw_coded_text.h"
#include "layout/page_look.h"
#include "layout/page_undo.h"
#include "layout/parameter_file.h"
#include "layout/render_parameter_list.h"
#include "model/spectrum.h"

namespace velk::layout {

enum class ParameterListSource { Default, List, File };

struct ParameterPrint {
  ParameterListSource source = ParameterListSource::Default;
  std::filesystem::path file;  // "Use File"
  ParameterList list;          // "Use List"
  int decimalColumn = kDefaultDecimalColumn;
  TextFont font = DefaultParameterFont();
  friend bool operator==(const ParameterPrint&, const ParameterPrint&) = default;
};

// The choice and the list it gave.
struct PrintedParameters {
  ParameterPrint choice;
  ParameterList list = DefaultParameterList();
};

inline constexpr int kSmallestDecimalColumn = 1;
inline constexpr int kLargestDecimalColumn = 80;
inline constexpr int kUndoCodePrintParameter = 101;  // "UnDo(Print Parameter)"

ParameterPrint ParameterPrintFromSettings(const core::Settings& settings);
void StoreParameterPrint(const ParameterPrint& choice, core::Settings& settings);

// The folder of parameter files: "PRINT TABLE DIR" when set, else the given one.
std::filesystem::path ParameterFolder(const core::Settings& settings, const std::filesystem::path& fallback);

// Takes the choice and its list. A parameter file that can't be read leaves `printed` as it was
// and answers the failure under "ReadParaFile/Fm17".
platform::Outcome ApplyParameterPrint(const ParameterPrint& choice, const std::filesystem::path& parameterFolder,
                                      PrintedParameters& printed);
// The choice kept in the settings, applied over the default list.
PrintedParameters PrintedParametersFromSettings(const core::Settings& settings,
                                                const std::filesystem::path& parameterFolder,
                                                platform::Outcome* failure = nullptr);

// The entries offered in "Edit Parameters": "NMRAllParE.lst" from the first folder that has it,
// without its comment lines, else every macro the program knows with its label.
ParameterList OfferedParameters(std::initializer_list<std::filesystem::path> folders);

// What "Parameter Print" changes besides the choice: the look of the parameter frame and the data
// set's sample ID and comment.
struct ParameterPrintPage {
  PrintedParameters printed;
  PageFrame frame;
  std::string sampleId, comment, commentRtf;
};
ParameterPrintPage ParameterPrintPageOf(const PrintedParameters& printed, const EditedPage& page,
                                        const model::Spectrum2D& spectrum);

// The undo step of "Parameter Print": everything it changed as it was before; the settings get the
// old choice back as well.
class ParameterPrintCommand final : public PageCommand {
 public:
  ParameterPrintCommand(PrintedParameters& target, core::Settings& settings, model::Spectrum2D& spectrum,
                        ParameterPrintPage before)
      : PageCommand(kUndoCodePrintParameter), target_(target), settings_(settings), spectrum_(spectrum),
        before_(std::move(before)) {}
  void Undo(EditedPage& page) const override;

 private:
  PrintedParameters& target_;
  core::Settings& settings_;
  model::Spectrum2D& spectrum_;
  ParameterPrintPage before_;
};

}  // namespace velk::layout
