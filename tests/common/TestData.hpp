// Where the tests find their files: tests/data (golden files, small documents) and the shared corpus.
#pragma once

#include <string>

namespace TavoTest {

// "parsing/lines.xml" gives the path of tests/data/parsing/lines.xml.
std::string DataPath(std::string const& relative);
// "realworld/x.xml" gives the path below the shared corpus folder.
std::string CorpusPath(std::string const& relative);
// The whole file as bytes; "" when it cannot be read (the caller's assertions then fail visibly).
std::string ReadFileBytes(std::string const& path);

} // namespace TavoTest
