#include <CLI/CLI.hpp>

#include "cli/cli_io.h"
#include "cli/commands.h"

int main(int argc, char** argv) {
  CLI::App app{"velk2d-cli: the velk2d processing core on the command line"};
  app.set_version_flag("--version", "velk2d-cli " VELK_VERSION);
  app.footer(velk::cli::kStatusHelp);
  app.require_subcommand(1);
  int status = 0;
  velk::cli::AddInfoCommand(app, status);
  velk::cli::AddConvertCommand(app, status);
  velk::cli::AddExportCommand(app, status);
#ifdef VELK_WITH_PLOT
  velk::cli::AddPlotCommand(app, status);
#endif
  velk::cli::AddProcessCommand(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // Help and version end with 0; a wrong option or value is a status 2 like any other bad value.
    const int shown = app.exit(error);
    return shown == 0 ? 0 : velk::cli::kFailed;
  }
  return status;
}
