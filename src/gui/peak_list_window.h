#pragma once
// The peak list window ("PeaK List"): one row per top with its place in ppm and Hz and its height.
// A place typed into a ppm cell moves the top to the data point there; rows can be deleted one by
// one or all together; the list can be saved as text, CSV or JSON. Every change goes through the
// document's peak commands, so that it can be undone.
#include <QDialog>
#include <functional>

#include "document/document.h"
#include "operations/peak_top.h"
#include "platform/prompt.h"

class QTableWidget;
class QTableWidgetItem;
class QLabel;

namespace velk::gui {

class PeakListWindow final : public QDialog {
  Q_OBJECT

 public:
  PeakListWindow(document::Document& document, platform::Prompt& prompt,
                 std::function<operations::PeakMode()> topKind, QWidget* parent = nullptr);

  // The rows anew from the list (after any change, here or in the main window).
  void Refresh();
  QTableWidget& Table() const { return *table_; }
  // "Delete Peak": the selected rows go, each its own undo record.
  void DeleteSelected();
  void DeleteAll();
  // Writes the list; the form follows the file's ending (.csv, .json, else text).
  bool SaveTo(const std::string& file);

 signals:
  // The list was changed from this window.
  void listChanged();

 private:
  void Edited(QTableWidgetItem* item);
  void Save();

  document::Document& document_;
  platform::Prompt& prompt_;
  std::function<operations::PeakMode()> topKind_;
  QTableWidget* table_ = nullptr;
  QLabel* count_ = nullptr;
  bool filling_ = false;
};

}  // namespace velk::gui
