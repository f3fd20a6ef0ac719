#include "support/run_cli.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/temp_folder.h"

namespace velk::test {
namespace {

std::string Slurp(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

}  // namespace

std::string Quoted(const std::string& path) {
  std::string quoted = "'";
  for (char c : path) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

CliRun RunCli(const std::string& arguments, const std::string& shellPrefix) {
  const char* cli = std::getenv("VELK_CLI");
  TempFolder folder;
  const std::string command = shellPrefix + Quoted(cli ? cli : "velk2d-cli") + " " + arguments + " >" +
                              Quoted((folder / "out").string()) + " 2>" + Quoted((folder / "err").string());
  const int status = std::system(command.c_str());
  CliRun run;
  // The shell reports a program killed by a signal as 128 + the signal number.
  if (WIFEXITED(status) && WEXITSTATUS(status) < 128) run.exitStatus = WEXITSTATUS(status);
  run.out = Slurp(folder / "out");
  run.err = Slurp(folder / "err");
  return run;
}

}  // namespace velk::test
