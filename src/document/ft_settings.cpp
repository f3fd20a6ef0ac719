#include "document/ft_settings.h"

#include <cmath>
#include <string>
#include <utility>

#include "processing/fid_corrections.h"

namespace velk::document {

namespace {

// The keys end in 1 for F1 and 2 for F2.
std::string Key(const char* stem, model::Axis a) { return std::string(stem) + (a == model::F1 ? " 1" : " 2"); }

std::int32_t Whole(const core::Settings& s, const std::string& key) {
  return static_cast<std::int32_t>(std::lrint(core::Number(s, key)));
}

constexpr const char* kExpressionKeys[] = {"FUNCTION EXPONENT", "FUNCTION SINE BELL", "FUNCTION SINE BELL 2",
                                           "FUNCTION GAUSS", "FUNCTION BLACKMAN"};

}  // namespace

void LoadFtSettings(const core::Settings& from, processing::SequenceSettings& settings,
                    processing::WindowExpressions& expressions) {
  for (model::Axis a : {model::F1, model::F2}) {
    processing::LpSetting& lp = settings.axis[a].lp;
    // A value the file does not hold (0) leaves the program's own.
    for (auto [stem, field] : {std::pair{"LP ORDER", &lp.Order}, std::pair{"LP POINT", &lp.Points},
                               std::pair{"LP START", &lp.Start}, std::pair{"LP BACKWARD", &lp.BackPoints}})
      if (const std::int32_t v = Whole(from, Key(stem, a)); v > 0) *field = v;
    lp.StabilityCheck = Whole(from, Key("LP EX CHECK", a)) != 0 ? 1 : 0;
  }
  settings.t1Noise = core::Number(from, "FIST POINT COR 1") != 0;
  settings.t1Factor = processing::ClampT1NoiseFactor(static_cast<float>(core::Number(from, "FIST POINT COR 1 VAL")));
  for (int type = 0; type < 5; ++type) {
    const std::string& wording = core::Text(from, kExpressionKeys[type]);
    // A fresh settings file holds "0" for every value it has not been given.
    if (wording.empty() || wording == "0") continue;
    expressions.initial[type] = wording;
    expressions.current[type] = wording;
  }
}

void StoreFtSettings(const processing::SequenceSettings& settings, core::Settings& to) {
  for (model::Axis a : {model::F1, model::F2}) {
    const processing::LpSetting& lp = settings.axis[a].lp;
    core::SetNumber(to, Key("LP ORDER", a), lp.Order);
    core::SetNumber(to, Key("LP POINT", a), lp.Points);
    core::SetNumber(to, Key("LP START", a), lp.Start);
    core::SetNumber(to, Key("LP BACKWARD", a), lp.BackPoints);
    core::SetNumber(to, Key("LP EX CHECK", a), lp.StabilityCheck);
  }
  core::SetNumber(to, "FIST POINT COR 1", settings.t1Noise ? 1 : 0);
  core::SetNumber(to, "FIST POINT COR 1 VAL", settings.t1Factor);
}

}  // namespace velk::document
