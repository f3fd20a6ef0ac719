#include "gui/coded_text_editor.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "layout/bracket_text.h"
#include "layout/styled_runs.h"
#include "layout/undo_captions.h"

namespace velk::gui {
namespace {

// The character format's mark for the Symbol font's letters.
constexpr int kGreekProperty = QTextFormat::UserProperty + 1;

enum Look { kBold, kItalic, kUnderline, kStrike, kSuper, kSub, kGreek };

QColor ColorOf(std::uint32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }
std::uint32_t WordOf(const QColor& c) {
  return static_cast<std::uint32_t>(c.red() | (c.green() << 8) | (c.blue() << 16));
}

layout::RunStyle StyleOf(const QTextCharFormat& f, const layout::BaseFont& base) {
  layout::RunStyle s;
  s.bold = f.fontWeight() >= QFont::Bold;
  s.italic = f.fontItalic();
  s.underline = f.fontUnderline();
  s.strike = f.fontStrikeOut();
  s.script = f.verticalAlignment() == QTextCharFormat::AlignSuperScript ? 1
             : f.verticalAlignment() == QTextCharFormat::AlignSubScript ? -1
                                                                        : 0;
  s.greek = f.boolProperty(kGreekProperty);
  const QStringList families = f.fontFamilies().toStringList();
  if (!families.isEmpty() && families.front().toStdString() != base.name) s.font = families.front().toStdString();
  if (f.fontPointSize() > 0 && std::abs(f.fontPointSize() - base.points) > 0.01) s.points = f.fontPointSize();
  if (f.hasProperty(QTextFormat::ForegroundBrush) && WordOf(f.foreground().color()) != base.color)
    s.color = WordOf(f.foreground().color());
  return s;
}

QTextCharFormat FormatOf(const layout::RunStyle& s) {
  QTextCharFormat f;
  f.setFontWeight(s.bold ? QFont::Bold : QFont::Normal);
  f.setFontItalic(s.italic);
  f.setFontUnderline(s.underline);
  f.setFontStrikeOut(s.strike);
  f.setVerticalAlignment(s.script > 0   ? QTextCharFormat::AlignSuperScript
                         : s.script < 0 ? QTextCharFormat::AlignSubScript
                                        : QTextCharFormat::AlignNormal);
  if (s.greek) f.setProperty(kGreekProperty, true);
  if (!s.font.empty()) f.setFontFamilies(QStringList{QString::fromStdString(s.font)});
  if (s.points > 0) f.setFontPointSize(s.points);
  if (s.color) f.setForeground(ColorOf(*s.color));
  return f;
}

std::vector<layout::StyledRun> RunsOf(const QTextDocument& doc, const layout::BaseFont& base) {
  std::vector<layout::StyledRun> runs;
  const auto add = [&](std::string text, const layout::RunStyle& style) {
    if (!runs.empty() && runs.back().style == style) {
      runs.back().text += text;
    } else {
      runs.push_back({std::move(text), style});
    }
  };
  for (QTextBlock block = doc.begin(); block.isValid(); block = block.next()) {
    // A line break takes the look of the line it opens, so that a look ends with its line.
    if (block != doc.begin())
      add("\n", block.begin().atEnd() ? (runs.empty() ? layout::RunStyle{} : runs.back().style)
                                      : StyleOf(block.begin().fragment().charFormat(), base));
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      QString text = it.fragment().text();
      text.replace(QChar::LineSeparator, '\n').replace(QChar::Nbsp, ' ');
      add(text.toStdString(), StyleOf(it.fragment().charFormat(), base));
    }
  }
  return runs;
}

}  // namespace

CodedTextEditor::CodedTextEditor(const QString& title, const std::string& text, const std::string& rtf,
                                 const layout::BaseFont& base, QWidget* parent)
    : QDialog(parent), base_(base) {
  setWindowTitle(title);
  setModal(true);
  auto* layout = new QVBoxLayout(this);

  auto* tools = new QHBoxLayout;
  const char* names[] = {"B", "I", "U", "S", "x²", "x₂", "αβ"};
  const char* tips[] = {"Bold", "Italic", "Underline", "Strike-out", "Superscript", "Subscript", "Greek (Symbol font)"};
  for (int k = 0; k < 7; ++k) {
    looks_[k] = new QToolButton(this);
    looks_[k]->setText(names[k]);
    looks_[k]->setToolTip(tips[k]);
    looks_[k]->setCheckable(true);
    looks_[k]->setMinimumWidth(30);
    connect(looks_[k], &QToolButton::clicked, this, [this, k](bool on) { ToggleLook(k, on); });
    tools->addWidget(looks_[k]);
  }
  QFont bold = looks_[kBold]->font();
  bold.setBold(true);
  looks_[kBold]->setFont(bold);
  font_ = new QFontComboBox(this);
  font_->setCurrentFont(QFont(QString::fromStdString(base.name)));
  connect(font_, &QFontComboBox::currentFontChanged, this, [this](const QFont& f) {
    if (loading_) return;
    QTextCharFormat format;
    format.setFontFamilies(QStringList{f.family()});
    rich_->mergeCurrentCharFormat(format);
    rich_->setFocus();
  });
  size_ = new QDoubleSpinBox(this);
  size_->setRange(4, 96);
  size_->setDecimals(1);
  size_->setSuffix(" pt");
  size_->setValue(base.points);
  connect(size_, &QDoubleSpinBox::valueChanged, this, [this](double points) {
    if (loading_) return;
    QTextCharFormat format;
    format.setFontPointSize(points);
    rich_->mergeCurrentCharFormat(format);
  });
  auto* color = new QPushButton("Colour...", this);
  connect(color, &QPushButton::clicked, this, [this] {
    const QColor chosen = QColorDialog::getColor(rich_->currentCharFormat().foreground().color(), this, "Colour");
    if (!chosen.isValid()) return;
    QTextCharFormat format;
    format.setForeground(chosen);
    rich_->mergeCurrentCharFormat(format);
  });
  tools->addWidget(font_, 1);
  tools->addWidget(size_);
  tools->addWidget(color);
  layout->addLayout(tools);

  rich_ = new QTextEdit(this);
  rich_->setObjectName("richText");
  rich_->setAcceptRichText(false);  // pasted text comes as text; looks are set with the buttons
  QFont shown(QString::fromStdString(base.name));
  shown.setPointSizeF(base.points);
  rich_->document()->setDefaultFont(shown);
  rich_->setMinimumSize(460, 140);
  layout->addWidget(rich_, 1);

  layout->addWidget(new QLabel("Bracket notation:", this));
  bracket_ = new QPlainTextEdit(this);
  bracket_->setObjectName("bracketText");
  bracket_->setMaximumHeight(70);
  layout->addWidget(bracket_);
  auto* note = new QLabel(
      "\\b( ) bold   \\i( ) italic   \\u( ) underline   \\s( ) strike-out   \\+( ) superscript   \\-( ) subscript\n"
      "\\g( ) Greek   \\f:Font name( ) font   \\p12( ) size   \\cFF( ) colour (blue-green-red hex)   \\\\ backslash",
      this);
  note->setStyleSheet("color: #555;");
  auto* take = new QPushButton("Use Bracket Text", this);
  connect(take, &QPushButton::clicked, this, [this] { TakeBracket(); });
  auto* noteRow = new QHBoxLayout;
  noteRow->addWidget(note, 1);
  noteRow->addWidget(take, 0, Qt::AlignTop);
  layout->addLayout(noteRow);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  undo_ = buttons->addButton("UnDo", QDialogButtonBox::ActionRole);
  connect(undo_, &QPushButton::clicked, rich_, &QTextEdit::undo);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);

  connect(rich_, &QTextEdit::textChanged, this, [this] {
    if (loading_) return;
    ShowBracket();
    ShowUndoCaption();
  });
  connect(rich_, &QTextEdit::cursorPositionChanged, this, [this] { ShowLookOfCursor(); });
  // Letters typed into a Greek run are shown as the Greek letters they print as.
  connect(rich_->document(), &QTextDocument::contentsChange, this, [this](int at, int, int added) {
    if (loading_ || added <= 0) return;
    QTextCursor c(rich_->document());
    for (int k = at; k < at + added; ++k) {
      c.setPosition(k);
      c.setPosition(k + 1, QTextCursor::KeepAnchor);
      if (!c.charFormat().boolProperty(kGreekProperty)) continue;
      const QString letter = c.selectedText();
      const QString greek = QString::fromStdString(layout::GreekFromLatin(letter.toStdString()));
      if (greek == letter) continue;
      loading_ = true;
      c.insertText(greek, c.charFormat());
      loading_ = false;
    }
  });

  Load(rtf.empty() ? text : layout::InternalFromRtf(rtf, base_));
  ShowUndoCaption();
}

void CodedTextEditor::Load(const std::string& internal) {
  loading_ = true;
  rich_->clear();
  QTextCursor cursor(rich_->document());
  for (const layout::StyledRun& run : layout::RunsFromInternal(internal)) {
    const QStringList lines = QString::fromStdString(run.text).split('\n');
    for (int k = 0; k < lines.size(); ++k) {
      if (k > 0) cursor.insertBlock();
      cursor.insertText(lines[k], FormatOf(run.style));
    }
  }
  rich_->document()->clearUndoRedoStacks();
  loading_ = false;
  ShowBracket();
  ShowLookOfCursor();
}

CodedTextResult CodedTextEditor::Result() const {
  const std::string rtf = layout::RtfFromRuns(RunsOf(*rich_->document(), base_), base_);
  return {layout::InternalFromRtf(rtf, base_), rtf};
}

void CodedTextEditor::ShowBracket() {
  const auto runs = RunsOf(*rich_->document(), base_);
  QString bracket = QString::fromStdString(layout::BracketFromInternal(layout::NestedInternalFromRuns(runs)));
  bracket.remove('\r');
  const QSignalBlocker quiet(bracket_);
  bracket_->setPlainText(bracket);
}

void CodedTextEditor::TakeBracket() {
  QString typed = bracket_->toPlainText();
  typed.replace("\n", "\r\n");
  Load(layout::InternalFromBracket(typed.toStdString()));
  ShowUndoCaption();
}

void CodedTextEditor::ToggleLook(int which, bool on) {
  QTextCursor cursor = rich_->textCursor();
  QTextCharFormat format;
  switch (which) {
    case kBold: format.setFontWeight(on ? QFont::Bold : QFont::Normal); break;
    case kItalic: format.setFontItalic(on); break;
    case kUnderline: format.setFontUnderline(on); break;
    case kStrike: format.setFontStrikeOut(on); break;
    case kSuper:
    case kSub: {
      const auto script = which == kSuper ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript;
      format.setVerticalAlignment(on ? script : QTextCharFormat::AlignNormal);
      looks_[which == kSuper ? kSub : kSuper]->setChecked(false);
      break;
    }
    case kGreek:
      format.setProperty(kGreekProperty, on);
      if (cursor.hasSelection()) {
        // The selected letters change into what they print as.
        const std::string text = cursor.selectedText().toStdString();
        const std::string changed = on ? layout::GreekFromLatin(text) : layout::LatinFromGreek(text);
        QTextCharFormat look = cursor.charFormat();
        look.setProperty(kGreekProperty, on);
        loading_ = true;
        cursor.insertText(QString::fromStdString(changed), look);
        loading_ = false;
        ShowBracket();
        ShowUndoCaption();
        return;
      }
      break;
  }
  rich_->mergeCurrentCharFormat(format);
  rich_->setFocus();
}

void CodedTextEditor::ShowLookOfCursor() {
  const layout::RunStyle s = StyleOf(rich_->currentCharFormat(), base_);
  const bool states[7] = {s.bold, s.italic, s.underline, s.strike, s.script > 0, s.script < 0, s.greek};
  for (int k = 0; k < 7; ++k) looks_[k]->setChecked(states[k]);
  loading_ = true;
  font_->setCurrentFont(QFont(QString::fromStdString(s.font.empty() ? base_.name : s.font)));
  size_->setValue(s.points > 0 ? s.points : base_.points);
  loading_ = false;
}

void CodedTextEditor::ShowUndoCaption() {
  const int steps = rich_->document()->availableUndoSteps();
  undo_->setText(QString::fromUtf8(layout::TextEditorUndoCaption(steps).data()));
  undo_->setEnabled(steps > 0);
}

std::optional<CodedTextResult> EditCodedText(QWidget* parent, const QString& title, const std::string& text,
                                             const std::string& rtf, const layout::BaseFont& base) {
  CodedTextEditor editor(title, text, rtf, base, parent);
  if (editor.exec() != QDialog::Accepted) return std::nullopt;
  return editor.Result();
}

}  // namespace velk::gui
