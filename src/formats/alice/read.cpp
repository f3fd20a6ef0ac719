// ReadDataAlice: the 1D files of the Alice program.
#include <algorithm>
#include <cstring>
#include <memory>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/alice/alice.h"
#include "formats/alice/layout.h"
#include "formats/alice/messages.h"
#include "formats/bytes_to_text.h"
#include "formats/elements.h"
#include "formats/fid_scaling.h"
#include "model/data_type.h"
#include "model/nucleus.h"

namespace velk::formats::alice {
namespace {

constexpr auto kLittle = core::ByteOrder::Little;

bool MarkAt(core::Bytes bytes, std::uint32_t offset, std::size_t length, const char* mark) {
  return core::Fits(bytes, offset, length) && std::memcmp(bytes.data() + offset, mark, length) == 0;
}

// The shift of the parameter block: 0 or 176 by the version mark; nothing for a foreign file.
std::optional<std::uint32_t> VersionShift(core::Bytes bytes) {
  if (MarkAt(bytes, kMarkOld, kMarkLength, kAliceMarkRead)) return 0;
  if (MarkAt(bytes, kMarkNew, 18, kAliceMarkWritten)) return kShiftNew;
  return std::nullopt;
}

std::int32_t Long(core::Bytes bytes, std::uint64_t offset) {
  return core::DecodeOr<std::int32_t>(bytes, offset, kLittle, 0);
}

void ReadField(const Field& f, core::Bytes bytes, std::uint64_t at, model::Spectrum1D& s) {
  std::visit([&](auto target) {
    using T = decltype(target);
    if constexpr (std::is_same_v<T, FloatField>) target(s) = core::DecodeOr<float>(bytes, at, kLittle, 0.0f);
    if constexpr (std::is_same_v<T, LongField>) target(s) = core::DecodeOr<std::int32_t>(bytes, at, kLittle, 0);
    if constexpr (std::is_same_v<T, WordField>) target(s) = core::DecodeOr<std::int16_t>(bytes, at, kLittle, 0);
    if constexpr (std::is_same_v<T, TextField>) {
      // An empty text keeps what the record has (the instrument stays "ALICE").
      if (std::string text = core::Trim(BytesToText(bytes, at, f.width)); !text.empty()) target(s) = text;
    }
  }, f.target);
}

void ReadParameters(core::Bytes bytes, std::uint64_t block, std::uint32_t shift, model::Spectrum1D& s) {
  for (const Field& f : ParameterFields()) {
    if ((f.files == Files::Shifted && shift == 0) || (f.files == Files::Unshifted && shift != 0)) continue;
    ReadField(f, bytes, block + f.offset + (f.shifted ? shift : 0), s);
  }
  for (std::string* nucleus : {&s.params.OBNUC, &s.params.IRNUC, &s.params.TRNUC})
    if (!nucleus->empty()) *nucleus = model::NormalizeNucleus(*nucleus);
}

// The point table: a keyword "INDIV" at 90 announces an individually spaced point list, which this
// program neither needs nor keeps; the table is only checked to lie inside the file.
bool PointTableFits(core::Bytes bytes, std::uint32_t shift) {
  const std::int32_t start = Long(bytes, shift + kPointTable);
  if (start <= 0 || static_cast<std::uint64_t>(start) >= bytes.size()) return true;
  return BytesToText(bytes, start + 90, 5) != "INDIV" || core::Fits(bytes, start, kPointTableBytes);
}

// Real section then imaginary section of `section` floats each; the first `points` of each used.
bool ReadData(core::Bytes bytes, std::uint64_t start, std::int32_t section, std::int32_t points,
              model::Spectrum1D& s) {
  const std::uint64_t sectionBytes = static_cast<std::uint64_t>(section) * 4;
  if (!core::Fits(bytes, start, 2 * sectionBytes) || model::AllocateSpectrum1D(s, section) != 0) return false;
  const auto n = static_cast<std::size_t>(points);
  return DecodeElements(bytes, start, n, ElementType::Float32, kLittle, s.re) &&
         DecodeElements(bytes, start + sectionBytes, n, ElementType::Float32, kLittle, s.im);
}

}  // namespace

platform::Outcome ReadDataAlice(const std::filesystem::path& path, model::Spectrum1D& spectrum,
                                model::ReadContext& context) {
  const auto file = core::ReadWholeFile(path.string());
  if (!file) return {-1, {kDataErrorTitle, "The file cannot be read: " + path.string()}};
  const core::Bytes bytes = *file;
  const auto shift = VersionShift(bytes);
  const platform::Outcome invalid{1, DataError(kInvalidData)};
  if (!shift) return invalid;
  const std::int32_t block = Long(bytes, *shift + kParameterStart);
  if (block <= 0 || !core::Fits(bytes, static_cast<std::uint64_t>(block), *shift + kBlockEnd) ||
      (*shift != 0 && !core::Fits(bytes, static_cast<std::uint64_t>(block), kBlockEndNew)) ||
      !PointTableFits(bytes, *shift))
    return invalid;
  const std::uint64_t at = static_cast<std::uint64_t>(block) + *shift;
  const std::int32_t points = Long(bytes, at + kPoints);
  if (points < 1 || points > model::kMaxAxisPoints) return {1, DataError(kTooLarge)};

  auto s = std::make_unique<model::Spectrum1D>();
  s->texts.instrument = "ALICE";
  ReadParameters(bytes, static_cast<std::uint64_t>(block), *shift, *s);
  model::NmrParameters& p = s->params;
  const bool isSpectrum = core::DecodeOr<std::int16_t>(bytes, at + kDomain, kLittle, 0) == 1;
  const std::uint64_t dataStart = static_cast<std::uint32_t>(Long(bytes, *shift + kDataStart));
  if (isSpectrum) {
    p.RESOL = core::DecodeOr<float>(bytes, at + 718, kLittle, 0.0f);
    if (!ReadData(bytes, dataStart, points, points, *s)) return invalid;
  } else {
    if (points < 10 || p.OFR == 0 || p.FREQU == 0) return invalid;
    const std::int32_t size = PaddedFidSize(points);
    p.RESOL = p.FREQU / size;
    if (!ReadData(bytes, dataStart, size, points, *s)) return invalid;
    const auto n = static_cast<std::size_t>(points);
    RemoveTailAndScale(std::span(s->re).first(n), std::span(s->im).first(n));
  }
  p.POINT = isSpectrum ? points : PaddedFidSize(points);
  s->texts.dataTypeText = std::string(model::TagsOf(model::kAlice).name);
  s->texts.fileName = path.string();
  s->texts.originalFileName = path.string();
  p.COMNT = s->comment;
  spectrum = std::move(*s);
  if (context.log) context.log("Read", path.string());
  return {};
}

model::ModeResult ReadModeAlice(const model::DetectedFile& file) {
  model::ModeResult result;
  const auto bytes = core::ReadWholeFile(file.path.string());
  const auto shift = bytes ? VersionShift(*bytes) : std::nullopt;
  const std::int32_t block = shift ? Long(*bytes, *shift + kParameterStart) : 0;
  if (!shift || block <= 0 || !core::Fits(*bytes, static_cast<std::uint64_t>(block), *shift + kBlockEnd)) {
    result.reason = "no Alice parameter block";
    return result;
  }
  const std::uint64_t at = static_cast<std::uint64_t>(block) + *shift;
  result.code = 0;
  result.processed = core::DecodeOr<std::int16_t>(*bytes, at + kDomain, kLittle, 0) == 1;
  result.modeText = "1D " + core::Trim(BytesToText(*bytes, at + 584, 32));
  return result;
}

model::FormatEntry AliceFormatEntry() {
  return {".ALS", model::kAlice, ReadModeAlice, nullptr,
          [](const model::DetectedFile& f, model::Spectrum1D& s, model::ReadContext& c) {
            return ReadDataAlice(f.path, s, c);
          }};
}

}  // namespace velk::formats::alice
