#pragma once
// "Edit Parameters": the list of all parameters ("Select Parameter") beside the list the page
// prints ("Parameter for Print"); entries go across above or below the selected line, lines move
// and are deleted, the last change is taken back by "UnDo", and lists are read from and saved to
// parameter files. The rules are those of layout::ParameterListEdit; this window only shows them.
#include <QDialog>
#include <filesystem>

#include "layout/parameter_list_edit.h"

class QListWidget;

namespace velk::gui {

struct ParameterEditSources {
  layout::ParameterList offered;   // "Select Parameter"
  layout::ParameterList printed;   // what the page prints now: "LoadParameter"
  std::filesystem::path folder;    // where parameter files are looked for
};

class ParameterEditDialog final : public QDialog {
  Q_OBJECT

 public:
  ParameterEditDialog(layout::ParameterList list, ParameterEditSources sources, QWidget* parent);

  const layout::ParameterList& List() const { return edit_.list; }
  QListWidget* Offered() const { return offered_; }
  QListWidget* Printed() const { return printed_; }
  // Leaving without "OK" after a change asks "The List has been changed! Anyway, close?".
  void reject() override;

 private:
  void Run(void (*rule)(layout::ParameterListEdit&));
  void Add(bool above);
  void ReadFile();
  void SaveFile();
  void Show();

  layout::ParameterListEdit edit_;
  ParameterEditSources sources_;
  QListWidget* offered_ = nullptr;
  QListWidget* printed_ = nullptr;
};

// Opens the editor on the list; nothing when it was left without "OK".
std::optional<layout::ParameterList> EditParameterList(QWidget* parent, const layout::ParameterList& list,
                                                       const ParameterEditSources& sources);

}  // namespace velk::gui
