#include "document/tool_undo.h"

#include <cstdio>
#include <system_error>

#include "native/ver4_file.h"
#include "operations/trace_reference.h"
#include "operations/undo_kinds.h"

namespace velk::document {

namespace fs = std::filesystem;

namespace {

std::string ThreeDigits(int n) {
  char text[16];
  std::snprintf(text, sizeof text, "%03d", n);
  return text;
}

constexpr int kUndoFileNumbers = 1000;

bool IsTraceReferenceKind(int kind) {
  return kind == operations::kUndoReference1DF1 || kind == operations::kUndoReference1DF2;
}

}  // namespace

bool IsToolUndoKind(int kind) {
  return operations::IsDataFileKind(kind) || kind == operations::kUndoReference2D || IsTraceReferenceKind(kind);
}

fs::path SnapshotFiles::Live() const { return folder / ("Temp2Ddata." + runExtension + "001"); }
fs::path SnapshotFiles::Numbered(int n) const { return folder / ("UnDo2Ddata." + runExtension + ThreeDigits(n)); }

SnapshotFiles SnapshotFilesOf(const core::WorkFiles& run) { return {run.folder, run.RunExtension()}; }

bool WriteLiveSnapshot(const Document& d, const SnapshotFiles& files) {
  native::WriteOptions options;
  options.makeFileBackup = false;
  return native::WriteDataR4(files.Live(), d.spectrum, &d.companionF2, &d.companionF1, d.words,
                             native::SaveMode::AllPlanes, options)
      .ok();
}

bool PushSnapshotUndo(Document& d, const SnapshotFiles& files, int kind, bool previewPending) {
  std::error_code error;
  for (int n = 0; n < kUndoFileNumbers; ++n) {
    const fs::path target = files.Numbered(n);
    if (fs::exists(target, error)) continue;
    if (!fs::copy_file(files.Live(), target, error)) break;
    UndoRecord record;
    record.Kind = static_cast<std::int16_t>(kind);
    record.FileName = target;
    record.PreviewPending = previewPending ? 1 : 0;
    PushUndo(d.undo, std::move(record));
    return true;
  }
  LoseCleanMark(d.undo);
  return false;
}

void PushReferenceUndo(Document& d, const operations::ReferenceState& before, bool previewPending) {
  UndoRecord record;
  record.PreviewPending = previewPending ? 1 : 0;
  record.Kind = operations::kUndoReference2D;
  record.Axes = before;
  PushUndo(d.undo, std::move(record));
}

bool UndoToolRecord(Document& d, const SnapshotFiles& files, operations::PhaseMemory& phases,
                    platform::Prompt& prompt) {
  display::DisplayState& view = d.view;
  const UndoRecord* top = TopUndo(d.undo);
  if (!top || !IsToolUndoKind(top->Kind)) return false;
  const std::int16_t previewPending = top->PreviewPending;
  if (top->Kind == operations::kUndoReference2D) {
    operations::RestoreReferenceState(d.spectrum, view, top->Axes);
    view.PreviewPending = previewPending;
    PopUndo(d.undo);
    return true;
  }
  if (IsTraceReferenceKind(top->Kind)) {
    model::Spectrum1D& trace = top->Kind == operations::kUndoReference1DF1 ? d.companionF1 : d.companionF2;
    operations::SetTraceScale(trace, operations::ScaleFromRecord(top->References));
    view.PreviewPending = previewPending;
    PopUndo(d.undo);
    return true;
  }
  std::error_code error;
  const auto size = fs::file_size(top->FileName, error);
  if (error || size == 0) return false;
  fs::remove(files.Live(), error);
  fs::rename(top->FileName, files.Live(), error);
  if (error) return false;
  platform::NoProgress progress;
  model::ReadContext context{prompt, progress, d.words, nullptr};
  context.companionF2 = &d.companionF2;
  context.companionF1 = &d.companionF1;
  if (!native::ReadDataR4(files.Live(), d.spectrum, context).ok()) return false;
  phases.StoredPhaseF2_0 = phases.StoredPhaseF2_1 = 0;
  view.PreviewPending = previewPending;
  PopUndo(d.undo);
  return true;
}

operations::ToolHost MakeToolHost(Document& d, const SnapshotFiles& files, platform::Prompt& prompt, int threads) {
  display::DisplayState& view = d.view;
  return {d.spectrum,
          view,
          prompt,
          d.companionF2,
          d.companionF1,
          d.words.pulseModeClass,
          threads,
          [&d, files] { WriteLiveSnapshot(d, files); },
          [&d, &view, files](operations::UndoKind kind) { PushSnapshotUndo(d, files, kind, view.PreviewPending != 0); },
          [&d, &view](const operations::ReferenceState& before) {
            PushReferenceUndo(d, before, view.PreviewPending != 0);
          },
          [&d](int count) {
            for (int i = 0; i < count; ++i) PopUndo(d.undo);
          },
          [&d, &view](operations::UndoKind kind, const std::array<double, 4>& before) {
            UndoRecord record;
            record.Kind = kind;
            record.References = before;
            record.PreviewPending = view.PreviewPending;
            PushUndo(d.undo, std::move(record));
          },
          [&d] {
            if (AtCleanMark(d.undo)) LoseCleanMark(d.undo);
          },
          {}};
}

}  // namespace velk::document
