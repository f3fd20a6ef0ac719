#pragma once
// How the text and binary readers end: a reader fills a fresh record and replaces the caller's
// only when everything went well; its failure carries a reason, and the entry of the format table
// logs the read (or the routine's tag with the code) and turns the result into an Outcome.
#include <memory>
#include <new>
#include <string>

#include "model/format_entry.h"

namespace velk::formats {

// Thrown inside a reader; caught by ReadIntoFresh.
struct ReadFailure {
  std::string reason;
};

inline constexpr const char* kOutOfMemory = "Data Size is too large!";

// Runs body on a fresh record; 0 and the record moved into s, or -1 and the reason.
template <class Record, class Body>
int ReadIntoFresh(Record& s, std::string& reason, Body body) {
  auto fresh = std::make_unique<Record>();
  try {
    body(*fresh);
  } catch (const ReadFailure& failure) {
    reason = failure.reason;
    return -1;
  } catch (const std::bad_alloc&) {
    reason = kOutOfMemory;
    return -1;
  }
  s = std::move(*fresh);
  return 0;
}

// Logs "Read" and the file, or the tag ("ReadDataJCAMP/RDW1D (") with the code and ")".
platform::Outcome FinishRead(int code, const std::string& reason, const char* tag, const char* title,
                             const model::DetectedFile& file, model::ReadContext& context);

}  // namespace velk::formats
