// WriteDataALS: our 1D sets in the Alice layout, readable again by ReadDataAlice.
#include "core/atomic_write.h"
#include "core/bytes.h"
#include "core/text.h"
#include "formats/alice/alice.h"
#include "formats/alice/layout.h"
#include "formats/alice/messages.h"
#include "formats/fid_scaling.h"

namespace velk::formats::alice {
namespace {

constexpr auto kLittle = core::ByteOrder::Little;

// Where this writer puts the sections.
constexpr std::uint32_t kBlock = 512;
constexpr std::uint32_t kBlockLength = kBlockEndNew;
constexpr std::uint32_t kTable = kBlock + kBlockLength;
constexpr std::uint32_t kData = kTable + kPointTableBytes;

void PutText(std::vector<std::uint8_t>& out, std::uint64_t at, const std::string& text, std::uint32_t width) {
  const std::string bytes = core::CutShiftJis(core::Utf8ToCp932(text), width);
  std::copy(bytes.begin(), bytes.end(), out.begin() + static_cast<std::ptrdiff_t>(at));
}

void WriteField(const Field& f, std::vector<std::uint8_t>& out, std::uint64_t at, model::Spectrum1D& s) {
  std::visit([&](auto target) {
    using T = decltype(target);
    if constexpr (std::is_same_v<T, TextField>) PutText(out, at, target(s), f.width);
    else core::Encode(std::span(out), at, target(s), kLittle);
  }, f.target);
}


}  // namespace

platform::Outcome WriteDataALS(const std::filesystem::path& path, const model::Spectrum1D& spectrum, bool processed) {
  model::Spectrum1D s = spectrum;  // the field table hands out references to a record it may write
  const std::int32_t points = s.params.POINT;
  if (points < 1 || points > model::kMaxAxisPoints || s.re.size() < static_cast<std::size_t>(points) ||
      s.im.size() < static_cast<std::size_t>(points))
    return {1, DataError(kInvalidData)};
  const std::int32_t size = processed ? points : PaddedFidSize(points);
  const std::uint64_t sectionBytes = static_cast<std::uint64_t>(size) * 4;
  std::vector<std::uint8_t> out(kData + 2 * sectionBytes, 0);
  const auto put = [&](std::uint64_t at, std::int32_t value) { core::Encode(std::span(out), at, value, kLittle); };

  PutText(out, kMarkNew, kAliceMarkWritten, kMarkLength);
  put(kShiftNew + kFirstSection, kBlock);
  put(kShiftNew + kFirstSectionLength, kBlockLength);
  put(kShiftNew + kParameterStart, kBlock);
  put(kShiftNew + kDataStart, kData);
  put(kShiftNew + kDataLength, static_cast<std::int32_t>(2 * sectionBytes));
  put(kShiftNew + kPointTable, kTable);
  put(kShiftNew + kPointTableLength, kPointTableBytes);

  for (const Field& f : ParameterFields())
    if (f.files != Files::Unshifted) WriteField(f, out, kBlock + f.offset + (f.shifted ? kShiftNew : 0), s);
  const std::uint64_t at = kBlock + kShiftNew;
  core::Encode(std::span(out), at + 718, static_cast<float>(s.params.RESOL), kLittle);
  core::Encode(std::span(out), at + kDomain, static_cast<std::int16_t>(processed ? 1 : 0), kLittle);

  PutText(out, kTable, "X", 16);
  PutText(out, kTable + 80, "LINAR", 8);
  PutText(out, kTable + 90, "INDIV", 5);
  for (std::int32_t i = 0; i < points; ++i) {
    core::Encode(std::span(out), kData + 4ull * i, s.re[i], kLittle);
    core::Encode(std::span(out), kData + sectionBytes + 4ull * i, s.im[i], kLittle);
  }

  const platform::Outcome written = core::WriteAtomically(path, core::StreamWriter([&](std::ostream& file) {
    return static_cast<bool>(file.write(reinterpret_cast<const char*>(out.data()), static_cast<std::streamsize>(out.size())));
  }));
  if (!written.ok())
    return {-1, {kDataErrorTitle, std::string(kWriteTag) + " (" + path.string() + "): " + written.message.text}};
  return {};
}

}  // namespace velk::formats::alice
