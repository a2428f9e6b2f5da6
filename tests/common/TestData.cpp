#include "common/TestData.hpp"

#include <fstream>
#include <sstream>

namespace TavoTest {

std::string DataPath(std::string const& relative) {
    return std::string(TAVO_TEST_DATA_DIR) + "/" + relative;
}

std::string CorpusPath(std::string const& relative) {
    return std::string(TAVO_CORPUS_DIR) + "/" + relative;
}

std::string ReadFileBytes(std::string const& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

} // namespace TavoTest
