#include <CLI/CLI.hpp>

#include "cli/commands.h"

int main(int argc, char** argv) {
  CLI::App app{"velk2d-cli: the velk2d processing core on the command line"};
  app.require_subcommand(1);
  int status = 0;
  velk::cli::AddInfoCommand(app, status);
  velk::cli::AddConvertCommand(app, status);
  velk::cli::AddExportCommand(app, status);
#ifdef VELK_WITH_PLOT
  velk::cli::AddPlotCommand(app, status);
#endif
  velk::cli::AddProcessCommand(app, status);
  CLI11_PARSE(app, argc, argv);
  return status;
}
