#include "gui/inadequate_menu.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "display/display_state.h"
#include "document/inadequate_commands.h"
#include "operations/inadequate.h"
#include "operations/inadequate_messages.h"
#include "operations/rearrange.h"

namespace velk::gui {
namespace {

namespace words = operations::inadequate_messages;

QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<int>(text.size())); }

// A window of the INADEQUATE commands: a title, the widgets given, a note, and two buttons.
class CommandWindow final : public QDialog {
 public:
  CommandWindow(const QString& title, const QString& note, const QString& accept, QWidget* parent)
      : QDialog(parent), layout_(new QVBoxLayout(this)) {
    setWindowTitle(title);
    auto* text = new QLabel(note, this);
    text->setWordWrap(true);
    text->setMinimumWidth(380);
    layout_->addWidget(text);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(accept, QDialogButtonBox::AcceptRole);
    buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout_->addWidget(buttons);
  }
  template <class W>
  W* Add(W* widget) {
    layout_->insertWidget(layout_->count() - 2, widget);
    return widget;
  }

 private:
  QVBoxLayout* layout_;
};

}  // namespace

InadequateMenu::InadequateMenu(QMenu& menu, document::Session& session, display::ToolBox& tools, SpectrumView& view,
                               platform::Prompt& prompt, std::function<bool()> busy)
    : QObject(&menu), session_(session), tools_(tools), view_(view), prompt_(prompt), busy_(std::move(busy)) {
  change_ = menu.addAction("Change Inadequate Spectrum", this, [this] { ChangeInadequateSpectrum(); });
  direction_ = menu.addAction("Direction of Slope 2 Line", this, [this] { SlopeDirection(); });
  extend_ = menu.addAction("Extend Folded Data", this, [this] { ExtendFoldedData(); });
  extend_->setStatusTip(Q(words::kExtendNote));
  connect(&menu, &QMenu::aboutToShow, this, &InadequateMenu::ShowState);
  ShowState();
}

void InadequateMenu::ShowState() {
  const model::Spectrum2D& s = session_.document.spectrum;
  const bool shown = view_.Shown();
  change_->setEnabled(shown);
  direction_->setVisible(shown && s.InadequateMode == 1);
  extend_->setEnabled(shown && s.InadequateMode == 1 && s.InadequateFull == 0);
}

bool InadequateMenu::MayStart() {
  display::DisplayState& v = session_.document.view;
  return view_.Shown() && !v.Painting && !(busy_ && busy_()) && tools_.Resolve(v);
}

void InadequateMenu::ChangeInadequateSpectrum() {
  if (!MayStart()) return;
  model::Spectrum2D& s = session_.document.spectrum;
  CommandWindow window(Q(words::kChangeTitle), Q(words::kChangeNote), "Execute", view_.window());
  auto* on = window.Add(new QRadioButton(Q(words::kModeOn), &window));
  auto* off = window.Add(new QRadioButton(Q(words::kModeOff), &window));
  (s.InadequateMode == 1 ? on : off)->setChecked(true);
  if (window.exec() != QDialog::Accepted) return;
  if (!operations::ChangeInadequateMode(s, on->isChecked() ? 1 : 0)) return;
  ShowState();
  view_.update();
}

void InadequateMenu::SlopeDirection() {
  if (!MayStart()) return;
  prompt_.Ask({"", std::string(words::kSlopeDirection), platform::Buttons::Ok, platform::Icon::Information, true});
  CommandWindow window(Q(words::kInvertTitle), QString(), "OK", view_.window());
  auto* f1 = window.Add(new QCheckBox("Invert F1 Axis", &window));
  auto* f2 = window.Add(new QCheckBox("Invert F2 Axis", &window));
  f1->setChecked(true);
  f2->setEnabled(false);
  if (window.exec() != QDialog::Accepted || !f1->isChecked()) return;
  document::Document& d = session_.document;
  operations::InvertSpectrum(d.spectrum, true, false);
  document::LoseCleanMark(d.undo);
  // The same region stays in view, turned round.
  std::swap(d.view.ViewF1Start, d.view.ViewF1End);
  view_.DataChanged();
}

void InadequateMenu::ExtendFoldedData() {
  if (!MayStart()) return;
  CommandWindow window(Q(words::kExtendTitle), Q(words::kExtendNote), "Execute", view_.window());
  if (window.exec() != QDialog::Accepted) return;
  document::Document& d = session_.document;
  const platform::Outcome out = document::ExtendFoldedDataOf(d, session_.run.folder);
  if (!out.ok()) {
    if (!out.message.empty()) prompt_.Ask(out.message);
    return;
  }
  ShowState();
  view_.DataChanged();
}

}  // namespace velk::gui
