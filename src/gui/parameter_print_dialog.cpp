#include "gui/parameter_print_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "core/data_log.h"
#include "gui/coded_text_editor.h"
#include "platform/qt/qt_prompt.h"

namespace velk::gui {
namespace {

using layout::ParameterListSource;

QPushButton* Button(const QString& text, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setAutoDefault(false);
  return button;
}

// A parameter file that can't be read: logged under its routine's tag and told.
void Report(const document::Session& session, platform::Prompt& prompt, const platform::Outcome& failure,
            const std::filesystem::path& file) {
  core::WriteLog(session.log, failure.message.title, file.string());
  prompt.Ask(failure.message);
}

QString FontText(const layout::TextFont& font) {
  QString text = QString("%1, %2 pt").arg(QString::fromStdString(font.name)).arg(font.points);
  if (font.bold) text += ", bold";
  if (font.italic) text += ", italic";
  return text;
}

}  // namespace

ParameterPrintDialog::ParameterPrintDialog(layout::ParameterPrintPage page, ParameterEditSources sources, QWidget* parent)
    : QDialog(parent), page_(std::move(page)), sources_(std::move(sources)) {
  setWindowTitle("Parameter Print");
  auto* layout = new QVBoxLayout(this);

  auto* lists = new QGroupBox("Parameter List", this);
  auto* grid = new QGridLayout(lists);
  source_ = new QButtonGroup(this);
  const std::pair<const char*, ParameterListSource> kinds[] = {{"Use File", ParameterListSource::File},
                                                               {"Use List", ParameterListSource::List},
                                                               {"Use Default List", ParameterListSource::Default}};
  for (int row = 0; const auto& [text, kind] : kinds) {
    auto* radio = new QRadioButton(text, lists);
    source_->addButton(radio, static_cast<int>(kind));
    grid->addWidget(radio, row++, 0);
  }
  QPushButton* setFile = Button("Set Parameter File", lists);
  QPushButton* editList = Button("Edit Parameter List", lists);
  grid->addWidget(setFile, 0, 1);
  grid->addWidget(editList, 1, 1);
  file_ = new QLabel(lists);
  file_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  file_->setMinimumWidth(220);
  grid->addWidget(file_, 0, 2);
  grid->setColumnStretch(2, 1);
  layout->addWidget(lists);
  connect(setFile, &QPushButton::clicked, this, [this] { ChooseFile(); });
  connect(editList, &QPushButton::clicked, this, [this] { EditList(); });
  connect(source_, &QButtonGroup::idClicked, this, [this](int id) {
    page_.printed.choice.source = static_cast<ParameterListSource>(id);
    // A list never edited starts as the one printed now, not empty.
    if (page_.printed.choice.source == ParameterListSource::List && page_.printed.choice.list.empty())
      page_.printed.choice.list = sources_.printed;
    // "Use File" without a file asks for one at once.
    if (page_.printed.choice.source == ParameterListSource::File && page_.printed.choice.file.empty()) ChooseFile();
    Show();
  });

  auto* look = new QGroupBox("Parameter Block", this);
  auto* form = new QGridLayout(look);
  form->addWidget(new QLabel("Position of Decimal point", look), 0, 0);
  column_ = new QSpinBox(look);
  column_->setRange(layout::kSmallestDecimalColumn, layout::kLargestDecimalColumn);
  column_->setValue(page_.printed.choice.decimalColumn);
  form->addWidget(column_, 0, 1);
  form->addWidget(new QLabel("th charactor (Default is 25th)", look), 0, 2);
  connect(column_, &QSpinBox::valueChanged, this, [this](int v) { page_.printed.choice.decimalColumn = v; });
  QPushButton* font = Button("Font...", look);
  font_ = new QLabel(look);
  form->addWidget(new QLabel("Font", look), 1, 0);
  form->addWidget(font, 1, 1);
  form->addWidget(font_, 1, 2);
  connect(font, &QPushButton::clicked, this, [this] { ChooseFont(); });
  form->addWidget(new QLabel("Back Ground", look), 2, 0);
  filled_ = new QCheckBox("not Transparent", look);
  framed_ = new QCheckBox("with Frame", look);
  filled_->setChecked(page_.frame.Filled);
  framed_->setChecked(page_.frame.Framed);
  form->addWidget(filled_, 2, 1);
  form->addWidget(framed_, 2, 2);
  connect(filled_, &QCheckBox::toggled, this, [this](bool on) { page_.frame.Filled = on; });
  connect(framed_, &QCheckBox::toggled, this, [this](bool on) { page_.frame.Framed = on; });
  form->setColumnStretch(3, 1);
  layout->addWidget(look);

  auto* data = new QGroupBox("Data Set", this);
  auto* texts = new QHBoxLayout(data);
  QPushButton* sample = Button("Edit Sample ID", data);
  QPushButton* comment = Button("Edit Comment", data);
  texts->addWidget(sample);
  texts->addWidget(comment);
  texts->addStretch();
  layout->addWidget(data);
  connect(sample, &QPushButton::clicked, this, [this] {
    bool ok = false;
    const QString typed = QInputDialog::getText(this, "Edit Sample ID", "Sample ID:", QLineEdit::Normal,
                                                QString::fromStdString(page_.sampleId), &ok);
    if (ok) page_.sampleId = typed.toStdString();
  });
  connect(comment, &QPushButton::clicked, this, [this] {
    const auto typed = EditCodedText(this, "Edit Comment", page_.comment, page_.commentRtf, {"Sans Serif", 12, 0});
    if (typed) page_.comment = typed->internal, page_.commentRtf = typed->rtf;
  });

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  Show();
}

void ParameterPrintDialog::SetFile(const std::filesystem::path& file) {
  page_.printed.choice.file = file;
  page_.printed.choice.source = ParameterListSource::File;
  Show();
}

void ParameterPrintDialog::ChooseFile() {
  platform::qt::QtPrompt prompt(this);
  prompt.SetFolder(QString::fromStdString(sources_.folder.string()));
  const auto name = prompt.ChooseFile("Select Parameter File for printing parameter", {{"Parameter File", "*.prt"}}, false);
  if (name) return SetFile(*name);
  // Nothing chosen: "Use File" without a file stays unchosen.
  if (page_.printed.choice.file.empty() && page_.printed.choice.source == ParameterListSource::File)
    page_.printed.choice.source = ParameterListSource::Default;
  Show();
}

void ParameterPrintDialog::EditList() {
  layout::ParameterPrint& choice = page_.printed.choice;
  // A list never edited starts as the one printed now.
  const layout::ParameterList& start = choice.list.empty() ? sources_.printed : choice.list;
  if (const auto list = EditParameterList(this, start, sources_)) {
    choice.list = *list;
    choice.source = ParameterListSource::List;
  }
  Show();
}

void ParameterPrintDialog::ChooseFont() {
  layout::TextFont& font = page_.printed.choice.font;
  QFont start(QString::fromStdString(font.name));
  start.setPointSizeF(font.points);
  start.setBold(font.bold);
  start.setItalic(font.italic);
  bool ok = false;
  const QFont chosen = QFontDialog::getFont(&ok, start, this, "Parameter Font");
  if (!ok) return;
  font.name = chosen.family().toStdString();
  font.points = chosen.pointSizeF() > 0 ? chosen.pointSizeF() : font.points;
  font.bold = chosen.bold();
  font.italic = chosen.italic();
  Show();
}

void ParameterPrintDialog::Show() {
  const layout::ParameterPrint& choice = page_.printed.choice;
  source_->button(static_cast<int>(choice.source))->setChecked(true);
  file_->setText(choice.file.empty() ? QString("(none chosen)") : QString::fromStdString(choice.file.filename().string()));
  file_->setToolTip(QString::fromStdString(choice.file.string()));
  font_->setText(FontText(choice.font));
}

ParameterEditSources SessionParameterSources(const document::Session& session, const layout::ParameterList& printed) {
  return {layout::OfferedParameters({session.folders.config, session.folders.data}), printed,
          layout::ParameterFolder(session.settings2D, session.folders.config)};
}

layout::PrintedParameters SessionParameters(const document::Session& session, platform::Prompt& prompt) {
  platform::Outcome failure;
  layout::PrintedParameters printed = layout::PrintedParametersFromSettings(
      session.settings2D, layout::ParameterFolder(session.settings2D, session.folders.config), &failure);
  if (!failure.ok()) Report(session, prompt, failure, printed.choice.file);
  return printed;
}

bool EditParameterPrint(QWidget* parent, document::Session& session, layout::PrintedParameters& printed,
                        layout::EditedPage& page, layout::PageUndo& undo, platform::Prompt& prompt) {
  model::Spectrum2D& spectrum = session.document.spectrum;
  layout::ParameterPrintPage before = layout::ParameterPrintPageOf(printed, page, spectrum);
  ParameterPrintDialog dialog(before, SessionParameterSources(session, printed.list), parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  const layout::ParameterPrintPage& after = dialog.Result();
  layout::PrintedParameters chosen = printed;
  const platform::Outcome read = layout::ApplyParameterPrint(
      after.printed.choice, layout::ParameterFolder(session.settings2D, session.folders.config), chosen);
  if (!read.ok()) {
    Report(session, prompt, read, after.printed.choice.file);
    return false;
  }
  if (chosen.choice == printed.choice && chosen.list == printed.list && after.frame == before.frame &&
      after.sampleId == before.sampleId && after.comment == before.comment)
    return false;
  undo.Push(std::make_unique<layout::ParameterPrintCommand>(printed, session.settings2D, spectrum, std::move(before)));
  printed = std::move(chosen);
  layout::StoreParameterPrint(printed.choice, session.settings2D);
  page.frames[layout::FrameKind::Parameter] = after.frame;
  spectrum.texts.sampleId = after.sampleId;
  spectrum.comment = after.comment;
  spectrum.commentRtf = after.commentRtf;
  return true;
}

}  // namespace velk::gui
