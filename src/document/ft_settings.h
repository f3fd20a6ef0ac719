#pragma once
// The FT window's values that the 2D settings keep from run to run: the prediction parameters of
// both axes, the T1 noise correction, and the initial wording of the window formulas.
#include "core/settings.h"
#include "processing/ft_controls.h"
#include "processing/sequence.h"

namespace velk::document {

void LoadFtSettings(const core::Settings& from, processing::SequenceSettings& settings,
                    processing::WindowExpressions& expressions);
void StoreFtSettings(const processing::SequenceSettings& settings, core::Settings& to);

}  // namespace velk::document
