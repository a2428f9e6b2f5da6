#include "TavoXMLUtils/compare/AttrRuledCompareOptions.hpp"

#include "TavoRoot/Numbers.hpp"
#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"
#include "TavoXMLUtils/compare/XMLValueComparators.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace TavoXML {

namespace {

char const gDefaultEpsAtt[] = "tavo_eps";
char const gDefaultTypeDeciderAtt[] = "tavo_type";
constexpr std::u16string_view gIntType = u"int";
constexpr std::u16string_view gDoubleType = u"double";
constexpr std::u16string_view gStringType = u"string";

// Two tolerances given on both elements must agree this closely to count.
constexpr double gEpsAgreement = 1e-12;

xercesc::DOMAttr const* AttributeNamed(xercesc::DOMElement const* element, Tavo::UniString const& name) {
    if (element == nullptr || name.IsEmpty()) {
        return nullptr;
    }
    return element->getAttributeNode(name.GetU16Str());
}

bool ReadDouble(xercesc::DOMAttr const* attribute, double& value) noexcept {
    XMLCh const* const text = attribute->getValue();
    return text != nullptr && Tavo::strtovalue(reinterpret_cast<unsigned short const*>(text), value,
                                               Tavo::ToValueStrict, Tavo::TrimWSBothEnds);
}

// Tavo::UniString::IsEqual without regard to case, against a constant: no string is made per text.
bool IsType(Tavo::UniString const& word, std::u16string_view type) noexcept {
    return std::ranges::equal(word.View(), type, {}, Tavo::ToLowerCase, Tavo::ToLowerCase);
}

} // namespace

AttrRuledCompareOptions::AttrRuledCompareOptions()
    : epsAtt(gDefaultEpsAtt), typeDeciderAtt(gDefaultTypeDeciderAtt), currentValueType() {}

AttrRuledCompareOptions::~AttrRuledCompareOptions() = default;

IXMLCompareOptions* AttrRuledCompareOptions::Clone() const {
    return new AttrRuledCompareOptions(*this);
}

XMLValueComparator* AttrRuledCompareOptions::GetValueComparator() const {
    if (IsType(currentValueType, gIntType)) {
        return new XMLCompareInt();
    }
    if (IsType(currentValueType, gDoubleType)) {
        return new XMLCompareDouble();
    }
    if (IsType(currentValueType, gStringType)) {
        return new XMLCompareString();
    }
    return new XMLCompareAuto();
}

XMLNodeComparator* AttrRuledCompareOptions::PrepareNodeComparator(xercesc::DOMElement const* left,
                                                                  xercesc::DOMElement const* right) {
    // Type words do not inherit: each element pair starts without one.
    currentValueType.Clear();
    SetCurrentValueType(left, right);
    return new XMLCompareStrictOrder();
}

bool AttrRuledCompareOptions::CanOptionsChangeAndEffectNotChildNodes() const {
    return true;
}

void AttrRuledCompareOptions::SetTypeDeciderAtt(Tavo::UniString const& name) {
    typeDeciderAtt = name;
}

Tavo::UniString AttrRuledCompareOptions::GetTypeDeciderAtt() const {
    return typeDeciderAtt;
}

void AttrRuledCompareOptions::SetEpsAtt(Tavo::UniString const& name) {
    epsAtt = name;
}

Tavo::UniString AttrRuledCompareOptions::GetEpsAtt() const {
    return epsAtt;
}

xercesc::DOMAttr const* AttrRuledCompareOptions::GetTypeAttribute(xercesc::DOMElement const* element) const {
    return AttributeNamed(element, GetTypeDeciderAtt());
}

void AttrRuledCompareOptions::SetCurrentValueType(xercesc::DOMElement const* left,
                                                  xercesc::DOMElement const* right) {
    xercesc::DOMAttr const* const l = GetTypeAttribute(left);
    xercesc::DOMAttr const* const r = GetTypeAttribute(right);
    if (l != nullptr && r != nullptr) {
        // Two words that differ leave the type word as it is: empty, the automatic comparison.
        if (xercesc::XMLString::compareIString(l->getValue(), r->getValue()) == 0) {
            currentValueType = Tavo::UniString(l->getValue());
        }
    } else if (l != nullptr || r != nullptr) {
        currentValueType = Tavo::UniString((l != nullptr ? l : r)->getValue());
    }
    DoValueTypeSpecificUpdates(left, right);
}

void AttrRuledCompareOptions::DoValueTypeSpecificUpdates(xercesc::DOMElement const* left,
                                                         xercesc::DOMElement const* right) {
    Tavo::UniString const name = GetEpsAtt();
    if (name.IsEmpty()) {
        return;
    }
    xercesc::DOMAttr const* const l = AttributeNamed(left, name);
    xercesc::DOMAttr const* const r = AttributeNamed(right, name);
    bool failed = false;
    double leftEps = 0.0;
    double rightEps = 0.0;
    if (l != nullptr) {
        failed = !ReadDouble(l, leftEps);
    }
    if (!failed && r != nullptr) {
        failed = !ReadDouble(r, rightEps);
    }
    if (l != nullptr && r != nullptr && !failed && !(std::fabs(leftEps - rightEps) < gEpsAgreement)) {
        failed = true;
    }
    if (!failed && (l != nullptr || r != nullptr)) {
        SetDoubleEps(l != nullptr ? leftEps : rightEps);
    }
}

} // namespace TavoXML
