#pragma once
#include <cstdint>

namespace velk::platform {

// Long work reports here where the program yields (per row, column, level, trace). Step returns
// false when the user asked to quit; the work then stops at that point.
class Progress {
 public:
  virtual ~Progress() = default;
  virtual bool Step(std::int64_t done, std::int64_t total) = 0;
};

// For callers that need neither a bar nor a quit button.
class NoProgress final : public Progress {
 public:
  bool Step(std::int64_t, std::int64_t) override { return true; }
};

}  // namespace velk::platform
