#pragma once
// The kinds of the undo records that the spectrum tools push (the document's stack holds them and
// knows their captions).

namespace velk::operations {

enum UndoKind : short {
  kUndoF1Phase = 7,
  kUndoF2Phase = 8,
  kUndoF1Base = 9,
  kUndoF2Base = 10,
  kUndoAddPoint = 11,
  kUndoDeletePoint = 12,
  kUndoDeleteAllPoints = 13,
  kUndoSymmetrize = 15,
  kUndoReference2D = 41,
  kUndoReference1DF1 = 51,
  kUndoReference1DF2 = 52,
};

// Kinds whose data live in a snapshot file of the work folder.
constexpr bool IsDataFileKind(int kind) {
  return kind == kUndoF1Phase || kind == kUndoF2Phase || kind == kUndoF1Base || kind == kUndoF2Base ||
         kind == kUndoSymmetrize;
}

}  // namespace velk::operations
