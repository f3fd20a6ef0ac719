#pragma once
// The frame of a Ver.4 file: the header with its table of absolute addresses, and the file-level
// sections in the order the writer lays them out.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace velk::native {

inline constexpr std::string_view kMagic401 = "VK NMR Ver.4.01";
inline constexpr std::string_view kMagic400 = "VK NMR Ver.4.00";
inline constexpr std::uint64_t kHeaderSize = 1280;
inline constexpr std::uint64_t kNameAt = 16;
inline constexpr std::size_t kNameWidth = 255;
inline constexpr std::uint64_t kAddressTagAt = 496;
inline constexpr std::string_view kAddressTag = "## ADDRESS";
inline constexpr std::uint64_t k2DEntryAt = 512;
inline constexpr std::string_view k2DTag = "## 2D Data";
inline constexpr std::string_view kEndTag = "## END";
// A file is 2D when the length of its 2D section is at least this.
inline constexpr std::int32_t kMin2DLength = 19;

inline constexpr int kOneDSets = 40;
// "## 1D Data 00" .. "19" stand at 520, "20" .. "39" at 832.
constexpr std::uint64_t OneDEntryAt(int set) { return set < 20 ? 520 + 8 * set : 832 + 8 * (set - 20); }
// "## 1D Data 00" .. "## 1D Data 39".
inline std::string SetTag(int set) {
  return "## 1D Data " + std::string(1, static_cast<char>('0' + set / 10)) + static_cast<char>('0' + set % 10);
}
// Entries from here on count only when the 2D section's address is at least the header size.
inline constexpr std::uint64_t kLateEntriesFrom = 992;
// Sets 00 to 18 have their length repaired from the next set's address.
inline constexpr int kRepairedSets = 19;
inline constexpr std::int32_t kMinSetLength = 256;

struct FileSection {
  std::string_view tag;
  std::uint64_t entryAt;     // Ver.4.01
  std::int64_t entryAt400;   // Ver.4.00; -1 when that version has no such entry
  bool tagWhenEmpty;         // the 1D and simulation families stand as a tag with a zero entry
};

// In the writer's order.
inline constexpr std::array<FileSection, 31> kFileSections{{
    {"## PRINTSET 1D", 688, 688, true},
    {"## PRINTSET 2D", 696, 696, false},
    {"## XLABEL DATA", 816, 816, false},
    {"## XLABELN DATA", 824, 824, false},
    {"## SIM PRINTSET", 704, 712, false},
    {"## T1Cal SET", 712, 720, false},
    {"## MULTIVIEW", 1088, 1088, false},
    {"## LINE DATA 2D", 720, 768, false},
    {"## LINE DATA-0", 768, -1, true},
    {"## LINE DATA-SIM", 744, -1, true},
    {"## TEXT DATA 2D", 728, 776, false},
    {"## TEXT DATA-0", 776, -1, true},
    {"## TEXT DATA-SIM", 752, -1, true},
    {"## PICTURE 2D", 736, 784, false},
    {"## PICTUREEX 2D", 1072, 1072, false},
    {"## PICTURE-0", 784, -1, true},
    {"## PICTUREEX-0", 1064, 1064, true},
    {"## PICTURE-SIM", 760, -1, true},
    {"## PICTUREEX-SIM", 1080, 1080, true},
    {"## CIRCLE -0", 1008, 1008, true},
    {"## CIRCLE-SIM", 1040, 1040, true},
    {"## CIRCLE -2D", 992, 992, false},
    {"## RECTANGLE-1D", 1016, 1016, true},
    {"## RECTANGLE-S", 1048, 1048, true},
    {"## RECTANGLE-2D", 1000, 1000, false},
    {"##DRAW ORDER 2D", 1032, 1032, false},
    {"##DRAW ORDER 1D", 1024, 1024, true},
    {"##DRAW ORDER SIM", 1056, 1056, true},
    {"## STRUCTURE", 792, 792, false},
    {"## PRINT LIST", 800, 800, false},
    {"## HISTORY", 808, 808, false},
}};
inline constexpr std::string_view kFileHistoryTag = "## HISTORY";
// In a Ver.4.00 file the length of "## TEXT DATA 2D" is read one byte out of step, from 781.
inline constexpr std::uint64_t kTextData2DLength400 = 781;

}  // namespace velk::native
