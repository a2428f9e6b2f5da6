// TAVOXML_DEFINE_EXCEPTION(Name[, MiddleBase]) defines the members that TAVOXML_DECLARE_EXCEPTION
// declares. The most derived class constructs every virtual base: the root Tavo::TavoException gets the
// data; the Tavo::RunTimeErrorException part, and MiddleBase when the class sits below another class
// of the family (as the channel exceptions sit below XMLIOChannelException), get no text, no file,
// line 0 and GeneralError, so GetErrorCode() gives the thrower's code.
#pragma once

#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptionDeclaration.hpp"

#define TAVOXML_EXCEPTION_EMPTY_PART(BASE) BASE(nullptr, nullptr, 0, Tavo::GeneralError)

#define TAVOXML_EXCEPTION_PARTS(...)                                                                         \
    TAVOXML_EXCEPTION_EMPTY_PART(Tavo::RunTimeErrorException)                                                \
    __VA_OPT__(, TAVOXML_EXCEPTION_EMPTY_PART(__VA_ARGS__))

#define TAVOXML_DEFINE_EXCEPTION(CLASS, ...)                                                                 \
    CLASS::CLASS(char const* message, char const* file, unsigned int line,                                   \
                 Tavo::TavoException const& previous, int errorCode)                                         \
        : Tavo::TavoException(message, file, line, previous, errorCode),                                     \
          TAVOXML_EXCEPTION_PARTS(__VA_ARGS__) {}                                                            \
    CLASS::CLASS(char const* message, char const* file, unsigned int line, int errorCode)                    \
        : Tavo::TavoException(message, file, line, nullptr, errorCode),                                      \
          TAVOXML_EXCEPTION_PARTS(__VA_ARGS__) {}                                                            \
    CLASS::CLASS(Tavo::UniString const& message, char const* file, unsigned int line,                        \
                 Tavo::TavoException const& previous, int errorCode)                                         \
        : Tavo::TavoException(message, file, line, previous, errorCode),                                     \
          TAVOXML_EXCEPTION_PARTS(__VA_ARGS__) {}                                                            \
    CLASS::CLASS(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode)         \
        : Tavo::TavoException(message, file, line, nullptr, errorCode),                                      \
          TAVOXML_EXCEPTION_PARTS(__VA_ARGS__) {}                                                            \
    CLASS::CLASS(CLASS const& other) : Tavo::TavoException(other), TAVOXML_EXCEPTION_PARTS(__VA_ARGS__) {}   \
    CLASS::~CLASS() = default;                                                                               \
    char const* CLASS::GetName() const {                                                                     \
        return #CLASS;                                                                                       \
    }                                                                                                        \
    Tavo::TavoException* CLASS::Clone() const {                                                              \
        return new CLASS(*this);                                                                             \
    }
