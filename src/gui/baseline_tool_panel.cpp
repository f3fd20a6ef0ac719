#include "gui/baseline_tool_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "gui/operation_tools.h"

namespace velk::gui {

namespace {
constexpr std::size_t kMostPoints = 1000;
}

BaselineToolPanel::BaselineToolPanel(OperationTools& tools, operations::BaselineTool& tool, QWidget* parent)
    : QWidget(parent), tools_(tools), tool_(tool) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(new QLabel("Set on as excluding Peaks:", this));
  add_ = new QPushButton("Add Point", this);
  remove_ = new QPushButton("Delete Point", this);
  for (QPushButton* b : {add_, remove_}) {
    b->setCheckable(true);
    b->setObjectName(b->text());
    row->addWidget(b);
  }
  connect(add_, &QPushButton::clicked, this, [this] { Choose(add_->isChecked() ? 1 : 0); });
  connect(remove_, &QPushButton::clicked, this, [this] { Choose(remove_->isChecked() ? -1 : 0); });
  removeAll_ = new QPushButton("Delete All Points", this);
  removeAll_->setObjectName("Delete All Points");
  connect(removeAll_, &QPushButton::clicked, this, [this] {
    if (tool_.DeleteAllPoints()) tools_.MarksChanged();
  });
  row->addWidget(removeAll_);
  count_ = new QLabel(this);
  row->addWidget(count_);
  row->addSpacing(12);
  row->addWidget(new QLabel("Ave.Point", this));
  ave_ = new QLineEdit(this);
  ave_->setObjectName("avePoint");
  ave_->setMaximumWidth(40);
  connect(ave_, &QLineEdit::editingFinished, this,
          [this] { ave_->setText(QString::fromStdString(tool_.SetAvePointText(ave_->text().toStdString()))); });
  row->addWidget(ave_);
  row->addStretch(1);
  for (const char* text : {"Preview", "Reset", "Fix", "Cancel"}) {
    auto* b = new QPushButton(text, this);
    b->setObjectName(text);
    row->addWidget(b);
    const std::string name = text;
    if (name == "Preview") connect(b, &QPushButton::clicked, &tools_, &OperationTools::Preview);
    if (name == "Reset") connect(b, &QPushButton::clicked, &tools_, &OperationTools::Reset);
    if (name == "Fix") connect(b, &QPushButton::clicked, &tools_, &OperationTools::Fix), fix_ = b;
    if (name == "Cancel") connect(b, &QPushButton::clicked, &tools_, &OperationTools::Cancel);
  }
  ave_->setText(QString::number(tool_.AvePoint()));
  connect(&tools_, &OperationTools::changed, this, &BaselineToolPanel::Show);
  Choose(1);  // ready to set points
}

void BaselineToolPanel::Choose(int toolCode) {
  tools_.State().ToolCode = static_cast<std::int16_t>(toolCode);
  Show();
}

void BaselineToolPanel::Show() {
  const std::size_t n = tool_.Points().size();
  // The add tool cannot be chosen with a full list, nor the delete tool with an empty one.
  if (n >= kMostPoints && tools_.State().ToolCode == 1) tools_.State().ToolCode = 0;
  if (n == 0 && tools_.State().ToolCode == -1) tools_.State().ToolCode = 0;
  add_->setEnabled(n < kMostPoints);
  remove_->setEnabled(n > 0);
  removeAll_->setEnabled(n > 0);
  add_->setChecked(tools_.State().ToolCode == 1);
  remove_->setChecked(tools_.State().ToolCode == -1);
  count_->setText(QString("%1 point%2").arg(n).arg(n == 1 ? "" : "s"));
  fix_->setEnabled(tool_.FixEnabled());
}

}  // namespace velk::gui
