// The five exception classes of the library; they differ only in name and place in the family.
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"

#include "TavoXMLUtils/interface/internal/ExceptionDefinition.hpp"

namespace TavoXML {

TAVOXML_DEFINE_EXCEPTION(DOMBuilderException)
TAVOXML_DEFINE_EXCEPTION(DOMReaderException)
TAVOXML_DEFINE_EXCEPTION(XMLIOChannelException)
TAVOXML_DEFINE_EXCEPTION(XMLOChannelException, XMLIOChannelException)
TAVOXML_DEFINE_EXCEPTION(XMLIChannelException, XMLIOChannelException)

} // namespace TavoXML
