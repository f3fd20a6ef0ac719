#pragma once
#include <CLI/CLI.hpp>

namespace velk::cli {

// Each command adds itself to the application and runs from its callback; the exit status is
// written to the given int.
void AddInfoCommand(CLI::App& app, int& status);
void AddConvertCommand(CLI::App& app, int& status);
void AddExportCommand(CLI::App& app, int& status);
#ifdef VELK_WITH_PLOT
void AddPlotCommand(CLI::App& app, int& status);
void AddPageCommand(CLI::App& app, int& status);
#endif
void AddProcessCommand(CLI::App& app, int& status);
void AddPeaksCommand(CLI::App& app, int& status);
// phase, baseline, symmetrize, invert, exchange, reference.
void AddOperationCommands(CLI::App& app, int& status);

}  // namespace velk::cli
