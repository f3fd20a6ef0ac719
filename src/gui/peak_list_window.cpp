#include "gui/peak_list_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "document/peak_commands.h"
#include "operations/peak_list_file.h"

namespace velk::gui {
namespace {

using model::F1;
using model::F2;

enum Column { kNumber, kF2Ppm, kF1Ppm, kF2Hz, kF1Hz, kHeight, kColumns };

QTableWidgetItem* Cell(const QString& text, bool editable) {
  auto* item = new QTableWidgetItem(text);
  item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  if (!editable) item->setFlags(item->flags() & ~Qt::ItemIsEditable);
  return item;
}

QString Fixed(double v, int decimals) { return QString::fromStdString(operations::FixedDecimals(v, decimals)); }

// The data point nearest to a ppm value on an axis, -1 when the value lies outside the data.
std::int32_t NearestPoint(const model::Spectrum2D& s, int axis, double ppm) {
  const double step = s.extras[axis].ppmStep;
  if (step == 0) return -1;
  const double point = std::nearbyint((ppm - s.extras[axis].ppmFirst) / step);
  return point >= 0 && point < s.axis[axis].Point ? static_cast<std::int32_t>(point) : -1;
}

}  // namespace

PeakListWindow::PeakListWindow(document::Document& document, platform::Prompt& prompt,
                               std::function<operations::PeakMode()> topKind, QWidget* parent)
    : QDialog(parent), document_(document), prompt_(prompt), topKind_(std::move(topKind)) {
  setWindowTitle("Peak List");
  setObjectName("peakList");
  auto* layout = new QVBoxLayout(this);
  count_ = new QLabel(this);
  layout->addWidget(count_);
  table_ = new QTableWidget(0, kColumns, this);
  table_->setHorizontalHeaderLabels({"No.", "F2 (ppm)", "F1 (ppm)", "F2 (Hz)", "F1 (Hz)", "Height"});
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->horizontalHeader()->setSectionResizeMode(kNumber, QHeaderView::ResizeToContents);
  table_->setToolTip("Type a place in ppm to move a top to the data point there");
  layout->addWidget(table_, 1);
  connect(table_, &QTableWidget::itemChanged, this, &PeakListWindow::Edited);

  auto* buttons = new QHBoxLayout;
  const auto button = [&](const char* text, auto action) {
    auto* b = new QPushButton(text, this);
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, action);
    buttons->addWidget(b);
  };
  button("Delete Peak", &PeakListWindow::DeleteSelected);
  button("Delete All", &PeakListWindow::DeleteAll);
  button("Save...", &PeakListWindow::Save);
  buttons->addStretch(1);
  button("Close", &QDialog::close);
  layout->addLayout(buttons);
  resize(620, 480);
  Refresh();
}

void PeakListWindow::Refresh() {
  filling_ = true;
  const std::vector<operations::PeakRow> rows = operations::PeakRows(document_.spectrum);
  table_->setRowCount(static_cast<int>(rows.size()));
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const operations::PeakRow& r = rows[i];
    table_->setItem(i, kNumber, Cell(QString::number(r.number), false));
    table_->setItem(i, kF2Ppm, Cell(Fixed(r.ppmF2, 4), true));
    table_->setItem(i, kF1Ppm, Cell(Fixed(r.ppmF1, 4), true));
    table_->setItem(i, kF2Hz, Cell(Fixed(r.hzF2, 2), false));
    table_->setItem(i, kF1Hz, Cell(Fixed(r.hzF1, 2), false));
    table_->setItem(i, kHeight, Cell(QString::number(r.peak.Height, 'g', 5), false));
  }
  count_->setText(QString("%1 of %2 peaks").arg(rows.size()).arg(model::kMaxPeaks2D));
  filling_ = false;
}

// A ppm typed into a cell: the top moves to the nearest data point there and is found anew (one
// undo record). A place outside the data, or one that the move refuses, puts the old text back.
void PeakListWindow::Edited(QTableWidgetItem* item) {
  if (filling_) return;
  const int index = item->row();
  const model::Spectrum2D& s = document_.spectrum;
  if (index < 0 || index >= static_cast<int>(s.peaks.peaks.size())) return;
  bool ok = false;
  const double ppm = item->text().toDouble(&ok);
  const model::Peak2D& peak = s.peaks.peaks[index];
  std::int32_t col = peak.PointF2, row = peak.PointF1;
  (item->column() == kF2Ppm ? col : row) = ok ? NearestPoint(s, item->column() == kF2Ppm ? F2 : F1, ppm) : -1;
  const bool moved = col >= 0 && row >= 0 &&
                     document::MovePeakByDrag(document_, index, col, row,
                                              topKind_ ? topKind_() : operations::kPeakOnDataPoint);
  Refresh();
  if (moved) emit listChanged();
}

void PeakListWindow::DeleteSelected() {
  QList<int> rows;
  for (const QModelIndex& i : table_->selectionModel()->selectedRows()) rows << i.row();
  std::sort(rows.begin(), rows.end(), std::greater<>());
  bool changed = false;
  for (int row : rows) changed |= document::DeletePeakAt(document_, row);
  Refresh();
  if (changed) emit listChanged();
}

void PeakListWindow::DeleteAll() {
  if (!document::DeleteAllPeaksOf(document_)) return;
  Refresh();
  emit listChanged();
}

bool PeakListWindow::SaveTo(const std::string& file) {
  std::string ending = std::filesystem::path(file).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) { return std::tolower(c); });
  const operations::PeakListFormat format = ending == ".csv"    ? operations::PeakListFormat::Csv
                                            : ending == ".json" ? operations::PeakListFormat::Json
                                                                : operations::PeakListFormat::Text;
  const std::string name = document_.source.path.filename().string();
  const platform::Outcome written = operations::Save_Peak_List(file, document_.spectrum, name, format);
  if (!written.ok() && !written.message.text.empty()) prompt_.Ask(written.message);
  return written.ok();
}

void PeakListWindow::Save() {
  const std::vector<platform::FileFilter> filters{
      {"Peak List(*.txt)", "*.txt"}, {"CSV(*.csv)", "*.csv"}, {"JSON(*.json)", "*.json"}};
  if (const std::optional<std::string> file = prompt_.ChooseFile("Save Peak List", filters, true)) SaveTo(*file);
}

}  // namespace velk::gui
