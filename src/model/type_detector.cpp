#include "model/type_detector.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>

#include "core/bytes.h"
#include "model/pulse_mode.h"

namespace velk::model {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

// The content test looks at the start of a file only: every mark it knows lies in the first
// kilobyte, and a parameter block of "##" lines ends long before this.
constexpr std::size_t kProbeBytes = 64 * 1024;

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

bool TextAt(const Bytes& bytes, std::size_t offset, std::string_view text) {
  return offset + text.size() <= bytes.size() &&
         std::equal(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

std::int32_t LongAt(const Bytes& bytes, std::size_t offset) {
  if (offset + 4 > bytes.size()) return 0;
  return static_cast<std::int32_t>(bytes[offset] | bytes[offset + 1] << 8 | bytes[offset + 2] << 16 |
                                   static_cast<std::uint32_t>(bytes[offset + 3]) << 24);
}

// A number in the first 100 bytes, up to a blank or comma: a CSV table without a heading.
bool StartsWithNumber(const Bytes& bytes) {
  std::string token;
  for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 100); ++i) {
    const char c = static_cast<char>(bytes[i]);
    if (c == ' ' || c == ',' || c == '\r' || c == '\n' || c == '\t') break;
    token += c;
  }
  if (token.empty()) return false;
  char* end = nullptr;
  std::strtod(token.c_str(), &end);
  return end == token.c_str() + token.size();
}

// Lines that start "##" or "$$": only "##JCAMP-DXB" names a type here (NUTS).
std::string ScanLabelLines(const Bytes& bytes) {
  std::size_t start = 0;
  while (start < bytes.size()) {
    std::size_t end = start;
    while (end < bytes.size() && bytes[end] != '\n') ++end;
    std::string line(bytes.begin() + static_cast<std::ptrdiff_t>(start), bytes.begin() + static_cast<std::ptrdiff_t>(end));
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || !(line.starts_with("##") || line.starts_with("$$"))) return {};
    if (line.starts_with("##JCAMP-DXB")) return "NUTS Type3";
    start = end + 1;
  }
  return {};
}

std::string ClassifyContents(const Bytes& bytes) {
  if (TextAt(bytes, 0, "JEOL.NMR")) return "ECP";
  if (TextAt(bytes, 0, "VK NMR Ver.3.00")) return bytes.size() > 16 && bytes[16] == '2' ? "VLM2" : "VLM1";
  if (TextAt(bytes, 0, "VK NMR Ver.4.00") || TextAt(bytes, 0, "VK NMR Ver.4.01"))
    return LongAt(bytes, 516) < 19 ? "VLMX_1" : "VLMX_2";
  if (TextAt(bytes, 82, "WIN NMR VERSION 1.00") || TextAt(bytes, 258, "WIN NMR VERSION 1.01")) return "ALICE";
  if (TextAt(bytes, 0, "JEOLUSF001")) return "LAMBDA";
  if (TextAt(bytes, 0, "NFT1DT")) return "ALPHA";
  if (LongAt(bytes, 0) == 0x04030201) return "NUTS Type1,2";
  if (bytes.size() >= 3 && bytes[0] == 0x47 && bytes[1] == 0x84 && bytes[2] == 0xF5) return "ASPECT";
  if (TextAt(bytes, 0, "$CSVSTART ")) return "CSV TYPE 1";
  if (TextAt(bytes, 128, "DICM")) return "IMA";
  const bool labelStart = TextAt(bytes, 0, "##") || TextAt(bytes, 0, "$$");
  if (!labelStart) return StartsWithNumber(bytes) ? "CSV TYPE 0" : std::string();
  return ScanLabelLines(bytes);
}

std::string WordOfContents(const std::string& text, const std::string& extension) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 10> kWords{{
      {"ECP", ".ECP"}, {"ALICE", ".ALS"}, {"VLM1", ".VL1"}, {"VLM2", ".VL2"}, {"VLMX_1", ".VLK1"},
      {"VLMX_2", ".VLK2"}, {"ASPECT", ".MSL"}, {"ALPHA", ".ALP"}, {"LAMBDA", ".LAM"}, {"IMA", ".IMA"}}};
  for (const auto& [content, word] : kWords)
    if (text == content) return std::string(word);
  if (text.starts_with("NUTS")) return ".NUT";
  if (text.starts_with("CSV") || extension == ".TXT" || extension == ".DAT" || extension == ".ASC") return ".CSV";
  return extension;
}

bool Exists(const fs::path& p) {
  std::error_code error;
  return fs::exists(p, error);
}

// The first of the names that exists in the folder (names as the instruments write them).
std::optional<fs::path> FirstChild(const fs::path& folder, std::initializer_list<const char*> names) {
  for (const char* name : names)
    for (const std::string& spelling : {std::string(name), Upper(name)})
      if (Exists(folder / spelling)) return folder / spelling;
  return std::nullopt;
}

bool HasVarianParameters(const fs::path& folder) {
  return FirstChild(folder, {"procpar", "curpar"}) || FirstChild(folder.parent_path(), {"procpar", "curpar"});
}

// Stage 1 for folders: the vendors' folders however the user names them.
bool DetectFolder(const fs::path& folder, DetectedFile& file) {
  const std::string extension = Upper(folder.extension().string());
  const auto choose = [&](const fs::path& child, const char* word) {
    file.path = child;
    file.extensionWord = word;
    return true;
  };
  if (extension == ".VAR" || (extension != ".BRU" && HasVarianParameters(folder) && !Exists(folder / "acqus"))) {
    if (auto fid = FirstChild(folder, {"fid"})) return choose(*fid, ".VARF");
    if (auto data = FirstChild(folder, {"data", "phasefile"})) return choose(*data, ".VARD");
    return false;
  }
  if (extension == ".CMX") {
    if (auto data = FirstChild(folder, {"data"})) return choose(*data, ".CMX");
    return false;
  }
  if (auto raw = FirstChild(folder, {"ser", "fid"}); raw && Exists(folder / "acqus")) return choose(*raw, ".BRUF");
  if (auto processed = FirstChild(folder, {"2rr", "1r"})) return choose(*processed, ".BRUD");
  if (auto processed = FirstChild(folder / "pdata" / "1", {"2rr", "1r"}); processed && extension == ".BRU")
    return choose(*processed, ".BRUD");
  return false;
}

// Stage 1 for files: sibling files that announce a vendor's set.
void DetectSiblings(DetectedFile& file) {
  const std::string name = file.path.filename().string();
  const std::string upperName = Upper(name);
  const fs::path& folder = file.folder;
  const auto sibling = [&](const char* extension) { return Exists(folder / (file.stem + extension)) ||
                                                           Exists(folder / (file.stem + Upper(extension))); };
  if (file.extension == ".1R" && sibling(".fqs")) file.extensionWord = ".BRUP";
  else if (file.extension == ".FID" && sibling(".aqs")) file.extensionWord = ".BRUA";
  else if (file.extension == ".2RR" && sibling(".fqs")) file.extensionWord = ".BRUP2";
  else if (file.extension == ".SER" && sibling(".aqs")) file.extensionWord = ".BRUA2";
  else if (file.extension == ".GXP") {
    file.path.replace_extension(name.back() == 'P' ? ".GXD" : ".gxd");
    file.extension = ".GXD";
  } else if ((upperName == "SER" || upperName == "FID") && Exists(folder / "acqus")) file.extensionWord = ".BRUF";
  else if ((upperName == "ACQUS" || upperName == "ACQU2S")) {
    if (auto raw = FirstChild(folder, {"ser", "fid"})) { file.path = *raw; file.extensionWord = ".BRUF"; }
  } else if ((upperName.starts_with("2R") || upperName.starts_with("2I") || upperName == "1R" || upperName == "1I" ||
              upperName == "PROCS" || upperName == "PROC2S") && Exists(folder / "procs")) {
    if (auto data = FirstChild(folder, {"2rr", "1r"})) { file.path = *data; file.extensionWord = ".BRUD"; }
  } else if (upperName == "FID" && HasVarianParameters(folder)) file.extensionWord = ".VARF";
  else if ((upperName == "DATA" || upperName == "PHASEFILE") && HasVarianParameters(folder)) file.extensionWord = ".VARD";
}

int PresetClass(DataTypeCode code, const ModeResult& mode) {
  if (code >= 0x2000 && code <= 0x20FF) {
    static constexpr std::array<std::string_view, 5> kPrefixes{"VPH_HOMO", "V_HOMO", "VPH_HMBC", "VPH_HETERO",
                                                               "V_HETERO"};
    for (int c = 0; c < 5; ++c)
      if (mode.modeText.starts_with(kPrefixes[c])) return c;
    if (mode.kind == "HOMO") return 20;
    if (mode.kind == "HETERO") return 21;
    return kUnknownClass;
  }
  return ClassifyPulseMode(mode.modeText).pulseModeClass;
}

// A file whose first bytes name no format: empty, or what it begins with.
std::string UnknownContents(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::array<std::uint8_t, 8> head{};
  in.read(reinterpret_cast<char*>(head.data()), head.size());
  const auto count = static_cast<std::size_t>(in.gcount());
  if (count == 0) return in.eof() ? "the file is empty" : "the file cannot be read";
  return "the contents match no format this program reads: the file " +
         core::FirstBytes(core::Bytes(head.data(), count));
}

}  // namespace

int ReadDataMode(const fs::path& path, std::string& typeText) {
  typeText.clear();
  std::error_code error;
  const auto size = fs::file_size(path, error);
  std::ifstream in(path, std::ios::binary);
  if (error || !in) return 0;  // the caller logs "ReadDataMode" with the name
  Bytes bytes(std::min<std::uintmax_t>(size, kProbeBytes));
  in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(in.gcount()));
  if (size <= 300) {
    if (TextAt(bytes, 0, "VARIAN")) typeText = "VARIAN";
    else if (TextAt(bytes, 0, "BRUKER")) typeText = "BRUKER";
    else if (bytes.size() < 6) typeText = "UNKNOWN";
    return 0;
  }
  typeText = ClassifyContents(bytes);
  return 0;
}

Detection TypeDetector(const fs::path& path, FormatTable formats, const std::vector<UserExtension>& userExtensions,
                       platform::Prompt* prompt) {
  Detection d;
  DetectedFile& file = d.file;
  file.path = path;
  file.prompt = prompt;
  std::error_code error;
  if (fs::is_directory(path, error)) {
    if (!DetectFolder(path, file)) {
      d.reason = "the folder holds no data set this program reads";
      return d;
    }
  }
  file.folder = file.path.parent_path();
  file.stem = file.path.stem().string();
  file.extension = Upper(file.path.extension().string());
  if (file.extensionWord.empty()) DetectSiblings(file);
  if (!Exists(file.path)) {
    d.reason = "no such file";
    return d;
  }
  if (file.extension == ".GXD" && !Exists(fs::path(file.path).replace_extension(".GXP")) &&
      !Exists(fs::path(file.path).replace_extension(".gxp"))) {
    d.reason = "the parameter file .GXP beside it is missing";
    return d;
  }
  if (file.extensionWord.empty()) {
    ReadDataMode(file.path, file.contentText);
    file.extensionWord = WordOfContents(file.contentText, file.extension);
    for (const UserExtension& user : userExtensions)
      if (file.contentText.empty() && Upper(user.extension) == file.extension) file.extensionWord = user.extensionWord;
  }
  const auto entry = std::find_if(formats.begin(), formats.end(),
                                  [&](const FormatEntry& e) { return e.extensionWord == file.extensionWord; });
  if (entry == formats.end()) {
    d.reason = file.extensionWord.empty() ? "unknown file type"
               : file.contentText.empty() || file.contentText == "UNKNOWN"
                   ? UnknownContents(file.path)
                   : "no reader for files of type " + file.extensionWord + " yet";
    return d;
  }
  const ModeResult mode = entry->readMode(file);
  d.modeText = mode.modeText;
  if (mode.code != 0 || !(mode.modeText.starts_with("V") || mode.modeText.starts_with("1D"))) {
    d.reason = mode.reason.empty() ? "the header could not be read" : mode.reason;
    return d;
  }
  const int dimension = mode.modeText.starts_with("V") ? 2 : 1;
  d.code = MakeTypeCode(dimension, mode.processed, entry->format);
  d.tag = std::string(TagOf(d.code));
  if (file.extensionWord == ".GXD" && dimension == 2 && !mode.processed && mode.modeText.starts_with("VPH"))
    d.tag = "GXD2FPH";
  d.pulseModeClass = PresetClass(d.code, mode);
  return d;
}

}  // namespace velk::model
