// A temporary folder of the test process: made on first use below the system's temporary folder,
// removed with everything in it when the process ends. Test programs that run at the same time (the
// plain and the sanitizer build, or ctest -j) never share one. The first use also points TMPDIR at
// it, so the library's own temporary files (the round-trip harness's fixed file) land there too.
#pragma once

#include <filesystem>

namespace TavoTest {

std::filesystem::path const& TestTempFolder();

} // namespace TavoTest
