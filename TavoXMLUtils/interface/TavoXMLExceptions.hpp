// The exception family of TavoXMLUtils. Every class keeps its data (message, thrower's source file and
// line, optional cause, error code) in the virtual root Tavo::TavoException; the classes add only
// their name and Clone (see TavoXMLExceptionDeclaration.hpp for the members).
//
//   Tavo::RunTimeErrorException (virtual base of)
//     TavoXML::DOMBuilderException   thrown when a DOMBuilder cannot create its document
//     TavoXML::DOMReaderException    thrown by the DOMReader constructors
//     TavoXML::XMLIOChannelException common base of the two channel-factory exceptions
//       TavoXML::XMLOChannelException  thrown by the output factories under ThrowOnError
//       TavoXML::XMLIChannelException  thrown by the input factories under ThrowOnError
//
// GetErrorCode() gives the thrower's code: -36 for every exception the library throws itself.
#pragma once

#include "TavoXMLUtils/interface/TavoXMLExceptionDeclaration.hpp"

namespace TavoXML {

TAVOXML_DECLARE_EXCEPTION(DOMBuilderException, Tavo::RunTimeErrorException);
TAVOXML_DECLARE_EXCEPTION(DOMReaderException, Tavo::RunTimeErrorException);
TAVOXML_DECLARE_EXCEPTION(XMLIOChannelException, Tavo::RunTimeErrorException);
TAVOXML_DECLARE_EXCEPTION(XMLOChannelException, XMLIOChannelException);
TAVOXML_DECLARE_EXCEPTION(XMLIChannelException, XMLIOChannelException);

} // namespace TavoXML
