#include "formats/alice/layout.h"


namespace velk::formats::alice {
namespace {

using S = model::Spectrum1D;
constexpr Files kAll = Files::All;

// Groups of values carry the keys of the same group in their order: the observe frequency group
// begins with the base frequency and continues with the set and fine offsets.
const Field kFields[] = {
    {4, false, kAll, 4, FloatField{[](S& s) -> float& { return s.params.CSPED; }}},
    {12, false, kAll, 4, FloatField{[](S& s) -> float& { return s.params.CTEMP; }}},
    {30, false, kAll, 32, TextField{[](S& s) -> std::string& { return s.params.DATIM; }}},
    {108, false, Files::Unshifted, 80, TextField{[](S& s) -> std::string& { return s.comment; }}},
    {108, false, Files::Shifted, 255, TextField{[](S& s) -> std::string& { return s.comment; }}},
    {336, true, kAll, 10, TextField{[](S& s) -> std::string& { return s.params.OBNUC; }}},
    {346, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.OFR; }}},
    {350, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.OBSET; }}},
    {354, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.OBFIN; }}},
    {358, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.OBST2; }}},
    {362, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.OBFN2; }}},
    {366, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.OBPHS; }}},
    {372, true, kAll, 10, TextField{[](S& s) -> std::string& { return s.params.IRNUC; }}},
    {382, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.IRFRQ; }}},
    {386, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.IRSET; }}},
    {390, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.IRFIN; }}},
    {394, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.IRST2; }}},
    {398, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.IRFN2; }}},
    {402, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.IRPHS; }}},
    {406, true, kAll, 2, WordField{[](S& s) -> std::int16_t& { return s.params.IRATN; }}},
    {408, true, kAll, 2, WordField{[](S& s) -> std::int16_t& { return s.params.IRRPW; }}},
    {412, true, kAll, 10, TextField{[](S& s) -> std::string& { return s.params.TRNUC; }}},
    {422, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.TRFRQ; }}},
    {426, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.TRSET; }}},
    {430, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.TRFIN; }}},
    {434, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.TRST2; }}},
    {438, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.TRFN2; }}},
    {442, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.TRPHS; }}},
    {446, true, kAll, 2, WordField{[](S& s) -> std::int16_t& { return s.params.TRATN; }}},
    {448, true, kAll, 2, WordField{[](S& s) -> std::int16_t& { return s.params.TRRPW; }}},
    {452, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PW[0]; }}},
    {456, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PW[1]; }}},
    {460, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PW[2]; }}},
    {464, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PW[3]; }}},
    {468, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PW[4]; }}},
    {472, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PI[0]; }}},
    {476, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PI[1]; }}},
    {480, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PI[2]; }}},
    {484, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PI[3]; }}},
    {488, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PI[4]; }}},
    {492, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.LOOP[0]; }}},
    {496, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.LOOP[1]; }}},
    {500, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.LOOP[2]; }}},
    {504, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.LOOP[3]; }}},
    {508, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.LOOP[4]; }}},
    {564, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.DEADT; }}},
    {576, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.ACQTM; }}},
    {580, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.PD; }}},
    {584, true, kAll, 32, TextField{[](S& s) -> std::string& { return s.params.EXMOD; }}},
    {680, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.TOSCN; }}},
    {694, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.ADBIT; }}},
    {698, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.POINT; }}},
    {706, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.SCANS; }}},
    {710, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.FREQU; }}},
    {714, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.FILTR; }}},
    {722, true, kAll, 4, LongField{[](S& s) -> std::int32_t& { return s.params.SMTMS; }}},
    {726, true, kAll, 4, FloatField{[](S& s) -> float& { return s.params.SMEXR; }}},
    {1056, false, Files::Shifted, 32, TextField{[](S& s) -> std::string& { return s.texts.instrument; }}},
    {1120, false, Files::Shifted, 32, TextField{[](S& s) -> std::string& { return s.texts.gradientProgram; }}},
    {1152, false, Files::Shifted, 32, TextField{[](S& s) -> std::string& { return s.texts.probeHead; }}},
};

}  // namespace

std::span<const Field> ParameterFields() { return kFields; }

}  // namespace velk::formats::alice
