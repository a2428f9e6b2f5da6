// TavoXML::XMLObjectStateException: thrown by the object-state bridge for what it can't convert - XML of
// the typed dialect that lacks its type attribute or a leading text, nesting beyond 1000 levels of
// objects and lists, and a provider that returns null for a word the vocabulary needs. Its error code
// is GeneralError (-7003). Xerces-C++'s own number exceptions of the typed dialect pass unchanged.
#pragma once

#include "TavoXMLUtils/interface/TavoXMLExceptionDeclaration.hpp"

namespace TavoXML {

TAVOXML_DECLARE_EXCEPTION(XMLObjectStateException, Tavo::RunTimeErrorException);

} // namespace TavoXML
