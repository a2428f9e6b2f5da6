#include "common/GoldenFile.hpp"

#include "common/TestData.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace TavoTest {

namespace {

constexpr std::size_t gContext = 24;

// Printable bytes as they are, others as \xNN, with a hex dump beside.
std::string Show(std::string const& bytes, std::size_t from) {
    std::string const piece = bytes.substr(std::min(from, bytes.size()), 2 * gContext);
    std::string text;
    std::string hex;
    for (unsigned char c : piece) {
        char buffer[8];
        std::snprintf(buffer, sizeof buffer, "%02X ", c);
        hex += buffer;
        if (c >= 0x20 && c < 0x7F) {
            text += static_cast<char>(c);
        } else {
            std::snprintf(buffer, sizeof buffer, "\\x%02X", c);
            text += buffer;
        }
    }
    return "\"" + text + "\"\n      " + hex;
}

bool UpdateRequested() {
    char const* value = std::getenv("TAVO_UPDATE_GOLDEN");
    return value != nullptr && std::string(value) == "1";
}

} // namespace

void ExpectGolden(std::string const& actualBytes, std::string const& relativePath) {
    std::string const path = DataPath(relativePath);
    if (UpdateRequested()) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << actualBytes;
        ADD_FAILURE() << "golden file written: " << path;
        return;
    }
    if (!std::filesystem::exists(path)) {
        ADD_FAILURE() << "golden file missing: " << path << " (run with TAVO_UPDATE_GOLDEN=1 to create it)";
        return;
    }
    std::string const expected = ReadFileBytes(path);
    if (expected == actualBytes) {
        return;
    }
    auto const mismatch =
        std::mismatch(expected.begin(), expected.end(), actualBytes.begin(), actualBytes.end());
    auto const offset = static_cast<std::size_t>(mismatch.first - expected.begin());
    std::size_t const from = offset > gContext ? offset - gContext : 0;
    ADD_FAILURE() << "output differs from " << path << " at byte " << offset << " (expected "
                  << expected.size() << " bytes, got " << actualBytes.size() << ")\n  expected from byte "
                  << from << ": " << Show(expected, from) << "\n  actual from byte   " << from << ": "
                  << Show(actualBytes, from);
}

} // namespace TavoTest
