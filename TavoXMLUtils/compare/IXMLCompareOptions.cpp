#include "TavoXMLUtils/compare/IXMLCompareOptions.hpp"

namespace TavoXML {

IXMLCompareOptions::~IXMLCompareOptions() = default;

} // namespace TavoXML
