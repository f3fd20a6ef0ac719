#pragma once
// Long work off the interface thread: one job at a time on its own thread, its progress read by
// the window, a quit word that the job sees at its next step, and the result handed back to the
// interface thread.
#include <QObject>
#include <atomic>
#include <functional>
#include <thread>

#include "platform/progress.h"

namespace velk::gui {

class Worker final : public QObject {
  Q_OBJECT

 public:
  explicit Worker(QObject* parent = nullptr);
  ~Worker() override;

  // Runs `job` on the worker thread and then `done` on the interface thread. A job still running
  // is told to quit and waited for first.
  void Start(std::function<void(platform::Progress&)> job, std::function<void()> done);
  // Tells the running job to quit and waits for it; its `done` is not called.
  void Stop();
  // Tells the running job to quit at its next step; its `done` still runs.
  void Quit() { quit_ = true; }
  bool Busy() const { return thread_.joinable(); }
  int Percent() const { return percent_; }

 signals:
  void progressed(int percent);

 private:
  class Bar;
  void Finish(unsigned generation);

  std::thread thread_;
  std::function<void()> done_;
  std::atomic<bool> quit_{false};
  std::atomic<int> percent_{0};
  unsigned generation_ = 0;
};

}  // namespace velk::gui
