#include "layout/parameter_macros.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <map>

#include "core/text.h"
#include "layout/coded_text.h"
#include "layout/number_format.h"
#include "processing/window.h"

namespace velk::layout {
namespace {

using model::F1;
using model::F2;
using Source = ParameterSource;
using Value = std::function<std::string(const Source&)>;

enum class Unit { None, Percent, Hz, KHz, MHz, Seconds, Points, Ms, Ppm, Kelvin, Micro, Celsius };

std::string UnitWord(Unit unit, bool greek) {
  switch (unit) {
    case Unit::Percent: return " %";
    case Unit::Hz: return " Hz";
    case Unit::KHz: return " kHz";
    case Unit::MHz: return " MHz";
    case Unit::Seconds: return " s";
    case Unit::Points: return " points";
    case Unit::Ms: return " ms";
    case Unit::Ppm: return " ppm";
    case Unit::Kelvin: return " K";
    case Unit::Micro: return greek ? " \\g1 m\\g0 s" : " us";
    case Unit::Celsius: return greek ? " \\g1 \\'b0:\\g0 C" : " \\'b0:C";
    default: return {};
  }
}

// Plain text inside coded text: a backslash doubles.
std::string Escaped(std::string_view text) {
  std::string out;
  for (char c : text) {
    out += c;
    if (c == '\\') out += '\\';
  }
  return out;
}

constexpr std::string_view kDecimal = "####0.0###";

// A single-precision value with the shortest digits that still name it, so that 11.3f prints as
// 11.3 and not as the double nearest to it.
double OwnDigits(float value) {
  char buffer[48];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer - 1, value).ptr;
  *end = '\0';
  return std::strtod(buffer, nullptr);
}
constexpr std::string_view kWhole = "######0";

Value Number(std::function<double(const Source&)> get, std::string_view pattern = kDecimal, Unit unit = Unit::None) {
  return [get, pattern = std::string(pattern), unit](const Source& src) {
    return FormatNumber(get(src), pattern) + UnitWord(unit, src.greekUnits);
  };
}
Value Text(std::function<std::string(const Source&)> get) {
  return [get](const Source& src) { return Escaped(core::Trim(get(src))); };
}

struct Macro {
  std::string label;
  Value value;
};

// ---- dates ----

struct Date {
  int year = 0, month = 0, day = 0, hour = -1, minute = 0, second = 0;
  bool valid() const { return year > 0 && month >= 1 && month <= 12 && day >= 1 && day <= 31; }
};

constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// The stored date in its common forms: "23/Nov/2026 15:47:00", "2026/11/23 15:47:00",
// "23-NOV-2026 15:47:00", "2026-11-23T15:47:00".
Date ParseDate(std::string_view text) {
  std::vector<std::string> parts;
  std::string part;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    // The "T" between date and time of the ISO form separates like a blank.
    const bool isoT = c == 'T' && i > 0 && i + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[i - 1])) &&
                      std::isdigit(static_cast<unsigned char>(text[i + 1]));
    if (std::isalnum(static_cast<unsigned char>(c)) && !isoT) {
      part += c;
    } else if (!part.empty()) {
      parts.push_back(part);
      part.clear();
    }
  }
  if (!part.empty()) parts.push_back(part);
  Date d;
  if (parts.size() < 3) return d;
  auto number = [](const std::string& s) { return std::isdigit(static_cast<unsigned char>(s[0])) ? std::atoi(s.c_str()) : -1; };
  auto month = [&](const std::string& s) {
    for (int m = 0; m < 12; ++m)
      if (core::EqualsNoCase(s.substr(0, 3), kMonths[m])) return m + 1;
    return number(s);
  };
  if (parts[0].size() == 4) {
    d = {number(parts[0]), month(parts[1]), number(parts[2])};
  } else {
    d = {number(parts[2]), month(parts[1]), number(parts[0])};
  }
  if (parts.size() >= 6) {
    d.hour = number(parts[3]);
    d.minute = number(parts[4]);
    d.second = number(parts[5]);
  }
  return d;
}

std::string FormatDate(const Date& d, std::string_view form, bool weekday) {
  if (!d.valid()) return {};
  char buffer[64];
  const std::string_view mon = kMonths[d.month - 1];
  if (form == "mmm/dd/yyyy") std::snprintf(buffer, sizeof buffer, "%s/%02d/%04d", mon.data(), d.day, d.year);
  else if (form == "dd/mm/yyyy") std::snprintf(buffer, sizeof buffer, "%02d/%02d/%04d", d.day, d.month, d.year);
  else if (form == "yyyy/mmm/dd") std::snprintf(buffer, sizeof buffer, "%04d/%s/%02d", d.year, mon.data(), d.day);
  else if (form == "yyyy/mm/dd") std::snprintf(buffer, sizeof buffer, "%04d/%02d/%02d", d.year, d.month, d.day);
  else std::snprintf(buffer, sizeof buffer, "%02d/%s/%04d", d.day, mon.data(), d.year);
  std::string out = buffer;
  if (weekday) {
    std::tm t{};
    t.tm_year = d.year - 1900;
    t.tm_mon = d.month - 1;
    t.tm_mday = d.day;
    t.tm_hour = 12;
    std::mktime(&t);
    static constexpr std::string_view kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    out += "(" + std::string(kDays[t.tm_wday % 7]) + ")";
  }
  if (d.hour >= 0) {
    std::snprintf(buffer, sizeof buffer, " %02d:%02d:%02d", d.hour, d.minute, d.second);
    out += buffer;
  }
  return out;
}

Value DateAs(std::string_view form, bool weekday) {
  return [form = std::string(form), weekday](const Source& src) {
    const std::string formatted = FormatDate(ParseDate(src.s.params.DATIM), form, weekday);
    return formatted.empty() ? Escaped(src.s.params.DATIM) : formatted;
  };
}

// ---- window, 1D sets ----

// The window function of an axis with its factors, and the fill of the axis.
std::string WindowText(const Source& src, model::Axis axis) {
  const model::AxisInfo& info = src.s.axis[axis];
  const model::AxisExtras& extra = src.s.extras[axis];
  const int type = extra.windowNumber;
  std::string out(processing::WindowName(type));
  if (type == processing::kExponential) out += " BF=" + FormatNumber(info.window.BF, "##0.0##");
  if (type == processing::kGaussian)
    out += " GBF=" + FormatNumber(info.window.GBF, "##0.0##") + " GF=" + FormatNumber(info.window.GF, "##0.0##");
  const double fill = extra.fidPoints > 0 ? double(info.Point) / extra.fidPoints : 1;
  out += src.lp[axis].used ? "(LP Fill:" : "(ZeroFill:";
  out += src.greekUnits ? "\\g1 \\'b4:\\g0 " : "x ";
  return out + FormatNumber(fill, "##0.0#") + ")";
}

std::string TraceNames(const Source& src, std::string_view which) {
  std::string out;
  if (which != "F1" && !src.f2TraceName.empty()) out += Escaped(src.f2TraceName);
  if (which != "F2" && !src.f1TraceName.empty()) out += (out.empty() ? "" : ", ") + Escaped(src.f1TraceName);
  return out;
}

// ---- the table ----

using Table = std::map<std::string, Macro, std::less<>>;

void Add(Table& t, std::initializer_list<std::string_view> names, std::string_view label, Value value) {
  for (std::string_view name : names) t[std::string(name)] = {std::string(label), value};
}

double Fid(const Source& s, model::Axis a) { return s.s.extras[a].fidPoints; }

void AddAxisMacros(Table& t, model::Axis a) {
  const std::string f = a == F1 ? "F1" : "F2";
  Add(t, {f + "FRQ"}, f + "-ObsFreq", Number([a](const Source& s) { return s.s.extras[a].absFreqCenter; }, "####0.0########", Unit::MHz));
  Add(t, {f + "FRQ_0"}, f + "-ObsFreq(0ppm)", Number([a](const Source& s) { return s.s.extras[a].absFreq0ppm; }, "####0.0########", Unit::MHz));
  Add(t, {f + "PNT"}, f + "-Point", Number([a](const Source& s) { return s.s.axis[a].Point; }, "#########0"));
  Add(t, {f + "ORGPNT"}, f + "-OrgPoint", Number([a](const Source& s) { return Fid(s, a); }, "#########0"));
  Add(t, {f + "RES"}, f + "-Resol", Number([a](const Source& s) { return s.s.axis[a].Resolution; }, kDecimal, Unit::Hz));
  Add(t, {f + "SPAN"}, f + "-Span", Number([a](const Source& s) { return s.s.axis[a].Frequency; }, "########0.0##", Unit::Hz));
  Add(t, {f + "NUC"}, f + "-Nucleus", Text([a](const Source& s) { return s.s.extras[a].nucleus; }));
  Add(t, {f + "REF"}, f + "-Ref.", Number([a](const Source& s) { return s.s.axis[a].Reference; }, "####0.0####", Unit::Ppm));
  Add(t, {f + "REP"}, f + " Ref_Point", Number([a](const Source& s) { return s.s.axis[a].RefPoint; }, "#######0"));
  Add(t, {"WINDOW" + f}, "Window(" + f + ")", [a](const Source& s) { return WindowText(s, a); });
  Add(t, {f + "1DSPC"}, "1D Spec.(" + f + ")  ", [f](const Source& s) { return TraceNames(s, f); });
  const std::string tag = "(" + f + ")";
  auto window = [a](auto field) { return [a, field](const Source& s) { return double(field(s.s.axis[a].window)); }; };
  Add(t, {f + "BF"}, "Broad.Factor" + tag, Number(window([](const auto& w) { return w.BF; }), "##0.0##", Unit::Hz));
  Add(t, {f + "GBF"}, "Gaussian B.Factor" + tag, Number(window([](const auto& w) { return w.GBF; }), "##0.0##"));
  Add(t, {f + "GF"}, "Gaussian Factor" + tag, Number(window([](const auto& w) { return w.GF; }), "##0.0##"));
  for (int k = 0; k < 4; ++k)
    Add(t, {f + "T" + std::to_string(k + 1)}, "T" + std::to_string(k + 1) + tag,
        Number([a, k](const Source& s) { return s.s.extras[a].trapezoid[k]; }, "###0.0#", Unit::Percent));
  Add(t, {f + "WST"}, "Window Start" + tag, Number([a](const Source& s) {
        const int type = s.s.extras[a].windowNumber;
        return type >= 1 && type <= 4 ? s.s.axis[a].window.start[type - 1] : 0.0f;
      }));
  Add(t, {f + "WEND"}, "Window End" + tag, Number([a](const Source& s) {
        const int type = s.s.extras[a].windowNumber;
        const int slot = type == 1 ? 0 : type == 2 ? 1 : type == 4 ? 2 : -1;
        return slot >= 0 ? s.s.axis[a].window.end[slot] : 0.0f;
      }));
  const std::string lpTag = "(" + f + ")";
  auto lp = [a](auto field) { return [a, field](const Source& s) { return double(field(s.lp[a])); }; };
  const std::vector<std::string> alias = a == F2 ? std::vector<std::string>{""} : std::vector<std::string>{};
  auto names = [&](const std::string& key) {
    std::vector<std::string> n{f + key};
    for (const std::string& prefix : alias) n.push_back(prefix + key);
    return n;
  };
  for (const std::string& n : names("LPBACK")) Add(t, {n}, "LP Backward" + lpTag, Number(lp([](const LpValues& v) { return v.backward; }), "###0"));
  for (const std::string& n : names("LPORDER")) Add(t, {n}, "LP Order" + lpTag, Number(lp([](const LpValues& v) { return v.order; }), "###0"));
  for (const std::string& n : names("LPPOINT")) Add(t, {n}, "LP Points" + lpTag, Number(lp([](const LpValues& v) { return v.points; }), "###0"));
  for (const std::string& n : names("LPSTART")) Add(t, {n}, "LP Start" + lpTag, Number(lp([](const LpValues& v) { return v.start; }), "###0"));
}

void AddBrukerAxisMacros(Table& t, model::Axis a) {
  const std::string f = a == F1 ? "F1" : "F2";
  const std::string tag = "(" + f + ")";
  auto ax = [a](const Source& s) -> const model::AxisInfo& { return s.s.axis[a]; };
  auto ex = [a](const Source& s) -> const model::AxisExtras& { return s.s.extras[a]; };
  Add(t, {"B_" + f + "BF1", "B_" + f + "OBFR"}, "BF1" + tag, Number([ex](const Source& s) { return ex(s).absFreq0ppm; }, "####0.0########", Unit::MHz));
  Add(t, {"B_" + f + "FRQ"}, "SFO1" + tag, Number([ex](const Source& s) { return ex(s).absFreqCenter; }, "####0.0########", Unit::MHz));
  Add(t, {"B_" + f + "SF"}, "SF" + tag, Number([ex](const Source& s) { return ex(s).absFreq0ppm; }, "####0.0########", Unit::MHz));
  Add(t, {"B_" + f + "NUC"}, "NUCLEUS" + tag, Text([ex](const Source& s) { return ex(s).nucleus; }));
  Add(t, {"B_" + f + "O1"}, "O1" + tag, Number([ex](const Source& s) { return (ex(s).absFreqCenter - ex(s).absFreq0ppm) * 1e6; }, "######0.0########", Unit::Hz));
  Add(t, {"B_" + f + "OFFSET"}, "OFFSET" + tag, Number([a](const Source& s) {
        const auto& table = a == F1 ? s.s.ppmF1 : s.s.ppmF2;
        return table.empty() ? 0.0 : double(table.back());
      }, kDecimal, Unit::Ppm));
  Add(t, {"B_" + f + "PNT", "B_" + f + "SI"}, "SI" + tag, Number([ax](const Source& s) { return ax(s).Point; }, kWhole));
  Add(t, {"B_" + f + "REF"}, "Reference" + tag, Number([ax](const Source& s) { return ax(s).Reference; }, "####0.0####", Unit::Ppm));
  Add(t, {"B_" + f + "REP"}, "Ref.PT" + tag, Number([ax](const Source& s) { return ax(s).RefPoint; }, kWhole));
  Add(t, {"B_" + f + "RES"}, "HZpPT" + tag, Number([ax](const Source& s) { return ax(s).Resolution; }, kDecimal, Unit::Hz));
  Add(t, {"B_" + f + "SW_H"}, "SW_H" + tag, Number([ax](const Source& s) { return ax(s).Frequency; }, "########0.0##", Unit::Hz));
  Add(t, {"B_" + f + "TD"}, "TD" + tag, Number([a](const Source& s) { return Fid(s, a); }, kWhole));
  Add(t, {"B_" + f + "ACQ_MOD", a == F2 ? "(2D)B_ACQ_MOD2" : "(2D)B_ACQ_MOD1"}, "Acq_Mode" + tag,
      Number([ex](const Source& s) { return ex(s).acqMod; }, kWhole));
  Add(t, {a == F2 ? "(2D)FFT_MOD2" : "(2D)FFT_MOD1"}, "FFT_Mode" + tag + "(Bruker)", [ex](const Source& s) {
    const int mode = ex(s).adMode;
    return std::string(mode == 1 ? "for Single A/D" : mode == 2 ? "for Dual A/D" : "unknown A/D mode");
  });
}

Table BuildTable() {
  Table t;
  const auto p = [](auto field) {
    return [field](const Source& s) {
      const auto v = field(s.s.params);
      if constexpr (std::is_same_v<decltype(v), const float>) return OwnDigits(v);
      return double(v);
    };
  };
  const auto text = [](auto field) { return Text([field](const Source& s) { return std::string(field(s.s)); }); };
  // File and texts
  Add(t, {"DFILE"}, "File:  ", text([](const model::Spectrum2D& s) { return s.texts.fileName; }));
  Add(t, {"ORGFILE"}, "Original File:  ", text([](const model::Spectrum2D& s) { return s.texts.originalFileName; }));
  Add(t, {"PRNT_DATE"}, "Printed", [](const Source& s) {
    char buffer[40];
    std::strftime(buffer, sizeof buffer, "%d/%b/%Y %H:%M:%S", &s.printTime);
    return std::string(buffer);
  });
  Add(t, {"1DSPC", "SPC_1D"}, "1D Spec.(F1/F2)  ", [](const Source& s) { return TraceNames(s, "F1/F2"); });
  Add(t, {"WINDOW"}, "Window    ", [](const Source& s) { return WindowText(s, F2) + ", " + WindowText(s, F1); });
  Add(t, {"INSTRUM"}, "Instrument", text([](const model::Spectrum2D& s) { return s.texts.instrument; }));
  Add(t, {"PULSPRG", "PSSEQ"}, "PulseProgram", text([](const model::Spectrum2D& s) { return s.params.EXMOD; }));
  t["PSSEQ"].label = "Pulse Sequence";
  Add(t, {"GRDPROG"}, "GradientPRG", text([](const model::Spectrum2D& s) { return s.texts.gradientProgram; }));
  Add(t, {"PROBHD"}, "ProbeHD", text([](const model::Spectrum2D& s) { return s.texts.probeHead; }));
  Add(t, {"ADC_CARD"}, "A/D Card", text([](const model::Spectrum2D& s) { return s.texts.instrumentId; }));
  Add(t, {"ADBIT"}, "AD Bit", Number(p([](const auto& n) { return n.ADBIT; }), "####0"));
  Add(t, {"OPERT"}, "Operator", text([](const model::Spectrum2D& s) { return s.texts.operatorName; }));
  Add(t, {"COMNT"}, "Comment:", [](const Source& s) {
    return s.s.comment.empty() ? Escaped(s.s.params.COMNT) : StripCodes(s.s.comment).first;
  });
  Add(t, {"SAMPLEID"}, "Sample ID:", text([](const model::Spectrum2D& s) { return s.texts.sampleId; }));
  Add(t, {"EXPCM"}, "ExpComnt", text([](const model::Spectrum2D& s) { return s.params.EXPCM; }));
  Add(t, {"EXMOD"}, "ExMode", text([](const model::Spectrum2D& s) { return s.params.EXMOD; }));
  Add(t, {"SLVNT"}, "Solvent", text([](const model::Spectrum2D& s) { return s.params.SLVNT; }));
  Add(t, {"SMODE"}, "SMODE", Number(p([](const auto& n) { return n.SMODE; }), kWhole));
  // Dates
  Add(t, {"DATIM_O"}, "Date", Text([](const Source& s) { return s.s.params.DATIM; }));
  Add(t, {"DATIM"}, "DATE", Text([](const Source& s) { return s.s.params.DATIM; }));
  Add(t, {"DATIM_J", "DATIM_J1", "DATIM_J2"}, "Date", DateAs("mmm/dd/yyyy", false));
  Add(t, {"DATIM_J3"}, "Date", DateAs("dd/mm/yyyy", false));
  Add(t, {"DATIM_W"}, "Date", DateAs("dd/mmm/yyyy", true));
  Add(t, {"DATIM_W1"}, "Date", DateAs("yyyy/mmm/dd", true));
  Add(t, {"DATIM_W2"}, "Date", DateAs("mmm/dd/yyyy", true));
  Add(t, {"DATIM_W3"}, "Date", DateAs("yyyy/mm/dd", true));
  // Acquisition
  Add(t, {"ACCPD"}, "Acc. Interval", Number([](const Source& s) { return s.s.cycleTime; }, "####0.0###", Unit::Seconds));
  Add(t, {"ACQTM"}, "Acq.Time", Number(p([](const auto& n) { return n.ACQTM; }), kDecimal, Unit::Seconds));
  Add(t, {"CSPED"}, "Spinning", Number(p([](const auto& n) { return n.CSPED; }), "###0.0", Unit::Hz));
  Add(t, {"CTEMP"}, "Temperature", Number(p([](const auto& n) { return n.CTEMP; }), "###0.0", Unit::Celsius));
  Add(t, {"CTEMP_K"}, "Temperature", Number(p([](const auto& n) { return n.CTEMP + 273.15; }), "###0.0", Unit::Kelvin));
  Add(t, {"DELAY"}, "Delay", Number(p([](const auto& n) { return n.DELAY; }), kDecimal, Unit::Seconds));
  Add(t, {"DEADT"}, "Dead Time", Number(p([](const auto& n) { return n.DEADT; }), kDecimal, Unit::Micro));
  Add(t, {"DTYPE"}, "Data Type", text([](const model::Spectrum2D& s) { return s.texts.dataTypeText; }));
  Add(t, {"DUMMY"}, "Dummy Scan", Number(p([](const auto& n) { return n.DUMMY; }), kWhole));
  Add(t, {"FIDSFT"}, "FID Shift", Number([](const Source& s) { return s.s.fidShift; }, kWhole, Unit::Points));
  Add(t, {"FLT", "FILTR"}, "Filter", Number(p([](const auto& n) { return n.FILTR; }), kDecimal, Unit::Hz));
  Add(t, {"INTVL"}, "Interval", Number(p([](const auto& n) { return n.INTVL; }), kDecimal, Unit::Seconds));
  Add(t, {"INWT"}, "Initial Wait", Number(p([](const auto& n) { return n.IWT; }), "#####0.0#######", Unit::Seconds));
  // The one-bond coupling the pulse programs keep in their second constant.
  Add(t, {"JCNST"}, "J-CH Const.", Number([](const Source& s) { return s.s.vendor.constants[2]; }, kDecimal, Unit::Hz));
  // Named in the lists, but no reader keeps these values: the label prints with an empty value.
  const Value none = [](const Source&) { return std::string(); };
  Add(t, {"CHECK"}, "Check", none);
  Add(t, {"FLTMOD"}, "Filter Type", none);
  Add(t, {"IRMOD"}, "IrrMode", none);
  for (int k = 0; k < 5; ++k) {
    const std::string i = std::to_string(k + 1);
    Add(t, {"LOOP" + i}, "Loop" + i, Number(p([k](const auto& n) { return n.LOOP[k]; }), kWhole));
    Add(t, {"PI" + i}, "PI" + i, Number(p([k](const auto& n) { return n.PI[k]; }), kDecimal, Unit::Seconds));
    Add(t, {"PS" + i}, "PS" + i, Number(p([k](const auto& n) { return n.PS[k]; }), kDecimal, Unit::Micro));
    Add(t, {"PW" + i}, "PulseWidth" + i, Number(p([k](const auto& n) { return n.PW[k]; }), kDecimal, Unit::Micro));
  }
  Add(t, {"PD"}, "PD", Number(p([](const auto& n) { return n.PD; }), kDecimal, Unit::Seconds));
  Add(t, {"RGAIN"}, "Receiver Gain", Number(p([](const auto& n) { return n.RGAIN; }), kWhole));
  Add(t, {"SCANS"}, "Scan", Number(p([](const auto& n) { return n.SCANS; }), kWhole));
  Add(t, {"SPEED"}, "Speed(Set)", Number(p([](const auto& n) { return n.CSPED; }), "###0.0", Unit::Hz));
  Add(t, {"TIMES"}, "Scan(Set)", Number(p([](const auto& n) { return n.TIMES; }), kWhole));
  Add(t, {"TOSCN"}, "TotalScan", Number(p([](const auto& n) { return n.TOSCN; }), kWhole));
  for (int k = 0; k < 4; ++k)
    Add(t, {"T" + std::to_string(k + 1)}, "T" + std::to_string(k + 1),
        Number([k](const Source& s) { return s.s.extras[F2].trapezoid[k]; }, "###0.0#", Unit::Percent));
  // Observe
  Add(t, {"OBATN"}, "ObsAttn", Number(p([](const auto& n) { return n.OBATN; }), "#####0"));
  Add(t, {"OBFIN"}, "ObsFine", Number(p([](const auto& n) { return n.OBFIN; })));
  Add(t, {"OBFN2"}, "ObsFine2", Number(p([](const auto& n) { return n.OBFN2; })));
  Add(t, {"OBNUC"}, "Obs.Nucleus", text([](const model::Spectrum2D& s) { return s.params.OBNUC; }));
  Add(t, {"OBPHS"}, "ObsPhase", Number(p([](const auto& n) { return n.OBPHS; }), "#####0.0"));
  Add(t, {"OBSET"}, "ObsSet", Number(p([](const auto& n) { return n.OBSET; })));
  Add(t, {"OBST2"}, "ObsSet2", Number(p([](const auto& n) { return n.OBST2; })));
  Add(t, {"OFR", "OBFRQ"}, "ObsFreq", Number(p([](const auto& n) { return n.OFR; }), "####0.0##", Unit::MHz));
  Add(t, {"FREQU"}, "RW-Freq.", Number(p([](const auto& n) { return n.FREQU; }), kDecimal, Unit::Hz));
  Add(t, {"POINT"}, "RW-Point", Number(p([](const auto& n) { return n.POINT; }), "######0"));
  Add(t, {"RESOL"}, "RW-Resol.", Number(p([](const auto& n) { return n.RESOL; }), kDecimal, Unit::Hz));
  Add(t, {"CLFRQ"}, "CL-Freq.", Number(p([](const auto& n) { return n.CLFRQ; }), kDecimal, Unit::Hz));
  Add(t, {"CLPNT"}, "CL-Point", Number(p([](const auto& n) { return n.CLPNT; }), kWhole));
  Add(t, {"CLEXR"}, "F1-Ref.", Number([](const Source& s) { return s.s.axis[F1].Reference; }, "####0.0####", Unit::Ppm));
  Add(t, {"CLRSO"}, "CL-Resol", Number(p([](const auto& n) { return n.CLRSO; }), kDecimal, Unit::Hz));
  Add(t, {"REFEX", "EXREF"}, "F2-Ref.", Number([](const Source& s) { return s.s.axis[F2].Reference; }, "####0.0####", Unit::Ppm));
  // Irradiation and the third channel
  Add(t, {"IFR", "IRFRQ"}, "IrrFreq", Number(p([](const auto& n) { return n.IRFRQ; }), "####0.0##", Unit::MHz));
  Add(t, {"IRATN"}, "IrrAttn", Number(p([](const auto& n) { return n.IRATN; }), "#####0"));
  Add(t, {"IRFIN"}, "IrrFine", Number(p([](const auto& n) { return n.IRFIN; })));
  Add(t, {"IRFN2"}, "IrrFine2", Number(p([](const auto& n) { return n.IRFN2; })));
  Add(t, {"IRNUC"}, "Irr.Nucleus", text([](const model::Spectrum2D& s) { return s.params.IRNUC; }));
  Add(t, {"IRPHS"}, "IrrPhase", Number(p([](const auto& n) { return n.IRPHS; }), "#####0.0"));
  Add(t, {"IRRPW"}, "IrrPulse", Number(p([](const auto& n) { return n.IRRPW; }), kWhole, Unit::Micro));
  Add(t, {"IRSET"}, "IrrSet", Number(p([](const auto& n) { return n.IRSET; })));
  Add(t, {"IRST2"}, "IrrSet2", Number(p([](const auto& n) { return n.IRST2; })));
  Add(t, {"TRATN"}, "TrAttn", Number(p([](const auto& n) { return n.TRATN; }), "#####0"));
  Add(t, {"TRFIN"}, "TrFine", Number(p([](const auto& n) { return n.TRFIN; })));
  Add(t, {"TRFN2"}, "TrFine2", Number(p([](const auto& n) { return n.TRFN2; })));
  Add(t, {"TRFRQ"}, "TrFreq", Number(p([](const auto& n) { return n.TRFRQ; }), "####0.0##", Unit::MHz));
  Add(t, {"TRNUC"}, "Tr.Nucleus", text([](const model::Spectrum2D& s) { return s.params.TRNUC; }));
  Add(t, {"TRPHS"}, "TrPhase", Number(p([](const auto& n) { return n.TRPHS; }), "#####0.0"));
  Add(t, {"TRRPW"}, "TrPulse", Number(p([](const auto& n) { return n.TRRPW; }), kWhole, Unit::Micro));
  Add(t, {"TRSET"}, "TrSet", Number(p([](const auto& n) { return n.TRSET; })));
  Add(t, {"TRST2"}, "TrSet2", Number(p([](const auto& n) { return n.TRST2; })));
  Add(t, {"TR"}, "TR", Number(p([](const auto& n) { return n.TR; })));
  // Window detail without an axis: the F2 axis, which the 1D sets share
  Add(t, {"BF"}, "Broad.Factor", Number([](const Source& s) { return s.s.axis[F2].window.BF; }, "##0.0##", Unit::Hz));
  Add(t, {"GBF"}, "Gaussian B.Factor", Number([](const Source& s) { return s.s.axis[F2].window.GBF; }, "##0.0##"));
  Add(t, {"GF"}, "Gaussian Factor", Number([](const Source& s) { return s.s.axis[F2].window.GF; }, "##0.0##"));
  // 2D
  Add(t, {"2DXCHG"}, "F1 Exchange", [](const Source& s) { return std::string(s.f1Exchanged ? "F1 Exchanged" : "non"); });
  Add(t, {"2DEDIT"}, "FID Edit", [](const Source& s) { return std::string(s.fidArranged ? "arranged" : "non"); });
  AddAxisMacros(t, F1);
  AddAxisMacros(t, F2);
  Add(t, {"TOP_LV"}, "Top Level", Number([](const Source& s) { return s.s.UpperLimit; }, "####0.0#"));
  Add(t, {"BASE_LV"}, "Base Level", Number([](const Source& s) { return s.s.LowerLimit; }, "####0.0#"));
  Add(t, {"C_FRQ", "FRQ_C"}, "Freq.(Centre)", Number([](const Source& s) { return s.s.extras[F2].absFreqCenter; }, "####0.0########", Unit::MHz));
  Add(t, {"FRQ_0"}, "Freq.(at 0 ppm)", Number([](const Source& s) { return s.s.extras[F2].absFreq0ppm; }, "####0.0########", Unit::MHz));
  // Bruker names
  AddBrukerAxisMacros(t, F1);
  AddBrukerAxisMacros(t, F2);
  Add(t, {"B_ACQ_MOD", "ACQ_MOD"}, "Acq_Mode", Number([](const Source& s) { return s.s.extras[F2].acqMod; }, kWhole));
  Add(t, {"B_DE"}, "DE", Number(p([](const auto& n) { return n.DEADT; }), kDecimal, Unit::Micro));
  Add(t, {"B_DECNUC"}, "DECNUC", text([](const model::Spectrum2D& s) { return s.params.IRNUC; }));
  Add(t, {"B_DS"}, "DS", Number(p([](const auto& n) { return n.DUMMY; }), kWhole));
  Add(t, {"B_BF1"}, "BF1", Number([](const Source& s) { return s.s.extras[F2].absFreq0ppm; }, "####0.0########", Unit::MHz));
  Add(t, {"B_FRQ", "FRQ"}, "SFO1", Number(p([](const auto& n) { return n.OFR; }), "####0.0########", Unit::MHz));
  Add(t, {"B_FW"}, "FW", Number(p([](const auto& n) { return n.FILTR; }), kDecimal, Unit::Hz));
  Add(t, {"B_NS"}, "NS", Number(p([](const auto& n) { return n.SCANS; }), kWhole));
  Add(t, {"B_NUC", "NUC"}, "NUCLEUS", text([](const model::Spectrum2D& s) { return s.params.OBNUC; }));
  Add(t, {"B_O1"}, "O1", Number([](const Source& s) { return (s.s.extras[F2].absFreqCenter - s.s.extras[F2].absFreq0ppm) * 1e6; }, "######0.0########", Unit::Hz));
  Add(t, {"B_OFFSET"}, "OFFSET", t["B_F2OFFSET"].value);
  Add(t, {"B_PNT", "PNT", "B_SI"}, "SI", Number([](const Source& s) { return s.s.axis[F2].Point; }, kWhole));
  Add(t, {"B_REFP", "REFP"}, "Ref.Point", Number([](const Source& s) { return s.s.axis[F2].RefPoint; }, kWhole));
  Add(t, {"B_RES", "RES", "HZPPT"}, "HZpPT", Number([](const Source& s) { return s.s.axis[F2].Resolution; }, kDecimal, Unit::Hz));
  Add(t, {"B_REF", "REF"}, "Reference", Number([](const Source& s) { return s.s.axis[F2].Reference; }, "####0.0####", Unit::Ppm));
  Add(t, {"B_RG"}, "RG", Number(p([](const auto& n) { return n.RGAIN; }), kWhole));
  Add(t, {"B_RO"}, "RO", Number(p([](const auto& n) { return n.CSPED; }), "###0.0", Unit::Hz));
  Add(t, {"B_SF"}, "SF", Number([](const Source& s) { return s.s.extras[F2].absFreq0ppm; }, "####0.0########", Unit::MHz));
  Add(t, {"B_SW_H"}, "SW_H", Number([](const Source& s) { return s.s.axis[F2].Frequency; }, "########0.0##", Unit::Hz));
  Add(t, {"B_TE"}, "TE", Number(p([](const auto& n) { return n.CTEMP + 273.15; }), "###0.0", Unit::Kelvin));
  Add(t, {"B_TD"}, "TD", Number([](const Source& s) { return Fid(s, F2); }, kWhole));
  return t;
}

const Table& Macros() {
  static const Table table = BuildTable();
  return table;
}

// "D[3]", "P[1]", "CNST[12]", "IN[1]": an element of a vendor table; nothing when it is no such name.
std::optional<std::string> ArrayValue(std::string_view macro, const Source& src) {
  const std::size_t open = macro.find('['), close = macro.find(']');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
  const std::string name = core::ToUpper(macro.substr(0, open));
  const int index = std::atoi(std::string(macro.substr(open + 1, close - open - 1)).c_str());
  const model::VendorAcquisition& v = src.s.vendor;
  const std::array<float, 32>* table = name == "D" ? &v.delays : name == "P" ? &v.pulses
                                      : name == "CNST" ? &v.constants : name == "IN" ? &v.increments : nullptr;
  if (!table) return std::nullopt;
  if (index < 1 || index > 31) return std::string();
  return FormatPlainOrExp(OwnDigits((*table)[index]), 3, src.greekUnits ? ExponentSigns::Symbol : ExponentSigns::Plain);
}

}  // namespace

bool IsKnownMacro(std::string_view macro) { return Macros().count(core::ToUpper(macro)) > 0; }

ParameterList MacroParameterList() {
  ParameterList list;
  for (const auto& [name, macro] : Macros()) list.push_back({name, core::Trim(macro.label), {}});
  return list;
}

std::optional<RenderedParameter> RenderParameter(const ParameterLine& line, const ParameterSource& source) {
  if (line.Kind == ";") return std::nullopt;
  if (line.Kind == "$") return RenderedParameter{Escaped(line.Text), {}, true};
  const auto found = Macros().find(core::ToUpper(line.Kind));
  if (found != Macros().end()) {
    std::string value = found->second.value(source);
    const std::string label = line.Label.empty() ? found->second.label : line.Label;
    // The 1D macros without a shown set print their label alone, two blanks in front.
    if (value.empty() && line.Kind.find("1DSPC") != std::string::npos) return RenderedParameter{"  " + Escaped(label), {}};
    return RenderedParameter{Escaped(label), value + Escaped(line.Text)};
  }
  if (const auto element = ArrayValue(line.Kind, source))
    return RenderedParameter{Escaped(line.Label.empty() ? line.Kind : line.Label), *element + Escaped(line.Text)};
  return RenderedParameter{Escaped(line.Label.empty() ? line.Kind : line.Label), Escaped(line.Text)};
}

}  // namespace velk::layout
