#include "formats/jcamp/asdf.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace velk::formats::jcamp {
namespace {

enum class Kind : std::uint8_t { Other, Separator, Digit, Sign, Dot, Sqz, Dif, Dup, Unknown, Stop };

struct CharClass {
  Kind kind = Kind::Other;
  std::int8_t digit = 0;  // the digit it stands for, signed for SQZ and DIF
};

constexpr std::array<CharClass, 256> MakeClasses() {
  std::array<CharClass, 256> t{};
  t[' '] = t['\t'] = t[','] = {Kind::Separator, 0};
  for (int d = 0; d <= 9; ++d) t['0' + d] = {Kind::Digit, static_cast<std::int8_t>(d)};
  t['+'] = {Kind::Sign, 1};
  t['-'] = {Kind::Sign, -1};
  t['.'] = {Kind::Dot, 0};
  t['@'] = {Kind::Sqz, 0};
  t['%'] = {Kind::Dif, 0};
  for (int d = 1; d <= 9; ++d) {
    t['A' + d - 1] = {Kind::Sqz, static_cast<std::int8_t>(d)};
    t['a' + d - 1] = {Kind::Sqz, static_cast<std::int8_t>(-d)};
    t['J' + d - 1] = {Kind::Dif, static_cast<std::int8_t>(d)};
    t['j' + d - 1] = {Kind::Dif, static_cast<std::int8_t>(-d)};
  }
  for (int d = 1; d <= 8; ++d) t['S' + d - 1] = {Kind::Dup, static_cast<std::int8_t>(d)};
  t['s'] = {Kind::Dup, 9};
  t['?'] = {Kind::Unknown, 0};
  t['$'] = {Kind::Stop, 0};
  t[0] = {Kind::Stop, 0};
  return t;
}
constexpr std::array<CharClass, 256> kClasses = MakeClasses();

constexpr std::array<double, 23> kPowersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double Scale(double mantissa, int exponent) {
  if (exponent == 0) return mantissa;
  if (exponent > 0 && exponent < 23) return mantissa * kPowersOfTen[exponent];
  if (exponent < 0 && exponent > -23) return mantissa / kPowersOfTen[-exponent];
  return mantissa * std::pow(10.0, exponent);
}

const CharClass& ClassOf(const char* line, std::size_t at) {
  return kClasses[static_cast<unsigned char>(line[at])];
}

// Digits, an optional fraction and an optional exponent ("E" with a sign) from position on.
// Returns false for a second decimal point and for a number beyond the doubles.
bool ReadMagnitude(const char* line, std::size_t& p, std::uint64_t leading, bool haveLeading, double& magnitude) {
  std::uint64_t mantissa = leading;
  int digits = haveLeading ? 1 : 0;
  int fractionDigits = 0;
  bool inFraction = false;
  double overflow = 0;  // digits beyond what 64 bits hold, kept as a power of ten
  for (;; ++p) {
    const CharClass& c = ClassOf(line, p);
    if (c.kind == Kind::Digit) {
      if (digits < 19) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(c.digit);
        ++digits;
        if (inFraction) ++fractionDigits;
      } else if (!inFraction) {
        overflow += 1;
      }
    } else if (c.kind == Kind::Dot) {
      if (inFraction) return false;
      inFraction = true;
    } else {
      break;
    }
  }
  int exponent = static_cast<int>(overflow) - fractionDigits;
  const char e = line[p];
  if ((e == 'E' || e == 'e') && (line[p + 1] == '+' || line[p + 1] == '-') && ClassOf(line, p + 2).kind == Kind::Digit) {
    const int sign = line[p + 1] == '-' ? -1 : 1;
    p += 2;
    int power = 0;
    while (ClassOf(line, p).kind == Kind::Digit) {
      if (power < 1000) power = power * 10 + (line[p] - '0');
      ++p;
    }
    exponent += sign * power;
  }
  magnitude = Scale(static_cast<double>(mantissa), exponent);
  return std::isfinite(magnitude);  // an exponent beyond the doubles is no number of a spectrum
}

}  // namespace

AsdfItem DecodeAsdf(const char* line, std::size_t& p) {
  while (ClassOf(line, p).kind == Kind::Separator) ++p;
  const CharClass first = ClassOf(line, p);
  double magnitude = 0;
  switch (first.kind) {
    case Kind::Stop: return {AsdfForm::End, 0};
    case Kind::Unknown: ++p; return {AsdfForm::Unknown, 0};
    case Kind::Digit:
    case Kind::Dot:
      if (!ReadMagnitude(line, p, 0, false, magnitude)) return {AsdfForm::Error, 0};
      return {AsdfForm::Absolute, magnitude};
    case Kind::Sign:
      ++p;
      if (!ReadMagnitude(line, p, 0, false, magnitude)) return {AsdfForm::Error, 0};
      return {AsdfForm::Absolute, first.digit * magnitude};
    case Kind::Sqz:
    case Kind::Dif:
    case Kind::Dup: {
      ++p;
      const std::uint64_t lead = static_cast<std::uint64_t>(std::abs(first.digit));
      if (!ReadMagnitude(line, p, lead, true, magnitude)) return {AsdfForm::Error, 0};
      if (first.kind == Kind::Dup) return {AsdfForm::Duplicate, magnitude};
      const double value = first.digit < 0 ? -magnitude : magnitude;
      return {first.kind == Kind::Sqz ? AsdfForm::Absolute : AsdfForm::Difference, value};
    }
    case Kind::Separator:
    case Kind::Other: break;
  }
  return {AsdfForm::Error, 0};
}

namespace {

bool Fault(AsdfTable& table, AsdfFault fault) {
  table.fault = fault;
  return false;
}

// The X check of a line whose first value has the given index.
bool AbscissaFits(AsdfTable& table, double x, std::size_t first) {
  if (table.xStep == 0 || !std::isfinite(table.xStep)) return true;
  const double offset = static_cast<double>(first) * table.xStep;
  if (!table.xOrigin) {
    table.xOrigin = x - offset;
    return true;
  }
  return std::fabs(x - (*table.xOrigin + offset)) <= std::max(0.5 * std::fabs(table.xStep), 1.0);
}

bool SameValue(double a, double b) { return std::fabs(a - b) <= 1e-9 * std::max(1.0, std::fabs(b)); }

}  // namespace

bool DecodeAsdfLine(const char* line, AsdfTable& table) {
  std::size_t p = 0;
  const AsdfItem check = DecodeAsdf(line, p);
  if (check.form == AsdfForm::End) return true;
  if (check.form != AsdfForm::Absolute) return Fault(table, AsdfFault::BadCharacter);
  bool yCheckPending = table.previousEndedInDif && table.index > 0;
  if (!AbscissaFits(table, check.value, yCheckPending ? table.index - 1 : table.index))
    return Fault(table, AsdfFault::Abscissa);
  AsdfForm previous = AsdfForm::End;
  double step = 0;
  const auto store = [&](double value) {
    if (table.Full()) return Fault(table, AsdfFault::TooManyValues);
    if (!table.out.empty()) table.out[table.index] = value;
    ++table.index;
    return true;
  };
  for (;;) {
    const AsdfItem item = DecodeAsdf(line, p);
    if (yCheckPending && item.form != AsdfForm::Absolute && item.form != AsdfForm::End)
      return Fault(table, AsdfFault::Ordinate);
    switch (item.form) {
      case AsdfForm::End:
        table.previousEndedInDif = previous == AsdfForm::Difference;
        return true;
      case AsdfForm::Error: return Fault(table, AsdfFault::BadCharacter);
      case AsdfForm::Absolute:
        if (yCheckPending) {
          if (!SameValue(item.value, table.last)) return Fault(table, AsdfFault::Ordinate);
          --table.index;
        }
        table.last = item.value;
        if (!store(item.value)) return false;
        previous = AsdfForm::Absolute;
        break;
      case AsdfForm::Difference:
        table.last += item.value;
        step = item.value;
        if (!store(table.last)) return false;
        previous = AsdfForm::Difference;
        break;
      case AsdfForm::Unknown:
        // An unknown value is stored as 0 and leaves the running value alone.
        if (!store(0)) return false;
        previous = AsdfForm::Unknown;
        break;
      case AsdfForm::Duplicate:
        for (double k = 1; k < item.value; ++k) {
          if (previous == AsdfForm::Difference) table.last += step;
          if (!store(previous == AsdfForm::Unknown ? 0 : table.last)) return false;
        }
        break;
    }
    yCheckPending = false;
  }
}

std::string AsdfFaultText(AsdfFault fault, std::size_t declared) {
  switch (fault) {
    case AsdfFault::BadCharacter: return "a data line holds a character of no number form";
    case AsdfFault::Abscissa: return "the abscissa check fails: a line is missing";
    case AsdfFault::Ordinate: return "the ordinate check fails: a line is missing or damaged";
    case AsdfFault::TooManyValues: return "the table holds more than the " + std::to_string(declared) + " values declared";
    case AsdfFault::None: break;
  }
  return {};
}

std::string EncodeAsdf(std::int64_t number, AsdfCode form) {
  const bool negative = number < 0;
  std::string text = std::to_string(negative ? -number : number);
  static constexpr const char* kSqz[2] = {"@ABCDEFGHI", "@abcdefghi"};
  static constexpr const char* kDif[2] = {"%JKLMNOPQR", "%jklmnopqr"};
  static constexpr const char* kDup = "?STUVWXYZs";
  const int digit = text[0] - '0';
  switch (form) {
    case AsdfCode::Affn: return negative ? "-" + text : text;
    case AsdfCode::Pac: return (negative ? "-" : "+") + text;
    case AsdfCode::Sqz: text[0] = kSqz[negative][digit]; break;
    case AsdfCode::Dif: text[0] = kDif[negative][digit]; break;
    case AsdfCode::Dup: text[0] = kDup[digit]; break;
  }
  return text;
}

namespace {

// How many values after position continue the run: equal values (differences false) or equal
// steps (differences true).
std::size_t RunAfter(std::span<const std::int64_t> v, std::size_t position, bool differences) {
  std::size_t j = position + 1;
  if (differences) {
    const std::int64_t d = v[position] - v[position - 1];
    while (j < v.size() && v[j] - v[j - 1] == d) ++j;
  } else {
    while (j < v.size() && v[j] == v[position]) ++j;
  }
  return j - position - 1;
}

// Adds the DUP item of a run when it fits the line; otherwise the run's points stay for later.
void AddDup(std::string& line, std::size_t& position, std::size_t run) {
  if (run == 0) return;
  const std::string dup = EncodeAsdf(static_cast<std::int64_t>(run + 1), AsdfCode::Dup);
  if (line.size() + dup.size() > kAsdfLineLength) return;
  line += dup;
  position += run;
}

// The first value of a line in SQZ form, with a DUP item for the equal values after it.
void EncodeSqzDup(std::string& line, std::span<const std::int64_t> v, std::size_t& position) {
  line += EncodeAsdf(v[position], AsdfCode::Sqz);
  const std::size_t run = RunAfter(v, position, false);
  ++position;
  AddDup(line, position, run);
}

// DIF items until the line is full; true when the line ends in DIF form.
bool EncodeDifDup(std::string& line, std::span<const std::int64_t> v, std::size_t& position) {
  bool endedInDif = false;
  while (position < v.size() && line.size() < kAsdfLineLength) {
    const std::string item = EncodeAsdf(v[position] - v[position - 1], AsdfCode::Dif);
    if (line.size() + item.size() > kAsdfLineLength) break;
    line += item;
    endedInDif = true;
    const std::size_t run = RunAfter(v, position, true);
    ++position;
    AddDup(line, position, run);
  }
  return endedInDif;
}

}  // namespace

std::vector<std::string> EncodeDifDupLines(std::span<const std::int64_t> values, std::int64_t firstX,
                                           std::int64_t xStep) {
  std::vector<std::string> lines;
  std::size_t position = 0;
  bool endedInDif = false;
  while (position < values.size()) {
    if (endedInDif) --position;  // the Y check: the last value of the previous line comes again
    std::string line = std::to_string(firstX + static_cast<std::int64_t>(position) * xStep) + " ";
    EncodeSqzDup(line, values, position);
    endedInDif = EncodeDifDup(line, values, position);
    lines.push_back(std::move(line));
  }
  if (endedInDif) {
    const std::size_t last = values.size() - 1;
    lines.push_back(std::to_string(firstX + static_cast<std::int64_t>(last) * xStep) + " " +
                    EncodeAsdf(values[last], AsdfCode::Sqz));
  }
  return lines;
}

}  // namespace velk::formats::jcamp

namespace velk::formats::jcamp {

bool ReadAsdfTable(TextCursor& cursor, AsdfTable& table, std::size_t* faultLine) {
  while (!cursor.AtEnd()) {
    const std::size_t start = cursor.position;
    const std::string line = ReadTextLine(cursor);
    if (line.empty()) return true;
    if (line.front() == '#' || line.front() == '$') {
      cursor.position = start;
      return true;
    }
    if (!DecodeAsdfLine(line.c_str(), table)) {
      if (faultLine) *faultLine = start;
      return false;
    }
  }
  return true;
}

}  // namespace velk::formats::jcamp
