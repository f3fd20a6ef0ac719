#include "native/parameters_1d.h"

#include "native/param_codec.h"
#include "native/parameters_2d.h"

namespace velk::native {
namespace {

constexpr std::uint64_t kGainAt = 656;
constexpr std::uint64_t kFirstAxisValueAt = 1296;
constexpr std::uint64_t kVerticalRangeAt = 1104;
constexpr float kDefaultVerticalRange = 10.6f;

template <class S, class V>
void VisitParameters(S& s, V& v) {
  auto& p = s.params;
  auto& t = s.texts;
  auto& w = s.window;
  v.Text(16, 32, p.DATIM);
  v.Text(48, 32, t.probeHead);
  v.Text(80, 32, t.instrument);
  v.Text(144, 32, t.gradientProgram);
  v.Float(384, p.CSPED);
  v.Float(392, p.CTEMP);
  v.Word(428, p.DTYPE);
  v.Float(468, p.OFR);
  v.Float(472, p.OBSET);
  v.Float(476, p.OBFIN);
  v.Float(480, p.OBST2);
  v.Float(484, p.OBFN2);
  v.Word(488, p.OBATN);
  v.Float(492, p.IRFRQ);
  v.Float(496, p.IRSET);
  v.Float(500, p.IRFIN);
  v.Float(504, p.IRST2);
  v.Float(508, p.IRFN2);
  v.Float(512, p.IRPHS);
  v.Word(516, p.IRATN);
  v.Word(520, p.IRRPW);
  v.Float(528, p.TRFRQ);
  v.Float(532, p.TRSET);
  v.Float(536, p.TRFIN);
  v.Float(540, p.TRST2);
  v.Float(544, p.TRFN2);
  v.Float(548, p.TRPHS);
  v.Word(552, p.TRATN);
  v.Word(556, p.TRRPW);
  for (int i = 0; i < 5; ++i) v.Long(564 + 4 * i, p.LOOP[i]);
  for (int i = 0; i < 5; ++i) v.Float(584 + 4 * i, p.PS[i]);
  v.Float(624, p.TR);
  v.Float(628, p.IWT);
  v.Float(632, p.DEADT);
  v.Float(636, p.DELAY);
  v.Float(644, p.INTVL);
  v.Float(648, p.FILTR);
  v.Float(660, p.ADBIT);
  v.Text(672, 8, p.OBNUC);
  v.Text(680, 8, p.IRNUC);
  v.Text(688, 8, p.TRNUC);
  v.Text(696, 16, p.SLVNT);
  v.Text(712, 32, p.EXMOD);
  v.Text(744, 256, p.EXPCM);
  v.Long(1040, p.TIMES);
  v.Long(1044, p.SCANS);
  v.Long(1048, p.DUMMY);
  v.Long(1052, p.TOSCN);
  v.Float(1056, p.ACQTM);
  v.Float(1060, p.PD);
  for (int i = 0; i < 5; ++i) v.Float(1064 + 4 * i, p.PW[i]);
  for (int i = 0; i < 5; ++i) v.Float(1084 + 4 * i, p.PI[i]);
  v.Long(1136, p.POINT);
  v.Float(1140, p.FREQU);
  v.Double(1144, p.RESOL);
  v.Long(1152, p.SMTMS);
  v.Float(1160, w.BF);
  v.Float(1180, w.start[0]);
  v.Float(1184, w.end[0]);
  v.Double(1200, s.absFreqCenter);
  v.Double(1208, s.absFreq0ppm);
  v.Long(1272, s.fidShift);
  v.Float(1276, p.SMEXR);
  v.Double(1288, s.axisStep);
  v.Float(kFirstAxisValueAt, s.axisFirst);
  v.Float(1300, w.GF);
  v.Float(1304, w.GBF);
  v.Float(1308, w.start[1]);
  v.Float(1312, w.start[2]);
  v.Float(1316, w.start[3]);
  v.Float(1320, w.end[1]);
  v.Float(1324, w.end[2]);
  v.Text(2064, 64, t.operatorName);
  v.Text(2128, 32, t.instrumentId);
}

float VerticalRange(float percent) { return percent > 0.0f && percent < 100.0f ? percent : kDefaultVerticalRange; }

}  // namespace

void DecodeParameters1D(Bytes block, model::Spectrum1D& s) {
  const FieldDecoder decoder{block};
  VisitParameters(s, decoder);
  s.params.RGAIN = ReadLong(block, kGainAt);
  for (int i = 0; i < 2; ++i) s.verticalRange[i] = VerticalRange(Read<float>(block, kVerticalRangeAt + 4 * i));
  s.carried.parameterBlock.assign(block.begin(), block.end());
  s.carried.parameterBlock.resize(kParameterBlockSize, 0);
}

std::vector<std::uint8_t> EncodeParameters1D(const model::Spectrum1D& s) {
  std::vector<std::uint8_t> bytes = s.carried.parameterBlock;
  bytes.resize(kParameterBlockSize, 0);
  const MutableBytes block(bytes);
  const FieldEncoder encoder{block};
  VisitParameters(s, encoder);
  Store(block, kGainAt, StoredGain(s.params.RGAIN));
  for (int i = 0; i < 2; ++i) Store(block, kVerticalRangeAt + 4 * i, VerticalRange(s.verticalRange[i]));
  return bytes;
}

}  // namespace velk::native
