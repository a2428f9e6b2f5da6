// The exception family of TavoXMLUtils. Every class keeps its data (message, thrower's source file and
// line, optional cause, error code) in the virtual root Tavo::TavoException; the classes add only
// their name and Clone.
//
//   Tavo::RunTimeErrorException (virtual base of)
//     TavoXML::DOMBuilderException   thrown when a DOMBuilder cannot create its document
//     TavoXML::DOMReaderException    thrown by the DOMReader constructors
//     TavoXML::XMLIOChannelException common base of the two channel-factory exceptions
//       TavoXML::XMLOChannelException  thrown by the output factories under ThrowOnError
//       TavoXML::XMLIChannelException  thrown by the input factories under ThrowOnError
//
// The constructors hand message, file, line, cause and error code to the root, and build the
// Tavo::RunTimeErrorException part with no text, no file, line 0 and GeneralError, so GetErrorCode()
// gives the thrower's code. The copy constructor exists because a thrown object must be copyable.
#pragma once

#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

namespace TavoXML {

class TAVOXMLUTILS_API DOMBuilderException : public virtual Tavo::RunTimeErrorException {
public:
    DOMBuilderException(char const* message, char const* file, unsigned int line,
                        Tavo::TavoException const& previous, int errorCode);
    DOMBuilderException(char const* message, char const* file, unsigned int line, int errorCode);
    DOMBuilderException(Tavo::UniString const& message, char const* file, unsigned int line,
                        Tavo::TavoException const& previous, int errorCode);
    DOMBuilderException(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode);
    DOMBuilderException(DOMBuilderException const& other);
    ~DOMBuilderException() override;

    char const* GetName() const override;
    Tavo::TavoException* Clone() const override;
};

class TAVOXMLUTILS_API DOMReaderException : public virtual Tavo::RunTimeErrorException {
public:
    DOMReaderException(char const* message, char const* file, unsigned int line,
                       Tavo::TavoException const& previous, int errorCode);
    DOMReaderException(char const* message, char const* file, unsigned int line, int errorCode);
    DOMReaderException(Tavo::UniString const& message, char const* file, unsigned int line,
                       Tavo::TavoException const& previous, int errorCode);
    DOMReaderException(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode);
    DOMReaderException(DOMReaderException const& other);
    ~DOMReaderException() override;

    char const* GetName() const override;
    Tavo::TavoException* Clone() const override;
};

class TAVOXMLUTILS_API XMLIOChannelException : public virtual Tavo::RunTimeErrorException {
public:
    XMLIOChannelException(char const* message, char const* file, unsigned int line,
                          Tavo::TavoException const& previous, int errorCode);
    XMLIOChannelException(char const* message, char const* file, unsigned int line, int errorCode);
    XMLIOChannelException(Tavo::UniString const& message, char const* file, unsigned int line,
                          Tavo::TavoException const& previous, int errorCode);
    XMLIOChannelException(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode);
    XMLIOChannelException(XMLIOChannelException const& other);
    ~XMLIOChannelException() override;

    char const* GetName() const override;
    Tavo::TavoException* Clone() const override;
};

class TAVOXMLUTILS_API XMLOChannelException : public virtual XMLIOChannelException {
public:
    XMLOChannelException(char const* message, char const* file, unsigned int line,
                         Tavo::TavoException const& previous, int errorCode);
    XMLOChannelException(char const* message, char const* file, unsigned int line, int errorCode);
    XMLOChannelException(Tavo::UniString const& message, char const* file, unsigned int line,
                         Tavo::TavoException const& previous, int errorCode);
    XMLOChannelException(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode);
    XMLOChannelException(XMLOChannelException const& other);
    ~XMLOChannelException() override;

    char const* GetName() const override;
    Tavo::TavoException* Clone() const override;
};

class TAVOXMLUTILS_API XMLIChannelException : public virtual XMLIOChannelException {
public:
    XMLIChannelException(char const* message, char const* file, unsigned int line,
                         Tavo::TavoException const& previous, int errorCode);
    XMLIChannelException(char const* message, char const* file, unsigned int line, int errorCode);
    XMLIChannelException(Tavo::UniString const& message, char const* file, unsigned int line,
                         Tavo::TavoException const& previous, int errorCode);
    XMLIChannelException(Tavo::UniString const& message, char const* file, unsigned int line, int errorCode);
    XMLIChannelException(XMLIChannelException const& other);
    ~XMLIChannelException() override;

    char const* GetName() const override;
    Tavo::TavoException* Clone() const override;
};

} // namespace TavoXML
