#pragma once
// "Change Display Area": the ends of the shown window in ppm or kHz, "Exchange" to turn an axis of
// the picture round, "Set Default" for the whole spectrum.
#include <QDialog>

#include "display/display_area.h"

class QLineEdit;
class QRadioButton;

namespace velk::gui {

class DisplayAreaDialog final : public QDialog {
  Q_OBJECT

 public:
  DisplayAreaDialog(const display::DisplayState& view, const model::Spectrum2D& s, QWidget* parent);
  // The ends as the dialog holds them when the user pressed OK.
  display::DisplayArea Area() const;

 private:
  void Show(const display::DisplayArea& area);
  void ChangeUnit();

  const model::Spectrum2D& spectrum_;
  QLineEdit* edits_[4] = {};
  QRadioButton* kHz_ = nullptr;
  display::AreaUnit shown_ = display::AreaUnit::Ppm;
};

}  // namespace velk::gui
