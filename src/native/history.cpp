#include "native/history.h"

#include <cstdio>

namespace velk::native {
namespace {

constexpr std::string_view kHistoryTag = "%% HISTORY-2";
constexpr std::uint64_t kCountAt = 80;
constexpr std::uint64_t kOperationsAt = 96;
constexpr std::uint64_t kOperationSize = 64;
constexpr std::uint64_t kLineSize = 32;
constexpr int kClosingNumber = 99;

std::string Numbered(int number, const std::string& text) {
  char prefix[16];
  std::snprintf(prefix, sizeof prefix, "%02d ", number);
  return prefix + text;
}

// Where the operations end, counted from the tag, for as many operations as the section holds.
std::uint64_t OperationsEnd(Bytes section) {
  const std::int32_t count = ReadLong(section, kCountAt);
  const std::uint64_t room = section.size() > kOperationsAt ? (section.size() - kOperationsAt) / kOperationSize : 0;
  const std::uint64_t n = count > 0 ? std::min<std::uint64_t>(static_cast<std::uint64_t>(count), room) : 0;
  return kOperationsAt + n * kOperationSize;
}

}  // namespace

void WriteHistory(FileSink& sink, std::string_view tag, const HistoryTexts& texts) {
  sink.Tag(tag);
  sink.Text(texts.user, 32);
  sink.Text(texts.firstDate, 32);
  const model::History& h = texts.history;
  sink.Put(static_cast<std::int32_t>(h.operations.size()));
  sink.Zeros(12);
  for (std::size_t i = 0; i < h.operations.size(); ++i) {
    sink.Text(h.operations[i], 32);
    sink.Text(i < h.dates.size() ? h.dates[i] : std::string(), 32);
  }
}

void WriteHistoryWithSummary(FileSink& sink, const HistoryTexts& texts, std::span<const std::string> lines,
                             int lineCount) {
  WriteHistory(sink, kHistoryTag, texts);
  sink.NextSection();
  sink.Text(std::string(kHistoryTag), kLineSize);
  for (int i = 0; i < lineCount; ++i)
    sink.Text(Numbered(i + 1, static_cast<std::size_t>(i) < lines.size() ? lines[i] : std::string()), kLineSize);
  sink.Text(Numbered(kClosingNumber, ""), kLineSize);
}

HistoryTexts ReadHistory(Bytes section) {
  HistoryTexts texts;
  texts.user = ReadText(section, 16, 32);
  texts.firstDate = ReadText(section, 48, 32);
  for (std::uint64_t at = kOperationsAt; at < OperationsEnd(section); at += kOperationSize) {
    std::string what = ReadText(section, at, 32);
    std::string when = ReadText(section, at + 32, 32);
    if (what.empty() && when.empty()) continue;
    texts.history.operations.push_back(std::move(what));
    texts.history.dates.push_back(std::move(when));
  }
  return texts;
}

void ReadSummary(Bytes section, std::string* lines, int lineCount) {
  // The records start at the next section boundary after the operations; files that put them
  // right after the operations are read as well.
  const std::uint64_t end = OperationsEnd(section);
  std::uint64_t at = (end / 16 + 1) * 16;
  if (ReadText(section, at, kLineSize) != kHistoryTag) at = end;
  if (ReadText(section, at, kLineSize) != kHistoryTag) return;
  for (at += kLineSize; at + kLineSize <= section.size(); at += kLineSize) {
    const std::string record = ReadText(section, at, kLineSize);
    if (record.size() < 2 || record[0] < '0' || record[0] > '9' || record[1] < '0' || record[1] > '9') continue;
    const int number = (record[0] - '0') * 10 + (record[1] - '0');
    if (number == kClosingNumber) return;
    if (number >= 1 && number <= lineCount) lines[number - 1] = record.size() > 3 ? record.substr(3) : std::string();
  }
}

}  // namespace velk::native
