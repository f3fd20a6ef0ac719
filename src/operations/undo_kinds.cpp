#include "operations/undo_kinds.h"

namespace velk::operations {

std::string_view UndoCaption(int kind) {
  switch (kind) {
    case kUndoF1Phase: return "UnDo(F1 Phase Correction)";
    case kUndoF2Phase: return "UnDo(F2 Phase Correction)";
    case kUndoF1Base: return "UnDo(F1 Base Line Correction)";
    case kUndoF2Base: return "UnDo(F2 Base Line Correction)";
    case kUndoAddPoint: return "UnDo(Add Point)";
    case kUndoDeletePoint: return "UnDo(Delete Point)";
    case kUndoDeleteAllPoints: return "UnDo(Delete All Points)";
    case kUndoSymmetrize: return "UnDo(Symmetrize)";
    case kUndoReference2D: return "UnDo(2D Refernec Setting)";
    case kUndoReference1DF1: return "UnDo(F1-1D Refernec Setting)";
    case kUndoReference1DF2: return "UnDo(F2-1D Refernec Setting)";
    default: return "UnDo";
  }
}

}  // namespace velk::operations
