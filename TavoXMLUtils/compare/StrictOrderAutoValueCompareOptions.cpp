#include "TavoXMLUtils/compare/StrictOrderAutoValueCompareOptions.hpp"

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"
#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"
#include "TavoXMLUtils/compare/XMLValueComparators.hpp"

#include <xercesc/dom/DOMNode.hpp>

#include <algorithm>
#include <string_view>

namespace TavoXML {

namespace {

std::u16string_view NameOf(xercesc::DOMNode const* node) noexcept {
    XMLCh const* const name = node == nullptr ? nullptr : node->getNodeName();
    return name == nullptr ? std::u16string_view() : std::u16string_view(name);
}

} // namespace

StrictOrderAutoValueCompareOptions::~StrictOrderAutoValueCompareOptions() = default;

IXMLCompareOptions* StrictOrderAutoValueCompareOptions::Clone() const {
    auto* const clone = new StrictOrderAutoValueCompareOptions();
    clone->doubleEps = doubleEps;
    return clone;
}

double StrictOrderAutoValueCompareOptions::GetDoubleEps() const {
    return doubleEps;
}

void StrictOrderAutoValueCompareOptions::SetDoubleEps(double eps) {
    doubleEps = eps;
}

bool StrictOrderAutoValueCompareOptions::AcceptAttribute(xercesc::DOMAttr const*) const {
    return true;
}

bool StrictOrderAutoValueCompareOptions::AreNodeNamesEqual(xercesc::DOMNode const* left,
                                                           xercesc::DOMNode const* right) const {
    // Tavo::UniString::IsEqual without regard to case, read in place: this runs for every element.
    return std::ranges::equal(NameOf(left), NameOf(right), {}, Tavo::ToLowerCase, Tavo::ToLowerCase);
}

void StrictOrderAutoValueCompareOptions::CompareSpecialTypeNodes(xercesc::DOMNode const* left,
                                                                 xercesc::DOMNode const* right) {
    throw NotSupportedNodeTypesException(left, right);
}

XMLValueComparator*
StrictOrderAutoValueCompareOptions::GetAttributeValueComparator(xercesc::DOMAttr const*) const {
    return new XMLCompareAuto();
}

XMLValueComparator* StrictOrderAutoValueCompareOptions::GetValueComparator() const {
    return new XMLCompareAuto();
}

XMLNodeComparator* StrictOrderAutoValueCompareOptions::PrepareNodeComparator(xercesc::DOMElement const*,
                                                                             xercesc::DOMElement const*) {
    return new XMLCompareStrictOrder();
}

bool StrictOrderAutoValueCompareOptions::CanOptionsChangeAndEffectNotChildNodes() const {
    return false;
}

} // namespace TavoXML
