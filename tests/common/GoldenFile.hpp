// Golden files: expected output kept under tests/data/<area>/*.expected and compared byte for byte.
// With TAVO_UPDATE_GOLDEN=1 in the environment the file is (re)written from the actual bytes instead,
// and the test fails so that nobody takes an update run for a passing one.
#pragma once

#include <string>

namespace TavoTest {

// Adds a failure naming the first differing offset, with both sides around it as text and hex.
void ExpectGolden(std::string const& actualBytes, std::string const& relativePath);

} // namespace TavoTest
