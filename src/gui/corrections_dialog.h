#pragma once
// "Set up Corrections on FFT": the converter of Bruker data (a frame shown for Bruker data only),
// the baseline of the FID, the T1 noise reduction of the first row with its factor, and the
// reduction of data points, which this program does not offer. "OK" hands the choice to the FT
// window's state.
#include <QDialog>

#include "document/ft_window.h"

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace velk::gui {

class CorrectionsDialog final : public QDialog {
  Q_OBJECT

 public:
  CorrectionsDialog(document::FtWindow& state, QWidget* parent);

 private:
  void Ok();

  document::FtWindow& state_;
  QRadioButton* single_[2] = {};
  QRadioButton* dual_[2] = {};
  QCheckBox* baseline_ = nullptr;
  QCheckBox* t1Noise_ = nullptr;
  QLineEdit* t1Factor_ = nullptr;
};

}  // namespace velk::gui
