#pragma once
// Runs velk2d-cli as a user would and captures what it prints.
#include <string>

namespace velk::test {

struct CliRun {
  int exitStatus = -1;  // -1 when the program died of a signal
  std::string out;
  std::string err;
};

// shellPrefix runs first in the same shell ("ulimit -f 4; trap '' XFSZ;" for a full disk).
CliRun RunCli(const std::string& arguments, const std::string& shellPrefix = "");
// Quotes a path for the shell.
std::string Quoted(const std::string& path);

}  // namespace velk::test
