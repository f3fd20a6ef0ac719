#pragma once
// "Change Contour": lines or filled contours, the number of stages, the spacing of the levels and,
// for phase-sensitive data, the power display; the altitudes that result, listed as they change.
// "Preview" shows the values without closing, "Reset" brings back those of the opening, "Cancel"
// leaves everything as it was.
#include <QDialog>
#include <functional>

#include "display/contour.h"

class QButtonGroup;
class QComboBox;
class QListWidget;

namespace velk::gui {

class ContourDialog final : public QDialog {
  Q_OBJECT

 public:
  // `altitudes` gives the level table of a setting as the user reads it (fractions of full scale);
  // `powerAllowed`: the class and the data allow the power display.
  ContourDialog(const display::ContourSetting& setting, bool powerAllowed,
                std::function<display::LevelTable(const display::ContourSetting&)> altitudes, QWidget* parent);
  display::ContourSetting Setting() const;
  void reject() override;

 signals:
  void preview(const display::ContourSetting& setting);

 private:
  void Show(const display::ContourSetting& setting);
  void ListAltitudes();

  const display::ContourSetting opening_;
  std::function<display::LevelTable(const display::ContourSetting&)> altitudes_;
  QButtonGroup* mode_ = nullptr;
  QButtonGroup* power_ = nullptr;
  QComboBox* steps_ = nullptr;
  QComboBox* spacing_ = nullptr;
  QListWidget* list_ = nullptr;
};

}  // namespace velk::gui
