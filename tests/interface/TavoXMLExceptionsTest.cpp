#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"

#include <gtest/gtest.h>

#include <memory>

using namespace TavoXML;

namespace {

template <class T>
constexpr char const* kName = nullptr;
template <>
constexpr char const* kName<DOMBuilderException> = "DOMBuilderException";
template <>
constexpr char const* kName<DOMReaderException> = "DOMReaderException";
template <>
constexpr char const* kName<XMLIOChannelException> = "XMLIOChannelException";
template <>
constexpr char const* kName<XMLOChannelException> = "XMLOChannelException";
template <>
constexpr char const* kName<XMLIChannelException> = "XMLIChannelException";

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

TYPED_TEST(ExceptionFamily, ConstructorsNameCloneAndBases) {
    Tavo::RunTimeErrorException const cause("cause", "Cause", 7, -1);
    ExpectData(TypeParam("text", "Thrower", 10, cause, -36), 10, -36, true);
    ExpectData(TypeParam("text", "Thrower", 11, -36), 11, -36, false);
    ExpectData(TypeParam(Tavo::UniString("text"), "Thrower", 12, cause, 5), 12, 5, true);
    ExpectData(TypeParam(Tavo::UniString("text"), "Thrower", 13, -36), 13, -36, false);

    TypeParam const original(Tavo::UniString("text"), "Thrower", 14, cause, 5);
    EXPECT_STREQ(original.GetName(), kName<TypeParam>);
    std::unique_ptr<Tavo::TavoException> const clone(original.Clone());
    ASSERT_NE(dynamic_cast<TypeParam*>(clone.get()), nullptr);
    ExpectData(*clone, 14, 5, true);

    try {
        throw TypeParam("text", "Thrower", 20, -36);
    } catch (Tavo::RunTimeErrorException const& caught) {
        EXPECT_STREQ(caught.GetName(), kName<TypeParam>);
    }
}

TEST(ExceptionFamily, ChannelExceptionsShareTheIOBase) {
    EXPECT_THROW(throw XMLOChannelException("o", "F", 1, -36), XMLIOChannelException);
    EXPECT_THROW(throw XMLIChannelException("i", "F", 1, -36), XMLIOChannelException);
    XMLOChannelException const output("o", "F", 1, -36);
    XMLIOChannelException const& base = output;
    EXPECT_EQ(dynamic_cast<XMLIChannelException const*>(&base), nullptr);
}
