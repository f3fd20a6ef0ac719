#pragma once
// The text editor for coded text (comments, labels, text objects, window expressions): a rich text
// control with the looks the codes know (bold, italic, underline, strike-out, super- and subscript,
// Greek, font, size, colour), and the same text in the bracket notation beside it, where it can be
// typed as well. What the person made goes back as RTF through the RTF reader into the codes.
#include <QDialog>
#include <optional>
#include <string>

#include "layout/rtf_text.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTextEdit;
class QToolButton;
class QFontComboBox;
class QDoubleSpinBox;

namespace velk::gui {

struct CodedTextResult {
  std::string internal;  // the internal codes
  std::string rtf;       // the same as RTF, for the records that keep both
};

class CodedTextEditor final : public QDialog {
  Q_OBJECT

 public:
  // The text in the internal form (or plain); the rich text, when the record keeps one, wins.
  CodedTextEditor(const QString& title, const std::string& text, const std::string& rtf, const layout::BaseFont& base,
                  QWidget* parent);

  CodedTextResult Result() const;
  QTextEdit* RichEdit() const { return rich_; }
  QPlainTextEdit* BracketEdit() const { return bracket_; }
  // Puts the bracket notation's text into the rich text control.
  void TakeBracket();

 private:
  void Load(const std::string& internal);
  void ShowBracket();
  void ToggleLook(int which, bool on);
  void ShowLookOfCursor();
  void ShowUndoCaption();

  layout::BaseFont base_;
  QTextEdit* rich_ = nullptr;
  QPlainTextEdit* bracket_ = nullptr;
  QToolButton* looks_[7] = {};
  QFontComboBox* font_ = nullptr;
  QDoubleSpinBox* size_ = nullptr;
  QPushButton* undo_ = nullptr;
  bool loading_ = false;
};

// Opens the editor; nothing when it was cancelled ("CANCEL").
std::optional<CodedTextResult> EditCodedText(QWidget* parent, const QString& title, const std::string& text,
                                             const std::string& rtf = {}, const layout::BaseFont& base = {});

}  // namespace velk::gui
