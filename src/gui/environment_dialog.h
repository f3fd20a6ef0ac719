#pragma once
// "Set Environment": the settings that the running program uses for its display and its files,
// written to the 2D settings file at "OK".
#include <QDialog>

#include "core/settings.h"

class QCheckBox;
class QComboBox;

namespace velk::gui {

class EnvironmentDialog final : public QDialog {
  Q_OBJECT

 public:
  EnvironmentDialog(const core::Settings& settings, QWidget* parent);
  // The dialog's values put into the settings.
  void Store(core::Settings& settings) const;

 private:
  QComboBox* displayPoints_ = nullptr;
  QComboBox* interpolation_ = nullptr;
  QComboBox* steps_ = nullptr;
  QCheckBox* backup_ = nullptr;
};

}  // namespace velk::gui
