#include "support/corpus.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace velk::test {

std::filesystem::path CorpusRoot() {
  const char* fromEnvironment = std::getenv("VELK_TEST_DATA");
  return fromEnvironment && *fromEnvironment ? std::filesystem::path(fromEnvironment)
                                             : std::filesystem::path(VELK_TEST_DATA);
}

std::filesystem::path CorpusPath(const std::string& relative) {
  const std::filesystem::path path = CorpusRoot() / relative;
  if (!std::filesystem::exists(path))
    ADD_FAILURE() << "real-data corpus missing: " << path << "\nFetch it with: scripts/fetch-test-data";
  return path;
}

}  // namespace velk::test
