#include "gui/step_label.h"

#include <algorithm>

#include <QMouseEvent>
#include <chrono>

namespace velk::gui {

Clock SteadyClock() {
  return [] {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
  };
}

StepLabel::StepLabel(const QString& text, Clock clock, QWidget* parent)
    : QLabel(text, parent), clock_(std::move(clock)) {
  setAlignment(Qt::AlignCenter);
  setFrameShape(QFrame::Panel);
  setFrameShadow(QFrame::Raised);
  // Never narrower than its text, however crowded the row of controls is.
  setMinimumWidth(std::max(30, fontMetrics().horizontalAdvance(text) + 10));
  timer_.setInterval(10);
  connect(&timer_, &QTimer::timeout, this, &StepLabel::Tick);
}

void StepLabel::Tick() {
  if (const int due = held_.Due(clock_())) emit stepped(due);
}

void StepLabel::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setFrameShadow(QFrame::Sunken);
  timer_.start();
  emit pressed();
  emit stepped(held_.Press(clock_()));
}

void StepLabel::mouseReleaseEvent(QMouseEvent*) {
  setFrameShadow(QFrame::Raised);
  held_.Release();
  timer_.stop();
}

}  // namespace velk::gui
