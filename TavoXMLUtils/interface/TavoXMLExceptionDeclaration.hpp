// TAVOXML_DECLARE_EXCEPTION(Name, Base) declares an exception class of the library's family in one line.
// Base is Tavo::RunTimeErrorException or a class of the family below it; it is inherited virtually, so
// every class of the family holds one Tavo::TavoException (message, thrower's file and line, optional
// cause, error code). The class adds only its name (GetName gives the class name) and Clone.
//
// The four constructors take the message as 8-bit text in TavoCharCodeDefault or as a Tavo::UniString,
// with or without a cause; the cause is cloned. None throws but std::bad_alloc. The copy constructor
// exists because a thrown object must be copyable; assignment is deleted with the root's.
#pragma once

#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#define TAVOXML_DECLARE_EXCEPTION(CLASS, BASE)                                                               \
    class TAVOXMLUTILS_API CLASS : public virtual BASE {                                                     \
    public:                                                                                                  \
        CLASS(char const* message, char const* file, unsigned int line, Tavo::TavoException const& previous, \
              int errorCode);                                                                                \
        CLASS(char const* message, char const* file, unsigned int line, int errorCode);                      \
        CLASS(Tavo::UniString const& message, char const* file, unsigned int line,                           \
              Tavo::TavoException const& previous, int errorCode);                                           \
        CLASS(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode);           \
        CLASS(CLASS const& other);                                                                           \
        ~CLASS() override;                                                                                   \
                                                                                                             \
        char const* GetName() const override;                                                                \
        Tavo::TavoException* Clone() const override;                                                         \
    }
