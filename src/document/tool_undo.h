#pragma once
// The undo of the spectrum tools on the document's stack. A tool writes the whole data set to the
// live snapshot when it opens; at "Fix" the snapshot is copied to the first free numbered undo
// file and a record of the tool's kind names it. Undo renames that file back to the live
// snapshot and reads it, so no copy of the spectrum stays in memory between operations.
#include <filesystem>
#include <string>

#include "core/work_files.h"
#include "document/document.h"
#include "operations/phase_tool.h"
#include "operations/reference.h"
#include "operations/tool.h"
#include "platform/prompt.h"

namespace velk::document {

struct SnapshotFiles {
  std::filesystem::path folder;
  std::string runExtension;  // the run's own part of the names

  std::filesystem::path Live() const;             // "Temp2Ddata." + run + "001"
  std::filesystem::path Numbered(int n) const;    // "UnDo2Ddata." + run + "000", "001" ...
};
SnapshotFiles SnapshotFilesOf(const core::WorkFiles& run);

// The whole data set, all quadrants and parameters, to the live snapshot. False when it could
// not be written.
bool WriteLiveSnapshot(const Document& d, const SnapshotFiles& files);
// At "Fix": a record of the kind with a copy of the live snapshot under the first free number.
// When no number is free or the copy fails the fix stands without undo, and the document no
// longer matches its file.
bool PushSnapshotUndo(Document& d, const SnapshotFiles& files, int kind, bool previewPending);
// A reference change: the record keeps the axes from before.
void PushReferenceUndo(Document& d, const operations::ReferenceState& before, bool previewPending = false);

// "UnDo" of the top record when it is one of the tools' kinds. A data kind whose file is missing
// ends the command silently with the record left in place; after a data kind the F2 stored phases
// are cleared (the F1 pair is left as it is). The view's PreviewPending comes back from the record.
// False when nothing was undone.
bool UndoToolRecord(Document& d, const SnapshotFiles& files, operations::PhaseMemory& phases,
                    platform::Prompt& prompt);
bool IsToolUndoKind(int kind);

// The host through which the tools reach this document and the view it is shown with.
operations::ToolHost MakeToolHost(Document& d, const SnapshotFiles& files, platform::Prompt& prompt, int threads = 0);

}  // namespace velk::document
