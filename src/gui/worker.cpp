#include "gui/worker.h"

#include <QMetaObject>

namespace velk::gui {

// The progress a job reports: the percentage for the window, the quit word for the job.
class Worker::Bar final : public platform::Progress {
 public:
  Bar(Worker& worker) : worker_(worker) {}
  bool Step(std::int64_t done, std::int64_t total) override {
    const int percent = total > 0 ? static_cast<int>(100 * done / total) : 0;
    if (percent != worker_.percent_.exchange(percent))
      QMetaObject::invokeMethod(&worker_, [w = &worker_, percent] { emit w->progressed(percent); }, Qt::QueuedConnection);
    return !worker_.quit_;
  }

 private:
  Worker& worker_;
};

Worker::Worker(QObject* parent) : QObject(parent) {}

Worker::~Worker() { Stop(); }

void Worker::Start(std::function<void(platform::Progress&)> job, std::function<void()> done) {
  Stop();
  quit_ = false;
  percent_ = 0;
  done_ = std::move(done);
  const unsigned generation = ++generation_;
  thread_ = std::thread([this, job = std::move(job), generation] {
    Bar bar(*this);
    job(bar);
    QMetaObject::invokeMethod(this, [this, generation] { Finish(generation); }, Qt::QueuedConnection);
  });
}

void Worker::Stop() {
  if (!thread_.joinable()) return;
  quit_ = true;
  thread_.join();
  ++generation_;  // the finished job's hand-back, still queued, is dropped
  done_ = nullptr;
}

void Worker::Finish(unsigned generation) {
  if (generation != generation_ || !thread_.joinable()) return;
  thread_.join();
  auto done = std::move(done_);
  done_ = nullptr;
  emit progressed(100);
  if (done) done();
}

}  // namespace velk::gui
