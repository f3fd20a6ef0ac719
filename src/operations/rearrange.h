#pragma once
// Operations that rearrange a whole spectrum: mirroring the chemical shift axes, and exchanging
// F1 with F2.
#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::operations {

// Rows k and N1-1-k exchanged (F1), columns k and N2-1-k (F2), in every quadrant that holds data.
// Applying it again gives the data back.
void InvertSpectrum(model::Spectrum2D& s, bool invertF1, bool invertF2, int threads = 0);

// Homonuclear classes have nothing to exchange.
bool CanExchange(int pulseModeClass);

// Every quadrant transposed in its own place (RI and IR are not exchanged), and the axis records,
// their extra values and position tables swapped between F1 and F2. When the transposed planes
// cannot be allocated, "Data Size is too large!" and the data stay as they were.
platform::Outcome ExchangeF1F2(model::Spectrum2D& s, int threads = 0);

}  // namespace velk::operations
