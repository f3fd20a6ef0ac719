#include "native/parameters_2d.h"

#include <algorithm>

#include "core/text.h"
#include "native/param_codec.h"

namespace velk::native {
namespace {

using model::F1;
using model::F2;

constexpr std::uint64_t kSolventFirst = 1232;
constexpr std::uint64_t kSolventRest = 608;
constexpr std::size_t kSolventRestWidth = 26;
constexpr std::uint8_t kSolventBreak = 13;
// TRNUC is written one byte behind the place it is read from; the reader skips the zero byte in
// front and so loses an eighth character. Kept as it is for the files that exist.
constexpr std::uint64_t kTrNucRead = 1240;
constexpr std::uint64_t kTrNucWrite = 1241;
constexpr std::uint64_t kGainAt = 368;

// One axis of the block: F2 values from 1280, F1 values 112 bytes further.
template <class S, class V>
void VisitAxis(S& s, int axis, V& v) {
  const std::uint64_t o = axis == F2 ? 0 : 112;
  auto& info = s.axis[axis];
  auto& extra = s.extras[axis];
  auto& window = info.window;
  v.Long(1280 + o, info.Point);
  v.Float(1284 + o, info.Frequency);
  v.Double(1288 + o, info.Resolution);
  v.Long(1296 + o, info.RefPoint);
  v.Float(1300 + o, info.Reference);
  v.Float(1304 + o, window.BF);
  for (int i = 0; i < 4; ++i) v.Float(1308 + o + 4 * i, extra.trapezoid[i]);
  v.Float(1324 + o, window.start[0]);
  v.Float(1328 + o, window.end[0]);
  v.Double(1344 + o, extra.absFreqCenter);
  v.Double(1352 + o, extra.absFreq0ppm);
  v.Double(1376 + o, extra.ppmStep);
  v.FloatKept(1388 + o, window.GF, false);
  // The window values of shapes 2 to 4 stand in a later part of the block, 48 bytes per axis.
  const std::uint64_t w = axis == F2 ? 0 : 48;
  v.FloatKept(1536 + w, window.GBF, true);
  v.Float(1540 + w, window.start[1]);
  v.FloatKept(1544 + w, window.end[1], false);
  v.Float(1548 + w, window.start[2]);
  v.Float(1552 + w, window.start[3]);
  v.FloatKept(1556 + w, window.end[2], false);
  v.Word(axis == F2 ? 1632 : 1628, extra.acqMod);
  v.Word(axis == F2 ? 1640 : 1636, extra.adMode);
}

template <class S, class V>
void VisitParameters(S& s, V& v) {
  auto& p = s.params;
  auto& t = s.texts;
  v.Word(20, s.extras[F1].acqMod);
  v.Word(24, s.extras[F2].acqMod);
  v.Float(28, p.ADBIT);
  v.Float(32, p.ACQTM);
  v.Long(48, s.extras[F1].fidPoints);
  v.Float(72, p.CSPED);
  v.Float(76, p.CTEMP);
  v.Float(80, p.DELAY);
  v.Float(84, p.DEADT);
  v.Word(88, p.DTYPE);
  v.Long(92, p.DUMMY);
  v.Long(100, s.extras[F2].fidPoints);
  v.Float(104, p.FILTR);
  v.Float(116, p.IRFRQ);
  v.Word(124, p.IRATN);
  v.Float(128, p.IRFIN);
  v.Float(132, p.IRFN2);
  v.Float(136, p.IRPHS);
  v.Float(148, p.IRSET);
  v.Float(152, p.IRST2);
  v.Word(232, p.OBATN);
  v.Float(236, p.OBFIN);
  v.Float(240, p.OBFN2);
  v.Float(244, p.OFR);
  v.Float(248, p.OBPHS);
  v.Float(252, p.OBSET);
  v.Float(256, p.OBST2);
  v.Float(260, p.PD);
  for (int i = 0; i < 5; ++i) v.Float(264 + 4 * i, p.PI[i]);
  v.Long(284, p.POINT);
  for (int i = 0; i < 5; ++i) v.Float(328 + 4 * i, p.PW[i]);
  v.Long(384, p.SCANS);
  v.Word(456, p.TRATN);
  v.Float(460, p.TRFIN);
  v.Float(464, p.TRFN2);
  v.Float(468, p.TRFRQ);
  v.Float(472, p.TRPHS);
  v.Float(488, p.TRSET);
  v.Float(492, p.TRST2);
  v.Text(576, 32, p.DATIM);
  v.Text(640, 32, p.EXMOD);
  v.Text(672, 256, p.EXPCM);
  v.Text(960, 32, t.gradientProgram);
  v.Text(992, 32, t.instrument);
  v.Text(1056, 8, p.IRNUC);
  v.Text(1064, 8, p.OBNUC);
  v.Text(1104, 32, t.probeHead);
  v.Text(2304, 64, t.operatorName);
  v.Text(2368, 32, t.instrumentId);
  for (int axis : {F2, F1}) VisitAxis(s, axis, v);
  v.Long(1512, s.fidShift);
  v.Word(1516, s.Modified);
}

}  // namespace

std::string ReadSolvent2D(Bytes block) {
  std::size_t firstWidth = 8;
  if (Read<std::uint8_t>(block, kSolventFirst + 6) == kSolventBreak) firstWidth = 6;
  else if (Read<std::uint8_t>(block, kSolventFirst + 7) == kSolventBreak) firstWidth = 7;
  const std::string raw = ReadTextBytes(block, kSolventFirst, firstWidth) +
                          ReadTextBytes(block, kSolventRest, kSolventRestWidth);
  return core::Cp932ToUtf8(core::Trim(raw));
}

void StoreSolvent2D(MutableBytes block, const std::string& solvent) {
  const std::string bytes = core::Utf8ToCp932(solvent);
  if (bytes.size() <= 8) {
    StoreText(block, kSolventFirst, 8, solvent);
    StoreText(block, kSolventRest, kSolventRestWidth, "");
    return;
  }
  // Seven single bytes, or six when a two-byte character would cross the limit, then the break.
  const std::string first = core::CutShiftJis(bytes, 7);
  const std::string rest = core::CutShiftJis(std::string_view(bytes).substr(first.size()), kSolventRestWidth);
  std::fill_n(block.begin() + kSolventFirst, 8, std::uint8_t{0});
  std::copy(first.begin(), first.end(), block.begin() + kSolventFirst);
  block[kSolventFirst + first.size()] = kSolventBreak;
  std::fill_n(block.begin() + kSolventRest, kSolventRestWidth, std::uint8_t{0});
  std::copy(rest.begin(), rest.end(), block.begin() + kSolventRest);
}

void DecodeParameters2D(Bytes block, model::Spectrum2D& s) {
  const FieldDecoder decoder{block};
  VisitParameters(s, decoder);
  s.params.RGAIN = ReadLong(block, kGainAt);
  s.params.SLVNT = ReadSolvent2D(block);
  s.params.TRNUC = ReadText(block, kTrNucRead, 8);
  s.extras[F2].windowNumber = ReadWindowNumber(block, 1332);
  s.extras[F1].windowNumber = ReadWindowNumber(block, 1444);
  for (int axis : {F2, F1}) s.extras[axis].ppmFirst = Read<float>(block, axis == F2 ? 1384 : 1496);
  s.carried.parameterBlock.assign(block.begin(), block.end());
  s.carried.parameterBlock.resize(kParameterBlockSize, 0);
}

std::vector<std::uint8_t> EncodeParameters2D(const model::Spectrum2D& s) {
  std::vector<std::uint8_t> bytes = s.carried.parameterBlock;
  bytes.resize(kParameterBlockSize, 0);
  const MutableBytes block(bytes);
  const FieldEncoder encoder{block};
  VisitParameters(s, encoder);
  Store(block, 16, s.params.ACQTM + s.params.PD);  // the cycle time
  Store(block, kGainAt, StoredGain(s.params.RGAIN));
  if (ReadSolvent2D(block) != s.params.SLVNT) StoreSolvent2D(block, s.params.SLVNT);
  // Seven bytes only: the eighth would run into the next field.
  if (ReadText(block, kTrNucRead, 8) != s.params.TRNUC) {
    Store<std::uint8_t>(block, kTrNucRead, 0);
    StoreText(block, kTrNucWrite, 7, s.params.TRNUC);
  }
  if (ReadWindowNumber(block, 1332) != s.extras[F2].windowNumber) StoreWindowNumber(block, 1332, s.extras[F2].windowNumber);
  if (ReadWindowNumber(block, 1444) != s.extras[F1].windowNumber) StoreWindowNumber(block, 1444, s.extras[F1].windowNumber);
  for (int axis : {F2, F1}) {
    const std::uint64_t at = axis == F2 ? 1384 : 1496;
    if (Read<float>(block, at) != static_cast<float>(s.extras[axis].ppmFirst))
      Store(block, at, static_cast<float>(s.extras[axis].ppmFirst));
  }
  return bytes;
}

std::int16_t ReadWindowNumber(Bytes block, std::uint64_t at) {
  const float asFloat = Read<float>(block, at);
  if (asFloat >= 1.0f && asFloat <= 4.0f) return static_cast<std::int16_t>(asFloat);
  const std::int32_t asLong = Read<std::int32_t>(block, at);
  if (asLong >= 1 && asLong <= 4) return static_cast<std::int16_t>(asLong);
  return 0;
}

void StoreWindowNumber(MutableBytes block, std::uint64_t at, std::int16_t number) {
  Store(block, at, number);
  Store<std::int16_t>(block, at + 2, 0);
}

}  // namespace velk::native
