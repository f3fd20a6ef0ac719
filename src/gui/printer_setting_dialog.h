#pragma once
// "Printer Setting": where the page goes (a printer of the system or a PDF file), its paper,
// bin, orientation and copies, dual side printing with the peak list on the reverse side, and
// the font of the list.
#include <QDialog>

#include "layout/print_setup.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace velk::gui {

class PrinterSettingDialog final : public QDialog {
  Q_OBJECT

 public:
  PrinterSettingDialog(const layout::PrintSetup& setup, QWidget* parent);
  layout::PrintSetup Setup() const;

 private:
  void ShowDetail();
  void ChooseListFont();
  void ShowFontName();

  layout::PrintSetup setup_;
  QComboBox* printer_ = nullptr;
  QPushButton* detail_ = nullptr;
  QComboBox* size_ = nullptr;
  QComboBox* bin_ = nullptr;
  QRadioButton* landscape_ = nullptr;
  QSpinBox* copies_ = nullptr;
  QCheckBox* dualSide_ = nullptr;
  QRadioButton* bindUpper_ = nullptr;
  QRadioButton* listOnReverse_ = nullptr;
  QPushButton* font_ = nullptr;
};

}  // namespace velk::gui
