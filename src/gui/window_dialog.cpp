#include "gui/window_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/coded_text_editor.h"
#include "layout/coded_text.h"
#include "layout/draw_coded_text.h"
#include "platform/qt/qt_surface.h"

namespace velk::gui {

namespace {

using processing::WindowField;


// The fields each window type shows, besides the trapezoid.
bool Shown(WindowField f, int type) {
  switch (f) {
    case WindowField::Broadening: return type == processing::kExponential;
    case WindowField::Start:
    case WindowField::End: return type == processing::kSineBell || type == processing::kHann || type == processing::kBlackmanHarris;
    case WindowField::GaussPeak:
    case WindowField::GaussFactor:
    case WindowField::GaussBroadening: return type == processing::kGaussian;
    default: return true;
  }
}

// The window curve of the axis over its points, from 0 to 1.
class CurvePicture final : public QWidget {
 public:
  CurvePicture(const document::FtWindow& state, QWidget* parent) : QWidget(parent), state_(state) {
    setMinimumSize(360, 140);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    p.setPen(QColor(200, 200, 200));
    const QRectF box = QRectF(rect()).adjusted(6, 6, -6, -6);
    p.drawRect(box);
    const processing::WindowCurve& w = state_.preview().window;
    const int n = static_cast<int>(state_.preview().fidRe.size());
    if (w.values.empty() || n < 2) return;
    float full = 0;
    for (int i = 0; i < n && i <= w.high(); ++i) full = std::max(full, std::abs(w.at(i)));
    if (!(full > 0)) return;
    QPolygonF line;
    for (int i = 0; i < n && i <= w.high(); ++i)
      line << QPointF(box.left() + box.width() * i / (n - 1), box.bottom() - box.height() * 0.9 * w.at(i) / full);
    p.setPen(QPen(QColor(220, 0, 0), 1));
    p.drawPolyline(line);
  }

 private:
  const document::FtWindow& state_;
};

// The coded text as it prints, on the dialog's background.
QPixmap CodedTextPicture(const std::string& text, const QColor& background) {
  const layout::TextFont font{"Sans Serif", 11};
  QImage scratch(1, 1, QImage::Format_ARGB32_Premultiplied);
  platform::Extent size;
  {
    QPainter painter(&scratch);
    platform::qt::QtSurface surface(painter, {1, 1});
    size = layout::MeasureCodedText(surface, text, font, 1.4);
  }
  QImage image(std::max(1, size.width + 8), std::max(1, size.height + 6), QImage::Format_ARGB32_Premultiplied);
  image.fill(background);
  {
    QPainter painter(&image);
    platform::qt::QtSurface surface(painter, {image.width(), image.height()});
    layout::DrawCodedText(surface, {4, 3, 1.4}, text, font, platform::kBlack);
  }
  return QPixmap::fromImage(image);
}

}  // namespace

WindowDialog::WindowDialog(document::FtWindow& state, std::function<void()> changed, QWidget* parent, Clock clock)
    : QDialog(parent),
      state_(state),
      editor_(state.settings().axis[state.view()].window),
      changed_(std::move(changed)) {
  const bool f2 = state.view() == model::F2;
  const int type = editor_.live().type;
  setWindowTitle(QString("Set Window Function(%1)%2")
                     .arg(QString::fromUtf8(processing::WindowName(type).data()))
                     .arg(f2 ? " (2D RW)" : " (2D CL)"));
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  type_ = new QComboBox(this);
  type_->setObjectName("type");
  for (int t = 0; t < 5; ++t) type_->addItem(QString::fromUtf8(processing::ExpressionTitle(t).data()));
  type_->setCurrentIndex(std::clamp(type, 0, 4));
  form->addRow("Widow Function:", type_);
  layout->addLayout(form);
  connect(type_, &QComboBox::currentIndexChanged, this, [this](int t) {
    editor_.SetType(static_cast<std::int16_t>(t));
    Changed();
  });

  auto* fieldsBox = new QWidget(this);
  auto* fieldsLayout = new QVBoxLayout(fieldsBox);
  fieldsLayout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(fieldsBox);
  const std::pair<WindowField, const char*> rows[] = {
      {WindowField::Broadening, "Broadening Factor(Hz):"},
      {WindowField::Start, "Region of Function(%): start"},
      {WindowField::End, "Region of Function(%): end"},
      {WindowField::GaussPeak, "Peak position (%)"},
      {WindowField::GaussFactor, "Factor of Gauss Function (Hz)"},
      {WindowField::GaussBroadening, "Broadening Factor (Hz) (this value is used as negative value for Gauss function)"},
      {WindowField::T1, "Trapezoid(%): T1"},
      {WindowField::T2, "Trapezoid(%): T2"},
      {WindowField::T3, "Trapezoid(%): T3"},
      {WindowField::T4, "Trapezoid(%): T4"}};
  for (const auto& [f, label] : rows) fieldsLayout->addWidget(AddField(f, label, clock));
  multiply_ = new QCheckBox("Multiply Trapezoid", this);
  multiply_->setToolTip("Multiply the Trapezoid Function");
  connect(multiply_, &QCheckBox::toggled, this, [this](bool on) {
    editor_.SetMultiplyTrapezoid(on);
    Changed();
  });
  layout->addWidget(multiply_);

  // The formula of the type, as the user may have reworded it.
  expression_ = new QLabel(this);
  expression_->setObjectName("expression");
  expression_->setWordWrap(true);
  expression_->setFrameShape(QFrame::StyledPanel);
  expression_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(expression_);
  auto* wording = new QHBoxLayout;
  auto* initial = new QPushButton("Set Initial Expression", this);
  auto* edit = new QPushButton("Edit Function Expression", this);
  connect(initial, &QPushButton::clicked, this, [this] {
    processing::SetInitialExpression(state_.expressions(), editor_.live().type);
    ShowValues();
  });
  connect(edit, &QPushButton::clicked, this, &WindowDialog::EditExpression);
  wording->addWidget(initial);
  wording->addWidget(edit);
  wording->addStretch();
  layout->addLayout(wording);

  curve_ = new CurvePicture(state_, this);
  layout->addWidget(curve_, 1);
  auto* buttons = new QHBoxLayout;
  auto* fix = new QPushButton("Fix", this);
  fix->setObjectName("Fix");
  fix->setToolTip("Fix the change of function parameter");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Cancel");
  cancel->setToolTip("Discard change of function parameter");
  connect(fix, &QPushButton::clicked, this, [this] {
    editor_.Fix();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &WindowDialog::reject);
  buttons->addStretch();
  buttons->addWidget(fix);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  ShowValues();
}

QWidget* WindowDialog::AddField(WindowField f, const QString& label, Clock clock) {
  auto* row = new QWidget(this);
  auto* h = new QHBoxLayout(row);
  h->setContentsMargins(0, 0, 0, 0);
  auto* text = new QLabel(label, row);
  text->setWordWrap(true);
  h->addWidget(text, 1);
  auto* edit = new QLineEdit(row);
  edit->setObjectName(label);
  edit->setMaximumWidth(80);
  h->addWidget(edit);
  connect(edit, &QLineEdit::editingFinished, this, [this, f, edit] { Type(f, edit->text()); });
  for (int direction : {-1, +1}) {
    auto* step = new StepLabel(direction < 0 ? "Down" : "Up", clock, row);
    step->setObjectName(label + (direction < 0 ? " down" : " up"));
    connect(step, &StepLabel::stepped, this, [this, f, direction](int count) {
      for (int i = 0; i < count; ++i) editor_.Step(f, direction);
      Changed();
    });
    h->addWidget(step);
  }
  fields_.push_back({f, edit, row});
  return row;
}

void WindowDialog::Type(WindowField field, const QString& text) {
  bool ok = false;
  const float value = text.toFloat(&ok);
  if (ok) editor_.Set(field, value);
  Changed();
}

void WindowDialog::reject() {
  editor_.Cancel();
  Changed();
  QDialog::reject();
}

void WindowDialog::Changed() {
  state_.Refresh();
  if (changed_) changed_();
  ShowValues();
}

void WindowDialog::ShowValues() {
  const int type = editor_.live().type;
  for (const Field& f : fields_) {
    f.row->setVisible(Shown(f.field, type));
    f.edit->setText(QString::number(editor_.Value(f.field)));
  }
  {
    const QSignalBlocker quiet(type_);
    type_->setCurrentIndex(std::clamp(type, 0, 4));
  }
  {
    const QSignalBlocker quiet(multiply_);
    multiply_->setChecked(editor_.live().multiTrape[static_cast<std::size_t>(std::clamp(type, 0, 4))] != 0);
  }
  // The expression in its codes, drawn as it prints.
  const std::string& text = state_.expressions().current[static_cast<std::size_t>(std::clamp(type, 0, 4))];
  expression_->setPixmap(CodedTextPicture(text, expression_->palette().color(QPalette::Window)));
  expression_->setToolTip(QString::fromStdString(layout::StripCodes(text).first));
  curve_->update();
}

void WindowDialog::EditExpression() {
  const int type = std::clamp<int>(editor_.live().type, 0, 4);
  std::string& current = state_.expressions().current[static_cast<std::size_t>(type)];
  const auto typed = EditCodedText(this, QString::fromUtf8(processing::ExpressionTitle(type).data()), current);
  if (!typed) return;  // "CANCEL"
  current = typed->internal;
  ShowValues();
}

}  // namespace velk::gui
