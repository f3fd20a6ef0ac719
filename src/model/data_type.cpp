#include "model/data_type.h"

#include <array>

namespace velk::model {
namespace {

constexpr std::array<FormatTags, kFormatCount> kTags{{
    {"ALS2F", "ALS2D", "ALS1", "Alice"},
    {"GXD2F", "GXD2D", "GXD1", "JEOL EX/GX/GSX"},
    {"LAMBDA2F", "LAMBDA2D", "LAMBDA1", "JEOL Lambda"},
    {"ECP2F", "ECP2D", "ECP1", "JEOL Delta"},
    {"BRU2F", "BRU2D", "BRU1", "Bruker"},
    {"ALPHA2F", "ALPHA2D", "ALPHA1", "JEOL Alpha"},
    {"VAR2F", "VAR2D", "VAR1", "Varian"},
    {"NUTS2F", "NUTS2D", "NUTS1", "NUTS"},
    {"BRUX2F", "BRUX2D", "BRUX1F", "Bruker Aspect"},
    {"", "", "CMX1", "Chemagnetics CMX"},
    {"GE2F", "GE2D", "GE1", "GE"},
    {"VELK2F", "VELK2D", "VELK1", "Ver.3"},
    {"", "VELK2D_V4", "VELK1_V4", "Ver.4"},
    {"", "JCAMP2", "JCAMP1", "JCAMP-DX"},
    {"", "", "CSV1", "CSV Text"},
    {"MSL2F", "MSL2D", "MSL1", "MSL"},
    {"", "SIEMENS", "SIEMENS", "Siemens"},
    {"MAC2F", "MAC2D", "MAC1", "Macintosh Import"},
}};

}  // namespace

const FormatTags& TagsOf(int format) {
  static constexpr FormatTags kNone{"", "", "", ""};
  return format >= 0 && format < kFormatCount ? kTags[format] : kNone;
}

std::string_view TagOf(DataTypeCode code) {
  const FormatTags& tags = TagsOf(FormatOf(code));
  std::string_view tag;
  if (Dimension(code) == 2) tag = IsProcessed(code) ? tags.spectrum2D : tags.fid2D;
  if (Dimension(code) == 1) {
    tag = tags.oneD;
    // Bruker Aspect is the one format with separate 1D tags for FID and spectrum.
    if (FormatOf(code) == kBrukerAspect && IsProcessed(code)) tag = "BRUX1D";
  }
  return tag.empty() ? std::string_view("ERR") : tag;
}

}  // namespace velk::model
