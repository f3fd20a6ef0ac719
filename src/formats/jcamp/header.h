#pragma once
// The labels of a JCAMP-DX file that describe the sample and the acquisition, shared by the 1D
// and 2D readers and the header probe.
#include <optional>
#include <string>
#include <utility>

#include "formats/jcamp/labels.h"

namespace velk::formats::jcamp {

struct JcampHeader {
  bool labelSeen = false;  // "##JCAMP-DX" or "##JCAMPDX"
  float version = 0;
  std::string dataType, dataClass;  // compact (CompactJcampText): "NMRSPECTRUM", "NDNMRSPECTRUM", "XYDATA"
  std::string title, date, instrument, solvent, pulseSequence, nucleus;
  std::string acquisitionScheme;
  double observeMHz = 0;
  bool observeSeen = false;
  std::int32_t averages = 0;
  float digitiser = 0;
  int acquisitionClass = 0;
  std::optional<std::pair<double, double>> shiftReference;  // data point (from 1, file order), ppm
};

// Takes the label into the header when it is one of the descriptive labels; false otherwise.
// key is the compact key (CompactJcampKey), line the whole trimmed line.
bool TakeHeaderLabel(const std::string& key, const JcampLabel& label, const std::string& line, JcampHeader& h);

// "yyyy/mm/dd hh:mm:ss..." of "##LONG DATE" as "dd/mmm/yyyy hh:mm:ss"; other texts unchanged.
std::string DateOfLongDate(const std::string& text);

}  // namespace velk::formats::jcamp
