#include "native/sections.h"

#include "core/text.h"

namespace velk::native {

Bytes Block::Section(Entry entry) const {
  if (!entry.present() || entry.address < 0 || entry.length < 0) return {};
  return Range(static_cast<std::uint64_t>(entry.address), static_cast<std::uint64_t>(entry.length));
}

Bytes Block::Range(std::uint64_t start, std::uint64_t length) const {
  if (start < address) return {};
  const std::uint64_t offset = start - address;
  if (!core::Fits(bytes, offset, length)) return {};
  return bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
}

std::uint64_t WriteBlockOpening(FileSink& sink, std::string_view tag, const std::string& modeString,
                                const std::string& originalName, std::size_t nameWidth,
                                std::vector<std::uint8_t> parameters) {
  const std::uint64_t address = sink.Position();
  sink.Tag(tag);
  sink.Text(modeString, kTagWidth);
  sink.Tag("%% ADDRESS");
  sink.Zeros(kOrgFileAt - 2 * kTagWidth);
  sink.Tag("%% ORG FILE");
  sink.Text(originalName, nameWidth);
  sink.Zeros(kParameterAt - (kOrgFileAt + kTagWidth + nameWidth));
  StoreText(parameters, 0, kTagWidth, "%% PARAMETER");
  sink.Append(parameters);
  return address;
}

std::uint64_t BeginSection(FileSink& sink, std::string_view tag) {
  sink.NextSection();
  const std::uint64_t address = sink.Position();
  sink.Tag(tag);
  return address;
}

Entry EndSection(const FileSink& sink, std::uint64_t address) {
  return {static_cast<std::int32_t>(address), static_cast<std::int32_t>(sink.Position() - address)};
}

Entry WriteTextSection(FileSink& sink, std::string_view tag, const std::string& text) {
  const std::uint64_t address = BeginSection(sink, tag);
  const std::string bytes = core::Utf8ToCp932(text);
  if (bytes.empty()) sink.Put<std::int32_t>(0);
  else sink.Append({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  return EndSection(sink, address);
}

std::string ReadTextSection(Bytes section) {
  if (section.size() <= kTagWidth) return {};
  return ReadText(section, kTagWidth, section.size() - kTagWidth);
}

}  // namespace velk::native
