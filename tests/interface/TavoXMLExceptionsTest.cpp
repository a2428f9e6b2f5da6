#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using namespace TavoXML;

static_assert(std::is_base_of_v<XMLIOChannelException, XMLOChannelException> &&
              std::is_base_of_v<XMLIOChannelException, XMLIChannelException>);

namespace {

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

template <class T>
void ExpectFamilyMember(char const* name) {
    SCOPED_TRACE(name);
    Tavo::RunTimeErrorException const cause("cause", "Cause", 7, -1);
    ExpectData(T("text", "Thrower", 10, cause, -36), 10, -36, true);
    ExpectData(T("text", "Thrower", 11, -36), 11, -36, false);
    ExpectData(T(Tavo::UniString("text"), "Thrower", 13, -36), 13, -36, false);
    T const original(Tavo::UniString("text"), "Thrower", 14, cause, 5);
    std::unique_ptr<Tavo::TavoException> const clone(original.Clone());
    ASSERT_NE(dynamic_cast<T*>(clone.get()), nullptr);
    ExpectData(*clone, 14, 5, true);
    EXPECT_STREQ(clone->GetName(), name);
}

} // namespace

TEST(ExceptionFamily, ConstructorsCloneAndName) {
    ExpectFamilyMember<DOMBuilderException>("DOMBuilderException");
    ExpectFamilyMember<DOMReaderException>("DOMReaderException");
    ExpectFamilyMember<XMLIOChannelException>("XMLIOChannelException");
    ExpectFamilyMember<XMLOChannelException>("XMLOChannelException");
    ExpectFamilyMember<XMLIChannelException>("XMLIChannelException");
}
