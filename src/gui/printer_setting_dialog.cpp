#include "gui/printer_setting_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace velk::gui {
namespace {

QComboBox* NamesBox(std::span<const std::string_view> names, int current, QWidget* parent) {
  auto* box = new QComboBox(parent);
  for (std::string_view name : names) box->addItem(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
  box->setCurrentIndex(current);
  return box;
}

// A pair of exclusive choices on one line.
QWidget* Pair(QRadioButton* first, QRadioButton* second, bool secondChosen, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(first);
  layout->addWidget(second);
  layout->addStretch();
  (secondChosen ? second : first)->setChecked(true);
  return row;
}

}  // namespace

PrinterSettingDialog::PrinterSettingDialog(const layout::PrintSetup& setup, QWidget* parent)
    : QDialog(parent), setup_(setup) {
  setWindowTitle("Printer Setting");
  auto* layout = new QVBoxLayout(this);

  auto* target = new QGroupBox("Printer", this);
  auto* targetRow = new QHBoxLayout(target);
  printer_ = new QComboBox(target);
  printer_->setObjectName("printer");
  for (const QString& name : QPrinterInfo::availablePrinterNames()) printer_->addItem(name);
  printer_->addItem(QString::fromUtf8(layout::kPdfFilePrinter.data()));
  const QString wanted = setup.printer.empty() ? QPrinterInfo::defaultPrinterName() : QString::fromStdString(setup.printer);
  printer_->setCurrentIndex(std::max(0, printer_->findText(wanted)));
  detail_ = new QPushButton("Printer Detail", target);
  targetRow->addWidget(printer_, 1);
  targetRow->addWidget(detail_);
  layout->addWidget(target);
  connect(detail_, &QPushButton::clicked, this, [this] { ShowDetail(); });
  const auto pdfChosen = [this] { return printer_->currentText().toStdString() == layout::kPdfFilePrinter; };
  connect(printer_, &QComboBox::currentIndexChanged, this, [this, pdfChosen] { detail_->setEnabled(!pdfChosen()); });
  detail_->setEnabled(!pdfChosen());

  auto* paper = new QGroupBox("Paper", this);
  auto* form = new QFormLayout(paper);
  size_ = NamesBox(layout::kPaperSizeNames, static_cast<int>(setup.page.size), paper);
  size_->setObjectName("size");
  bin_ = NamesBox(layout::kPaperBinNames, static_cast<int>(setup.page.bin), paper);
  bin_->setObjectName("bin");
  landscape_ = new QRadioButton("Landscape", paper);
  auto* portrait = new QRadioButton("Portrait", paper);
  copies_ = new QSpinBox(paper);
  copies_->setRange(1, 99);
  copies_->setValue(setup.copies);
  form->addRow("Size", size_);
  form->addRow("Paper Bin", bin_);
  form->addRow("Orientation", Pair(landscape_, portrait, !setup.page.landscape, paper));
  form->addRow("Copies", copies_);
  layout->addWidget(paper);

  auto* dual = new QGroupBox("Reverse Side", this);
  auto* dualForm = new QFormLayout(dual);
  dualSide_ = new QCheckBox("Dual Side Print", dual);
  dualSide_->setObjectName("dualSide");
  dualSide_->setChecked(setup.dualSide);
  auto* bindLeft = new QRadioButton("Left", dual);
  bindUpper_ = new QRadioButton("Upper", dual);
  auto* bind = Pair(bindLeft, bindUpper_, setup.bind == layout::BindSide::Upper, dual);
  bind->setEnabled(setup.dualSide);
  connect(dualSide_, &QCheckBox::toggled, bind, &QWidget::setEnabled);
  listOnReverse_ = new QRadioButton("Peak List on reverse side", dual);
  listOnReverse_->setToolTip("Without dual side printing the peak list comes on a sheet of its own");
  auto* without = new QRadioButton("without reverse side", dual);
  auto* reverse = new QWidget(dual);
  auto* reverseColumn = new QVBoxLayout(reverse);
  reverseColumn->setContentsMargins(0, 0, 0, 0);
  reverseColumn->addWidget(listOnReverse_);
  reverseColumn->addWidget(without);
  (setup.peakListOnReverse ? listOnReverse_ : without)->setChecked(true);
  font_ = new QPushButton(dual);
  font_->setObjectName("listFont");
  connect(font_, &QPushButton::clicked, this, [this] { ChooseListFont(); });
  ShowFontName();
  dualForm->addRow(dualSide_);
  dualForm->addRow("Bind side", bind);
  dualForm->addRow(reverse);
  dualForm->addRow("Font for List", font_);
  layout->addWidget(dual);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

layout::PrintSetup PrinterSettingDialog::Setup() const {
  layout::PrintSetup s = setup_;
  s.printer = printer_->currentText().toStdString();
  s.page.size = static_cast<layout::PaperSize>(size_->currentIndex());
  s.page.bin = static_cast<layout::PaperBin>(bin_->currentIndex());
  s.page.landscape = landscape_->isChecked();
  s.copies = copies_->value();
  s.dualSide = dualSide_->isChecked();
  s.bind = bindUpper_->isChecked() ? layout::BindSide::Upper : layout::BindSide::Left;
  s.peakListOnReverse = listOnReverse_->isChecked();
  return s;
}

// The platform's own page dialog for the chosen printer: its options beyond the ones here.
void PrinterSettingDialog::ShowDetail() {
  QPrinter printer(QPrinterInfo::printerInfo(printer_->currentText()));
  QPageSetupDialog dialog(&printer, this);
  dialog.exec();
}

void PrinterSettingDialog::ChooseListFont() {
  QFont current(QString::fromStdString(setup_.listFont.family), setup_.listFont.pixelHeight);
  current.setBold(setup_.listFont.bold);
  current.setItalic(setup_.listFont.italic);
  bool ok = false;
  const QFont chosen = QFontDialog::getFont(&ok, current, this, "Font for List");
  if (!ok) return;
  setup_.listFont.family = chosen.family().toStdString();
  setup_.listFont.pixelHeight = std::max(1, chosen.pointSize());
  setup_.listFont.bold = chosen.bold();
  setup_.listFont.italic = chosen.italic();
  ShowFontName();
}

void PrinterSettingDialog::ShowFontName() {
  font_->setText(QString("%1, %2 pt").arg(QString::fromStdString(setup_.listFont.family)).arg(setup_.listFont.pixelHeight));
}

}  // namespace velk::gui
