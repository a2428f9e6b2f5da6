// The parser is started once for the whole test program. Initialize is reference-counted, so this
// stays harmless next to the library's own start-up.
#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>

namespace {

class XercesEnvironment : public ::testing::Environment {
public:
    void SetUp() override { xercesc::XMLPlatformUtils::Initialize(); }
    void TearDown() override { xercesc::XMLPlatformUtils::Terminate(); }
};

[[maybe_unused]] ::testing::Environment* const gXercesEnvironment =
    ::testing::AddGlobalTestEnvironment(new XercesEnvironment);

} // namespace
