#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using namespace TavoXML;

static_assert(std::is_base_of_v<XMLIOChannelException, XMLOChannelException> &&
              std::is_base_of_v<XMLIOChannelException, XMLIChannelException> &&
              !std::is_base_of_v<XMLIChannelException, XMLOChannelException>);

namespace {

template <class T>
class ExceptionFamily : public ::testing::Test {};
using Classes = ::testing::Types<DOMBuilderException, DOMReaderException, XMLIOChannelException,
                                 XMLOChannelException, XMLIChannelException>;
TYPED_TEST_SUITE(ExceptionFamily, Classes);

// Everything stands in the root: the thrower's message, file, line and code, and a copy of the cause.
void ExpectData(Tavo::TavoException const& e, unsigned int line, int code, bool withCause) {
    EXPECT_EQ(e.GetMessage(), Tavo::UniString("text"));
    EXPECT_STREQ(e.GetFile(), "Thrower");
    EXPECT_EQ(e.GetLine(), line);
    EXPECT_EQ(e.GetErrorCode(), code);
    ASSERT_EQ(e.GetPrevious() != nullptr, withCause);
    if (withCause) {
        EXPECT_STREQ(e.GetPrevious()->GetName(), "RunTimeErrorException");
        EXPECT_EQ(e.GetPrevious()->GetMessage(), Tavo::UniString("cause"));
    }
}

} // namespace

TEST(ExceptionFamily, Names) {
    EXPECT_STREQ(DOMBuilderException("t", "F", 1, -36).GetName(), "DOMBuilderException");
    EXPECT_STREQ(DOMReaderException("t", "F", 1, -36).GetName(), "DOMReaderException");
    EXPECT_STREQ(XMLIOChannelException("t", "F", 1, -36).GetName(), "XMLIOChannelException");
    EXPECT_STREQ(XMLOChannelException("t", "F", 1, -36).GetName(), "XMLOChannelException");
    EXPECT_STREQ(XMLIChannelException("t", "F", 1, -36).GetName(), "XMLIChannelException");
}

TYPED_TEST(ExceptionFamily, ConstructorsCloneAndVirtualName) {
    Tavo::RunTimeErrorException const cause("cause", "Cause", 7, -1);
    ExpectData(TypeParam("text", "Thrower", 10, cause, -36), 10, -36, true);
    ExpectData(TypeParam("text", "Thrower", 11, -36), 11, -36, false);
    ExpectData(TypeParam(Tavo::UniString("text"), "Thrower", 12, cause, 5), 12, 5, true);
    ExpectData(TypeParam(Tavo::UniString("text"), "Thrower", 13, -36), 13, -36, false);

    TypeParam const original(Tavo::UniString("text"), "Thrower", 14, cause, 5);
    std::unique_ptr<Tavo::TavoException> const clone(original.Clone());
    ASSERT_NE(dynamic_cast<TypeParam*>(clone.get()), nullptr);
    ExpectData(*clone, 14, 5, true);
    try {
        throw TypeParam("text", "Thrower", 20, -36);
    } catch (Tavo::RunTimeErrorException const& caught) {
        EXPECT_STREQ(caught.GetName(), original.GetName());
    }
}
