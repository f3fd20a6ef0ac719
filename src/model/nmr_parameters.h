#pragma once
// The acquisition parameter block shared by 2D and 1D data sets. Members carry the JEOL parameter
// keys by which every reader fills them and every list shows them.
#include <array>
#include <cstdint>
#include <string>

namespace velk::model {

struct NmrParameters {
  float ADBIT = 0, ACQTM = 0, BF = 0;
  float CLFRQ = 0;
  std::int32_t CLPNT = 0;
  float CLRSO = 0;
  std::string COMNT;
  float CSPED = 0, CTEMP = 0;
  std::string DATIM;
  float DELAY = 0, DEADT = 0;
  std::int16_t DTYPE = 0;
  std::int32_t DUMMY = 0;
  std::string EXMOD, EXPCM;
  float FILTR = 0, FREQU = 0, IRFRQ = 0, INTVL = 0;
  std::int16_t IRATN = 0;
  float IRFIN = 0, IRFN2 = 0;
  std::string IRNUC;
  float IRPHS = 0;
  std::int16_t IRRPW = 0;
  float IRSET = 0, IRST2 = 0, IWT = 0;
  std::array<std::int32_t, 5> LOOP{};
  std::int16_t OBATN = 0;
  float OBFIN = 0, OBFN2 = 0;
  std::string OBNUC;
  float OBPHS = 0, OBSET = 0, OBST2 = 0, OFR = 0, PD = 0;
  std::array<float, 5> PI{};
  std::int32_t POINT = 0;
  std::array<float, 5> PS{};
  std::array<float, 5> PW{};
  double RESOL = 0;
  std::int32_t RGAIN = 0, SCANS = 0;
  std::string SLVNT;
  float SMEXR = 0;
  std::int32_t SMTMS = 0;
  std::int16_t SMODE = 1;
  std::int32_t TIMES = 0, TOSCN = 0;
  float TR = 0;
  std::int16_t TRATN = 0;
  float TRFIN = 0, TRFN2 = 0, TRFRQ = 0;
  std::string TRNUC;
  float TRPHS = 0;
  std::int16_t TRRPW = 0;
  float TRSET = 0, TRST2 = 0;
};

// Descriptive texts that both record kinds carry beside the parameter block.
struct DescriptiveTexts {
  std::string dataTypeText;      // "Data Type" in the list, e.g. "Ver.4"
  std::string originalFileName;  // "%% ORG FILE"
  std::string fileName;
  std::string instrumentId;
  std::string instrument;
  std::string probeHead;
  std::string gradientProgram;
  std::string operatorName;
  std::string fftUser;
  std::string sampleId;     // the new variant
  std::string sampleIdOld;  // the older plain variant, kept side by side
};

}  // namespace velk::model
