#include "formats/bruker/data_file.h"

#include <cmath>
#include <system_error>

#include "formats/bruker/messages.h"

namespace velk::formats::bruker {
namespace {

// No data file of this program's sizes comes near this (1048576 x 1024 complex doubles is 16 GiB).
constexpr std::uint64_t kLargestDataFile = std::uint64_t{1} << 34;

ElementType TypeOfCode(std::int16_t code) {
  return code == 2 ? ElementType::Float64 : code == 1 ? ElementType::Float32 : ElementType::Int32;
}

}  // namespace

void ChooseDataType(std::uint64_t fileLength, std::uint64_t pointsInFile, bool askable, LoadState& state,
                    platform::Prompt& prompt) {
  if (pointsInFile == 0) return;
  const auto width = std::llround(static_cast<double>(fileLength) / static_cast<double>(pointsInFile));
  if (width == 8) {
    state.DataTypeCode = 2;
  } else if (state.DecimalFlag != 0) {
    if (!askable) return;
    const std::vector<std::string> choices(std::begin(messages::kDataTypeChoices), std::end(messages::kDataTypeChoices));
    const auto answer = prompt.Choose(messages::kSelectDataType, choices);
    state.DataTypeCode = static_cast<std::int16_t>(answer == 0 ? 1 : answer == 1 ? 2 : 0);
  } else {
    state.DataTypeCode = 0;
  }
}

std::optional<platform::Message> LoadDataFile(const std::filesystem::path& file, std::uint64_t pointsInFile,
                                              bool askable, std::uint64_t elements, LoadState& state,
                                              platform::Prompt& prompt, DataFile& out) {
  std::error_code error;
  const std::uint64_t length = std::filesystem::file_size(file, error);
  if (error) return messages::InvalidData();
  ChooseDataType(length, pointsInFile, askable, state, prompt);
  out.type = TypeOfCode(state.DataTypeCode);
  out.order = state.ByteOrderCode == 1 ? core::ByteOrder::Big : core::ByteOrder::Little;
  const std::uint64_t width = ElementWidth(out.type);
  if (elements > kLargestDataFile / width) return messages::DataSizeTooLarge();
  const std::uint64_t needed = elements * width;
  if (length < needed) return messages::ShortFile(file.filename().string());
  auto bytes = core::ReadFilePrefix(file.string(), needed);
  if (!bytes || bytes->size() < needed) return messages::ShortFile(file.filename().string());
  out.bytes = std::move(*bytes);
  return std::nullopt;
}

std::uint64_t RowStrideValues(std::uint64_t rowValues, ElementType type) {
  const std::uint64_t perBlock = 1024 / ElementWidth(type);
  return (rowValues + perBlock - 1) / perBlock * perBlock;
}

}  // namespace velk::formats::bruker
