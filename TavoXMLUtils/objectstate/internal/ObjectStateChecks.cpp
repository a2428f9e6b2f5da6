// The checks of the object-state bridge and its exception class.
#include "TavoXMLUtils/objectstate/internal/ObjectStateChecks.hpp"

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/interface/internal/ExceptionDefinition.hpp"
#include "TavoXMLUtils/objectstate/ObjectStateException.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

namespace TavoXML {

TAVOXML_DEFINE_EXCEPTION(XMLObjectStateException)

namespace detail {

void CheckObjectStateDepth(unsigned int openLevels) {
    if (openLevels >= MaxObjectStateDepth) {
        Throw<XMLObjectStateException>("The object state is nested too deeply for XML.", GeneralError);
    }
}

char const* RequiredProviderWord(char const* word, char const* what) {
    if (!word) {
        Throw<XMLObjectStateException>(
            Tavo::UniString(Tavo::UniString("TypeInfoProvider gave no word for ") + what + "."),
            GeneralError);
    }
    return word;
}

void ThrowUnreadableXML(char const* message) {
    Throw<XMLObjectStateException>(message, GeneralError);
}

} // namespace detail

} // namespace TavoXML
