// The processing recorded beside raw data: pdata/N/procs and proc2s of the lowest numbered
// processing folder that has both.
#include <algorithm>
#include <charconv>

#include "formats/bruker/routines.h"

namespace velk::formats::bruker {
namespace {

using model::F1;
using model::F2;

// Processing folders by number; names that are not numbers are not the vendor's.
std::vector<std::pair<int, fs::path>> NumberedFolders(const fs::path& pdata) {
  std::vector<std::pair<int, fs::path>> found;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(pdata, error)) {
    const std::string name = entry.path().filename().string();
    int number = 0;
    const auto [end, code] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (code == std::errc() && end == name.data() + name.size() && entry.is_directory(error))
      found.emplace_back(number, entry.path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace

std::optional<model::VendorRecipe> ReadVendorRecipe(const fs::path& experiment) {
  for (const auto& [number, folder] : NumberedFolders(Sibling(experiment, "pdata"))) {
    ProcessingFile f2, f1;
    if (ParseProcessingFile(Sibling(folder, "procs"), f2) != 0 || !f2.originValid) continue;
    if (ParseProcessingFile(Sibling(folder, "proc2s"), f1) != 0 || !f1.originValid) continue;
    if (f2.recipe.si <= 0 || f1.recipe.si <= 0) continue;
    model::VendorRecipe r;
    r.axis[F2] = f2.recipe;
    r.axis[F1] = f1.recipe;
    r.f1Scheme = f1.mc2;
    r.scaleExponent = f2.ncProc;
    r.source = folder.string();
    return r;
  }
  return std::nullopt;
}

}  // namespace velk::formats::bruker
