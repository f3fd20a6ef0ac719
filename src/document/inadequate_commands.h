#pragma once
// "Extend Folded Data" on a document, with its undo: the planes as they were go to "Temp_3.dat"
// in the work folder, the peak list into the undo record.
#include <filesystem>

#include "document/document.h"
#include "platform/message.h"

namespace velk::document {

inline constexpr std::int16_t kUndoInadequateExtension = 26;
inline constexpr const char* kInadequateUndoFile = "Temp_3.dat";

// Code 1 when the set is not a folded INADEQUATE set or the new planes do not fit (with the
// message), -1 when the undo file cannot be written (nothing is changed then).
platform::Outcome ExtendFoldedDataOf(Document& d, const std::filesystem::path& workFolder);

// Undo of kind 26: planes, F1 axis and peak list as they were. False, changing nothing, when the
// top record is of another kind or its file is missing or damaged.
bool UndoInadequateExtension(Document& d);

}  // namespace velk::document
