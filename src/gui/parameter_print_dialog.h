#pragma once
// "Parameter Print": which list the page's parameter block prints ("Use File", "Use List", "Use
// Default List"), the column of the decimal points, the font, the background of the block, and
// the sample ID and comment of the data set. Opened from the Print Preview, where a change is one
// undo step "UnDo(Print Parameter)".
#include <QDialog>

#include "document/session.h"
#include "gui/parameter_edit_dialog.h"
#include "layout/page_undo.h"
#include "layout/parameter_print.h"
#include "platform/prompt.h"

class QButtonGroup;
class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace velk::gui {

class ParameterPrintDialog final : public QDialog {
  Q_OBJECT

 public:
  // Edits the choice of `page.printed`, the background flags of `page.frame` and the texts.
  ParameterPrintDialog(layout::ParameterPrintPage page, ParameterEditSources sources, QWidget* parent);

  const layout::ParameterPrintPage& Result() const { return page_; }
  // "Set Parameter File" with the name given, as the file dialog would.
  void SetFile(const std::filesystem::path& file);

 private:
  void ChooseFile();
  void EditList();
  void ChooseFont();
  void Show();

  layout::ParameterPrintPage page_;
  ParameterEditSources sources_;
  QButtonGroup* source_ = nullptr;
  QLabel* file_ = nullptr;
  QLabel* font_ = nullptr;
  QSpinBox* column_ = nullptr;
  QCheckBox* filled_ = nullptr;
  QCheckBox* framed_ = nullptr;
};

// Where the session keeps parameter files, and the entries "Edit Parameters" offers.
ParameterEditSources SessionParameterSources(const document::Session& session, const layout::ParameterList& printed);

// The list the session's pages print. A parameter file that can't be read is told through the
// prompt and the default list printed.
layout::PrintedParameters SessionParameters(const document::Session& session, platform::Prompt& prompt);

// Runs "Parameter Print" on the page's list and parameter frame; an accepted change is applied
// (the settings, the data set's sample ID and comment) and pushed as one undo step. A parameter
// file that can't be read is told and changes nothing. True when something changed.
bool EditParameterPrint(QWidget* parent, document::Session& session, layout::PrintedParameters& printed,
                        layout::EditedPage& page, layout::PageUndo& undo, platform::Prompt& prompt);

}  // namespace velk::gui
