#pragma once
// A step label or step button that repeats while held: one step on the press, the next after
// 500 ms, then one every 50 ms. The clock can be replaced, so that a test drives the repeats.
#include <QLabel>
#include <QTimer>
#include <cstdint>
#include <functional>

#include "processing/ft_controls.h"

namespace velk::gui {

using Clock = std::function<std::int64_t()>;  // milliseconds of a monotonic clock

// The program's clock: a steady clock in milliseconds.
Clock SteadyClock();

class StepLabel final : public QLabel {
  Q_OBJECT

 public:
  StepLabel(const QString& text, Clock clock, QWidget* parent = nullptr);
  // Looks at the clock and gives the steps that have fallen due (the timer calls it).
  void Tick();

 signals:
  // A press begins (before its first step), for controls whose rule depends on where it began.
  void pressed();
  void stepped(int count);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Clock clock_;
  processing::HeldStep held_;
  QTimer timer_;
};

}  // namespace velk::gui
