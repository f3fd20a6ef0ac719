#pragma once
// The public real-data corpora, unpacked by scripts/fetch-test-data. A test that needs them fails
// (it does not skip) when they are missing, and says how to fetch them.
#include <filesystem>
#include <string>

namespace velk::test {

// The corpus root: $VELK_TEST_DATA, else the folder configured at build time.
std::filesystem::path CorpusRoot();
// A file or folder inside the corpus, e.g. "bruker/cyclosporin_cosy/1/ser"; fails the running
// test with the fetch command when it is missing.
std::filesystem::path CorpusPath(const std::string& relative);

}  // namespace velk::test
