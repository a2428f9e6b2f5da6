// The five exception classes of the library. They differ only in name and place in the family, so one
// macro states their members once. The data lives in the virtual root Tavo::TavoException, which the
// most derived class constructs; the Tavo::RunTimeErrorException part gets no text, no file, line 0 and
// GeneralError, and a channel exception's XMLIOChannelException part the same.
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"

#include "TavoRoot/XMLTypes.hpp"

namespace TavoXML {

#define TAVOXML_RUNTIME_PART Tavo::RunTimeErrorException(nullptr, nullptr, 0, Tavo::GeneralError)
#define TAVOXML_IOCHANNEL_PART , XMLIOChannelException(nullptr, nullptr, 0, Tavo::GeneralError)

// EXTRA_BASES is empty for direct children of Tavo::RunTimeErrorException, and TAVOXML_IOCHANNEL_PART
// for the two children of XMLIOChannelException.
#define TAVOXML_DEFINE_EXCEPTION(CLASS, EXTRA_BASES)                                                         \
    CLASS::CLASS(char const* message, char const* file, unsigned int line,                                   \
                 Tavo::TavoException const& previous, int errorCode)                                         \
        : Tavo::TavoException(message, file, line, previous, errorCode), TAVOXML_RUNTIME_PART EXTRA_BASES {} \
    CLASS::CLASS(char const* message, char const* file, unsigned int line, int errorCode)                    \
        : Tavo::TavoException(message, file, line, nullptr, errorCode), TAVOXML_RUNTIME_PART EXTRA_BASES {}  \
    CLASS::CLASS(Tavo::UniString const& message, char const* file, unsigned int line,                        \
                 Tavo::TavoException const& previous, int errorCode)                                         \
        : Tavo::TavoException(message, file, line, previous, errorCode), TAVOXML_RUNTIME_PART EXTRA_BASES {} \
    CLASS::CLASS(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode)         \
        : Tavo::TavoException(message, file, line, nullptr, errorCode), TAVOXML_RUNTIME_PART EXTRA_BASES {}  \
    CLASS::CLASS(CLASS const& other) : Tavo::TavoException(other), TAVOXML_RUNTIME_PART EXTRA_BASES {}       \
    CLASS::~CLASS() = default;                                                                               \
    char const* CLASS::GetName() const {                                                                     \
        return #CLASS;                                                                                       \
    }                                                                                                        \
    Tavo::TavoException* CLASS::Clone() const {                                                              \
        return new CLASS(*this);                                                                             \
    }

TAVOXML_DEFINE_EXCEPTION(DOMBuilderException, )
TAVOXML_DEFINE_EXCEPTION(DOMReaderException, )
TAVOXML_DEFINE_EXCEPTION(XMLIOChannelException, )
TAVOXML_DEFINE_EXCEPTION(XMLOChannelException, TAVOXML_IOCHANNEL_PART)
TAVOXML_DEFINE_EXCEPTION(XMLIChannelException, TAVOXML_IOCHANNEL_PART)

#undef TAVOXML_DEFINE_EXCEPTION
#undef TAVOXML_IOCHANNEL_PART
#undef TAVOXML_RUNTIME_PART

} // namespace TavoXML
