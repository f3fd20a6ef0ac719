#pragma once
// The operation history of a data set ("%% HISTORY-2" in the data blocks, "## HISTORY" for the
// file as a whole) and the numbered processing summary that follows it in the data blocks.
#include <span>
#include <string>
#include <vector>

#include "model/spectrum.h"
#include "native/fields.h"

namespace velk::native {

// The summary lines of the 2D and the 1D blocks, numbered from "01 ".
inline constexpr int kSummaryLines2D = 38;
inline constexpr int kSummaryLines1D = 18;

struct HistoryTexts {
  std::string user;       // who ran the first transform
  std::string firstDate;  // when
  model::History history;
};

// Tag, user, date, count and the operations, 64 bytes each.
void WriteHistory(FileSink& sink, std::string_view tag, const HistoryTexts& texts);
// The history, then the summary lines "01 " .. and the closing "99 " as 32-byte records.
// Lines missing from the span are written empty.
void WriteHistoryWithSummary(FileSink& sink, const HistoryTexts& texts, std::span<const std::string> lines,
                             int lineCount);

// Reads a section written by either writer; lines receives the summary lines whose number lies in
// 1..lineCount, others are ignored.
HistoryTexts ReadHistory(Bytes section);
void ReadSummary(Bytes section, std::string* lines, int lineCount);

}  // namespace velk::native
