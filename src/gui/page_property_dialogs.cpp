#include "gui/page_property_dialogs.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "layout/messages.h"
#include "layout/page_edit.h"

namespace velk::gui {
namespace {

QColor ColorOf(std::uint32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }
std::uint32_t WordOf(const QColor& c) {
  return static_cast<std::uint32_t>(c.red() | (c.green() << 8) | (c.blue() << 16));
}

// A button that shows a colour and lets the person choose another.
class ColorButton final : public QPushButton {
 public:
  ColorButton(std::uint32_t color, QWidget* parent) : QPushButton(parent), color_(color) {
    Show();
    connect(this, &QPushButton::clicked, this, [this] {
      const QColor chosen = QColorDialog::getColor(ColorOf(color_), this);
      if (chosen.isValid()) color_ = WordOf(chosen), Show();
    });
  }
  std::uint32_t color() const { return color_; }

 private:
  void Show() {
    const QColor c = ColorOf(color_);
    setText(c.name());
    setStyleSheet(QString("background: %1; color: %2;").arg(c.name(), c.lightness() < 128 ? "white" : "black"));
  }
  std::uint32_t color_;
};

QDoubleSpinBox* Millimetres(double value, double high, QWidget* parent) {
  auto* box = new QDoubleSpinBox(parent);
  box->setRange(0, high);
  box->setDecimals(1);
  box->setSingleStep(0.1);
  box->setSuffix(" mm");
  box->setValue(value);
  return box;
}

// The dialog with its form and the Ok and Cancel buttons.
struct FormDialog {
  QDialog dialog;
  QFormLayout* form;
  FormDialog(QWidget* parent, const QString& title) : dialog(parent) {
    dialog.setWindowTitle(title);
    auto* layout = new QVBoxLayout(&dialog);
    form = new QFormLayout;
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
  }
  bool Run() { return dialog.exec() == QDialog::Accepted; }
};

}  // namespace

bool EditArrowProperty(QWidget* parent, layout::LayoutLine& line) {
  FormDialog d(parent, "Property of Arrows");
  auto* kind = new QComboBox(&d.dialog);
  for (std::string_view name : layout::messages::kArrowKinds) kind->addItem(QString::fromUtf8(name.data(), name.size()));
  kind->setCurrentIndex(std::clamp<int>(line.StyleCode, 0, 15));
  auto* width = Millimetres(layout::MmOfLineUnits(line.Width), 99.9, &d.dialog);
  width->setToolTip("Input value of Line Width of Arrow in mm unit");
  const int heads = std::max(line.HeadLengthEnd, line.HeadLengthStart);
  auto* length = Millimetres(layout::MmOfLineUnits(heads), 99.9, &d.dialog);
  length->setToolTip("Input a value of Arrow length in mm unit");
  auto* style = new QComboBox(&d.dialog);
  for (std::string_view name : layout::messages::kLineTypes) style->addItem(QString::fromUtf8(name.data(), name.size()));
  style->setCurrentIndex(std::clamp<int>(line.LineType, 0, 9));
  auto* rod = new ColorButton(line.Color, &d.dialog);
  auto* fill = new ColorButton(line.FillColor, &d.dialog);
  d.form->addRow("Arrow", kind);
  d.form->addRow("Arrow Width", width);
  d.form->addRow("Arrow Length", length);
  d.form->addRow("Style", style);
  d.form->addRow("", new QLabel("effective in arrow 1-4 only", &d.dialog));
  d.form->addRow("Rod Color", rod);
  d.form->addRow("Fill Color", fill);
  d.form->addRow("", new QLabel("Fill Color is effective in case of  Arrow 9. - 12.", &d.dialog));
  if (!d.Run()) return false;
  layout::SetArrowKind(line, kind->currentIndex(), layout::LineUnitsOfMm(length->value()));
  line.Width = static_cast<std::int16_t>(std::max(1, layout::LineUnitsOfMm(width->value())));
  line.LineType = style->currentIndex();
  line.Color = rod->color();
  line.FillColor = fill->color();
  return true;
}

bool EditShapeProperty(QWidget* parent, layout::LayoutShape& shape, bool circle) {
  FormDialog d(parent, "Property of Circle/Oval/Rectangle");
  auto* border = new ColorButton(shape.BorderColor, &d.dialog);
  auto* filled = new QCheckBox("Fill", &d.dialog);
  filled->setChecked(shape.FillColor != layout::kNoFill);
  auto* fill = new ColorButton(shape.FillColor == layout::kNoFill ? 0xFFFFFF : shape.FillColor, &d.dialog);
  auto* width = Millimetres(layout::MmOfLineUnits(static_cast<int>(shape.LineWidth)), 99.9, &d.dialog);
  auto* ratio = new QDoubleSpinBox(&d.dialog);
  ratio->setRange(0.05, 20);
  ratio->setDecimals(2);
  ratio->setValue(shape.Ratio > 0 ? shape.Ratio : 1);
  d.form->addRow("Line Color", border);
  d.form->addRow(filled, fill);
  d.form->addRow("Line Width", width);
  if (circle) {
    d.form->addRow("Ratio (height / width)", ratio);
    d.form->addRow("", new QLabel("1.0 is Circle ", &d.dialog));
  }
  if (!d.Run()) return false;
  shape.BorderColor = border->color();
  shape.FillColor = filled->isChecked() ? fill->color() : layout::kNoFill;
  shape.LineWidth = static_cast<float>(std::max(1, layout::LineUnitsOfMm(width->value())));
  if (circle) layout::ApplyRatio(shape, ratio->value());
  return true;
}

bool EditFrameProperty(QWidget* parent, layout::PageFrame& frame, const QString& name) {
  FormDialog d(parent, name + " Back Ground and Frame");
  auto* shown = new QCheckBox("Print this frame", &d.dialog);
  shown->setChecked(frame.Shown);
  auto* filled = new QCheckBox("not Transparent", &d.dialog);
  filled->setChecked(frame.Filled);
  auto* background = new ColorButton(frame.Background, &d.dialog);
  auto* framed = new QCheckBox("with Frame", &d.dialog);
  framed->setChecked(frame.Framed);
  auto* line = new ColorButton(frame.LineColor, &d.dialog);
  auto* width = Millimetres(frame.LineWidth, 10, &d.dialog);
  d.form->addRow(shown);
  d.form->addRow(filled, background);
  d.form->addRow(framed, line);
  d.form->addRow("Frame Line Width", width);
  if (!d.Run()) return false;
  frame.Shown = shown->isChecked();
  frame.Filled = filled->isChecked();
  frame.Background = background->color();
  frame.Framed = framed->isChecked();
  frame.LineColor = line->color();
  frame.LineWidth = static_cast<float>(width->value());
  return true;
}

}  // namespace velk::gui
