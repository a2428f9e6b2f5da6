#include "TavoXMLUtils/compare/XMLValueComparators.hpp"

#include "TavoRoot/Numbers.hpp"
#include "TavoXMLUtils/compare/IXMLCompareOptions.hpp"

#include <xercesc/dom/DOMText.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>

namespace TavoXML {

namespace {

char16_t const gEmptyText[1] = {0};

template <class T>
bool ReadNumber(char16_t const* text, T& value) noexcept {
    return Tavo::strtovalue(reinterpret_cast<unsigned short const*>(text), value, Tavo::ToValueStrict,
                            Tavo::TrimWSBothEnds);
}

bool RealsEqual(double left, double right, IXMLCompareOptions const* options) {
    double const difference = left - right;
    if (options == nullptr) {
        return difference == 0.0;
    }
    double const eps = options->GetDoubleEps();
    if (eps == 0.0) {
        return difference == 0.0;
    }
    return eps > std::fabs(difference);
}

// The text without white space (Tavo::IsWhiteSpace) at either end, as Tavo::UniString::Trim cuts it.
std::u16string_view Trimmed(std::u16string_view text) noexcept {
    while (!text.empty() && Tavo::IsWhiteSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && Tavo::IsWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// Trim and Tavo::UniString::IsEqual on the copies, done on views: no copy is needed to read.
bool TrimmedTextsEqual(std::u16string_view left, std::u16string_view right, Tavo::CaseComparison comparison) {
    std::u16string_view const l = Trimmed(left);
    std::u16string_view const r = Trimmed(right);
    if (comparison == Tavo::CaseSensitive) {
        return l == r;
    }
    return std::ranges::equal(l, r, {}, Tavo::ToLowerCase, Tavo::ToLowerCase);
}

} // namespace

// ---- XMLValueComparator

XMLValueComparator::~XMLValueComparator() = default;

bool XMLValueComparator::CompareValues(xercesc::DOMText const* left, xercesc::DOMText const* right,
                                       IXMLCompareOptions const& options) {
    leftText = left;
    rightText = right;
    this->options = &options;
    useTextNodes = true;
    return IsEqual();
}

bool XMLValueComparator::CompareValues(Tavo::UniString const& left, Tavo::UniString const& right,
                                       IXMLCompareOptions const& options) {
    leftString = left;
    rightString = right;
    this->options = &options;
    useTextNodes = false;
    return IsEqual();
}

char16_t const* XMLValueComparator::LeftChars() const noexcept {
    if (!useTextNodes) {
        return leftString.GetU16Str();
    }
    // An attribute without a text child hands in null; it reads as the empty value.
    return leftText == nullptr || leftText->getNodeValue() == nullptr ? gEmptyText : leftText->getNodeValue();
}

char16_t const* XMLValueComparator::RightChars() const noexcept {
    if (!useTextNodes) {
        return rightString.GetU16Str();
    }
    return rightText == nullptr || rightText->getNodeValue() == nullptr ? gEmptyText
                                                                        : rightText->getNodeValue();
}

std::u16string_view XMLValueComparator::LeftView() const noexcept {
    return useTextNodes ? std::u16string_view(LeftChars()) : leftString.View();
}

std::u16string_view XMLValueComparator::RightView() const noexcept {
    return useTextNodes ? std::u16string_view(RightChars()) : rightString.View();
}

void XMLValueComparator::HandStateTo(XMLValueComparator& other) const {
    other.options = options;
    other.leftText = leftText;
    other.rightText = rightText;
    other.leftString = leftString;
    other.rightString = rightString;
    other.useTextNodes = useTextNodes;
}

// ---- the ready comparators

bool XMLCompareAuto::IsEqual() const {
    // The same judgement as GetValueCmp() followed by that comparator's IsEqual, without the second
    // object and the second reading of both numbers: this runs once for every text of a document.
    double left = 0.0;
    double right = 0.0;
    if (ReadNumber(LeftChars(), left) && ReadNumber(RightChars(), right)) {
        return RealsEqual(left, right, GetOptions());
    }
    return TrimmedTextsEqual(LeftView(), RightView(), Tavo::CaseInsensitive);
}

XMLValueComparator* XMLCompareAuto::GetValueCmp() const {
    double left = 0.0;
    double right = 0.0;
    if (!ReadNumber(LeftChars(), left) || !ReadNumber(RightChars(), right)) {
        return new XMLCompareString();
    }
    return new XMLCompareDouble();
}

bool XMLCompareInt::IsEqual() const {
    int left = 0;
    int right = 0;
    return ReadNumber(LeftChars(), left) && ReadNumber(RightChars(), right) && left == right;
}

bool XMLCompareDouble::IsEqual() const {
    double left = 0.0;
    double right = 0.0;
    return ReadNumber(LeftChars(), left) && ReadNumber(RightChars(), right) &&
           RealsEqual(left, right, GetOptions());
}

bool XMLCompareString::IsEqual() const {
    return TrimmedTextsEqual(LeftView(), RightView(), Tavo::CaseInsensitive);
}

bool XMLCompareStringCaseSensitive::IsEqual() const {
    return TrimmedTextsEqual(LeftView(), RightView(), Tavo::CaseSensitive);
}

} // namespace TavoXML
