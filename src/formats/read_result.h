#pragma once
// How the text and binary readers end: a reader fills a fresh record and replaces the caller's
// only when everything went well; every reader returns an Outcome, code 0 or a failure with the
// reason under the format's title, and the entry of the format table logs the read (or the
// routine's tag with the code).
#include <memory>
#include <new>
#include <string>

#include "model/format_entry.h"

namespace velk::formats {

inline constexpr const char* kOutOfMemory = "Data Size is too large!";

// A failure: -1 for a file that cannot be read or is no file of the format, 1 for data refused.
inline platform::Outcome Refused(const char* title, std::string reason, int code = -1) {
  return {code, {title, std::move(reason)}};
}

// Runs body on a fresh record; on success the record is moved into s. An allocation that fails
// becomes "Data Size is too large!".
template <class Record, class Body>
platform::Outcome ReadIntoFresh(Record& s, const char* title, Body body) {
  platform::Outcome outcome;
  auto fresh = std::make_unique<Record>();
  try {
    outcome = body(*fresh);
  } catch (const std::bad_alloc&) {
    return Refused(title, kOutOfMemory);
  }
  if (outcome.ok()) s = std::move(*fresh);
  return outcome;
}

// Logs "Read" and the file, or the tag ("ReadDataJCAMP/RDW1D (") with the code and ")".
platform::Outcome FinishRead(platform::Outcome outcome, const char* tag, const model::DetectedFile& file,
                             model::ReadContext& context);

}  // namespace velk::formats
