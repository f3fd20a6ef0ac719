#pragma once
// The words the spectrum operations show, in one place: the questions of the tools when another
// command wants to start, the warnings at entry, and the captions of the Undo entry.
#include <string>
#include <string_view>

#include "platform/message.h"
#include "processing/messages.h"

namespace velk::operations::messages {

// Asked when a tool is open and another command starts, with Yes (fix), No (cancel), Cancel (stay).
inline constexpr std::string_view kFixF1Phase = "Fix F1 Phase Correction?";
inline constexpr std::string_view kFixF2Phase = "Execute F2 Phase Correction?";
inline constexpr std::string_view kFixF1Base = "Fix F1 Base Line Correction?";
inline constexpr std::string_view kFixF2Base = "Execute F2 Base Line Correction?";
inline constexpr std::string_view kFixSymmetrization = "Execute Symmetrization?";
inline constexpr std::string_view kFixReference = "Execute Reference Setting?";
inline constexpr std::string_view kFixReference1DF1 = "Execute 1D (F1) Reference Setting?";
inline constexpr std::string_view kFixReference1DF2 = "Execute 1D (F2) Reference Setting?";
// Asked when "Fix" is not yet possible; "NEXT" cancels the tool.
inline constexpr std::string_view kF1PhaseNotFixable = "F1 Phase Correction can not be Fixed";
inline constexpr std::string_view kF2PhaseNotFixable = "F2 Phase Correction can not be Fixed";
inline constexpr std::string_view kBaseNotFixable = "Base Line Correction can not be Fixed";
inline constexpr std::string_view kSymmetrizationNotFixable = "Symmetrization can not be Fixed";
inline constexpr std::string_view kGoNext = "Anyway, Go Next?";

// At the entry of a phase correction after a baseline correction or symmetrization.
inline constexpr std::string_view kPhaseAfterModified =
    "Since BaseLine Correction or Symmetrization has been executed,\n"
    "this Phase Correction will not give a correct result.\nContinue?";
inline constexpr std::string_view kSymmetrizeHint = "Make Line on the center of diagonal Peaks, and execute.";
inline constexpr std::string_view kRecommendRealOnly =
    "recommend [Save Real only], because this data was Symmetrized or BaseLine corrected.";

// Exchange of the axes.
inline constexpr std::string_view kExchangeTitle = "Exchange Data";
inline constexpr std::string_view kExchangeQuestion = "Exchange F1 and F2 Data?";

// Reference from the instruments' table when a frequency is missing.
inline constexpr std::string_view kReferenceTitle = "Reference Setting";
inline constexpr std::string_view kFrequencyMissing =
    ": the observe frequency of the data or the 0 ppm frequency of the instrument is missing; the reference stays as "
    "it was.";

inline platform::Message DataSizeTooLarge() {
  return {std::string(processing::messages::kDataSizeError), std::string(processing::messages::kDataSizeTooLarge),
          platform::Buttons::Ok, platform::Icon::Warning, true};
}

}  // namespace velk::operations::messages
