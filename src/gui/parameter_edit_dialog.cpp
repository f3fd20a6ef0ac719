#include "gui/parameter_edit_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/qt/qt_prompt.h"

namespace velk::gui {
namespace {

const std::vector<platform::FileFilter> kParameterFiles = {{"Parameter File", "*.prt"}};

QListWidget* ListOf(const layout::ParameterList& list, QWidget* parent) {
  auto* widget = new QListWidget(parent);
  widget->setFont(QFont("Monospace"));
  widget->setMinimumWidth(260);
  for (const layout::ParameterLine& line : list) widget->addItem(QString::fromStdString(layout::FormatParameterLine(line)));
  return widget;
}

QPushButton* Button(const QString& text, QWidget* parent, QLayout* into) {
  auto* button = new QPushButton(text, parent);
  button->setAutoDefault(false);
  into->addWidget(button);
  return button;
}

void Tell(QWidget* parent, const platform::Outcome& outcome) {
  if (outcome.ok()) return;
  platform::qt::QtPrompt(parent).Ask(outcome.message);
}

}  // namespace

ParameterEditDialog::ParameterEditDialog(layout::ParameterList list, ParameterEditSources sources, QWidget* parent)
    : QDialog(parent), edit_(layout::StartParameterListEdit(std::move(list))), sources_(std::move(sources)) {
  setWindowTitle("Edit Parameters");
  offered_ = ListOf(sources_.offered, this);
  printed_ = ListOf({}, this);

  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel("Select Parameter", this), 0, 0);
  grid->addWidget(new QLabel("Parameter for Print", this), 0, 2);
  grid->addWidget(offered_, 1, 0);
  grid->addWidget(printed_, 1, 2);

  auto* across = new QVBoxLayout;
  across->addStretch();
  connect(Button("Add above=>", this, across), &QPushButton::clicked, this, [this] { Add(true); });
  connect(Button("Add below=>", this, across), &QPushButton::clicked, this, [this] { Add(false); });
  across->addStretch();
  grid->addLayout(across, 1, 1);

  auto* order = new QVBoxLayout;
  connect(Button("Move up", this, order), &QPushButton::clicked, this, [this] { Run(layout::MoveParameterUp); });
  connect(Button("Move Down", this, order), &QPushButton::clicked, this, [this] { Run(layout::MoveParameterDown); });
  connect(Button("Delete", this, order), &QPushButton::clicked, this, [this] { Run(layout::DeleteParameter); });
  connect(Button("UnDo", this, order), &QPushButton::clicked, this, [this] { Run(layout::UndoParameterEdit); });
  order->addStretch();
  grid->addLayout(order, 1, 3);

  auto* files = new QHBoxLayout;
  connect(Button("Read Parameter File", this, files), &QPushButton::clicked, this, [this] { ReadFile(); });
  connect(Button("Save as Parameter File", this, files), &QPushButton::clicked, this, [this] { SaveFile(); });
  connect(Button("LoadPublicParameter", this, files), &QPushButton::clicked, this, [this] {
    layout::ReplaceParameterList(edit_, layout::DefaultParameterList());
    Show();
  });
  connect(Button("LoadParameter", this, files), &QPushButton::clicked, this, [this] {
    layout::ReplaceParameterList(edit_, sources_.printed);
    Show();
  });
  files->addStretch();
  grid->addLayout(files, 2, 0, 1, 4);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  grid->addWidget(buttons, 3, 0, 1, 4);

  connect(printed_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) edit_.selected = static_cast<std::size_t>(row);
  });
  connect(offered_, &QListWidget::itemDoubleClicked, this, [this] { Add(false); });
  Show();
  resize(760, 520);
}

void ParameterEditDialog::Run(void (*rule)(layout::ParameterListEdit&)) {
  rule(edit_);
  Show();
}

void ParameterEditDialog::Add(bool above) {
  const int row = offered_->currentRow();
  if (row < 0 || row >= static_cast<int>(sources_.offered.size())) return;
  const layout::ParameterLine& line = sources_.offered[static_cast<std::size_t>(row)];
  above ? layout::AddParameterAbove(edit_, line) : layout::AddParameterBelow(edit_, line);
  Show();
}

void ParameterEditDialog::ReadFile() {
  platform::qt::QtPrompt prompt(this);
  prompt.SetFolder(QString::fromStdString(sources_.folder.string()));
  const auto name = prompt.ChooseFile("Read Parameter File", kParameterFiles, false);
  if (!name) return;
  layout::ParameterList list;
  const platform::Outcome read = layout::ReadParaFile(*name, sources_.folder, list);
  if (!read.ok()) return Tell(this, read);
  layout::ReplaceParameterList(edit_, std::move(list));
  Show();
}

void ParameterEditDialog::SaveFile() {
  platform::qt::QtPrompt prompt(this);
  prompt.SetFolder(QString::fromStdString(sources_.folder.string()));
  const auto name = prompt.ChooseFile("Save as Parameter File", kParameterFiles, true);
  if (name) Tell(this, layout::WriteParaFile(*name, sources_.folder, edit_.list));
}

void ParameterEditDialog::Show() {
  const QSignalBlocker quiet(printed_);
  printed_->clear();
  for (const layout::ParameterLine& line : edit_.list)
    printed_->addItem(QString::fromStdString(layout::FormatParameterLine(line)));
  if (edit_.selected && *edit_.selected < edit_.list.size()) printed_->setCurrentRow(static_cast<int>(*edit_.selected));
}

void ParameterEditDialog::reject() {
  if (const auto question = layout::CloseQuestion(edit_))
    if (platform::qt::QtPrompt(this).Ask(*question) != platform::Answer::Yes) return;
  QDialog::reject();
}

std::optional<layout::ParameterList> EditParameterList(QWidget* parent, const layout::ParameterList& list,
                                                       const ParameterEditSources& sources) {
  ParameterEditDialog dialog(list, sources, parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.List();
}

}  // namespace velk::gui
