// The value comparators: TavoXML::XMLValueComparator judges one pair of values, given as two text nodes
// or as two strings, and the five ready classes below it say how.
//
//   XMLValueComparator                   abstract; holds the pair and the options
//     XMLCompareAuto                     reals if both values read as reals, otherwise text
//     XMLCompareInt                      32-bit signed integers
//     XMLCompareDouble                   reals, equal when they differ by less than GetDoubleEps()
//     XMLCompareString                   trimmed text without regard to case
//       XMLCompareStringCaseSensitive    trimmed text with regard to case
//
// State: CompareValues stores the pair (text nodes and options not owned, strings copied) and returns
// IsEqual(). IsEqual reads the values anew on each call, from the nodes' current values or from the
// strings. An object is meant for one pair, though nothing prevents its reuse.
//
// Failures: none of their own. A value that does not read as the comparator's number type makes the
// pair unequal, even against itself. A null text node (an attribute without a text child) reads as the
// empty value. Numbers are read by Tavo::strtovalue with both modes at zero.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <string_view>

XERCES_CPP_NAMESPACE_BEGIN
class DOMText;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class IXMLCompareOptions;

class TAVOXMLUTILS_API XMLValueComparator {
public:
    XMLValueComparator() = default;
    XMLValueComparator(XMLValueComparator const&) = delete;
    XMLValueComparator& operator=(XMLValueComparator const&) = delete;

    virtual bool IsEqual() const = 0;
    virtual ~XMLValueComparator();

    // Stores the two nodes and the address of `options`, and judges the pair.
    bool CompareValues(xercesc::DOMText const* left, xercesc::DOMText const* right,
                       IXMLCompareOptions const& options);
    // Copies the two strings, stores the address of `options`, and judges the pair.
    bool CompareValues(Tavo::UniString const& left, Tavo::UniString const& right,
                       IXMLCompareOptions const& options);

protected:
    // The options of the comparison; null before the first CompareValues.
    IXMLCompareOptions const* GetOptions() const noexcept { return options; }
    // The current values as copies.
    Tavo::UniString GetLeftValue() const { return Tavo::UniString(LeftView()); }
    Tavo::UniString GetRightValue() const { return Tavo::UniString(RightView()); }
    // The current values without a copy, valid until the node or this object changes: whole, and
    // zero-terminated (as the number readers take them; a string with a zero in it ends there).
    std::u16string_view LeftView() const noexcept;
    std::u16string_view RightView() const noexcept;
    char16_t const* LeftChars() const noexcept;
    char16_t const* RightChars() const noexcept;
    // Gives `other` this object's options, pair and form, as if CompareValues had been called on it.
    void HandStateTo(XMLValueComparator& other) const;

private:
    IXMLCompareOptions const* options = nullptr;
    xercesc::DOMText const* leftText = nullptr;
    xercesc::DOMText const* rightText = nullptr;
    Tavo::UniString leftString;
    Tavo::UniString rightString;
    bool useTextNodes = false;
};

class TAVOXMLUTILS_API XMLCompareAuto : public XMLValueComparator {
public:
    // Equal as XMLCompareDouble would judge when both values read as reals, else as XMLCompareString.
    bool IsEqual() const override;
    // A new comparator of the kind the stored pair calls for (XMLCompareDouble or XMLCompareString),
    // owned by the caller and not yet given the pair. Decided anew on each call.
    XMLValueComparator* GetValueCmp() const;
};

class TAVOXMLUTILS_API XMLCompareInt : public XMLValueComparator {
public:
    bool IsEqual() const override;
};

class TAVOXMLUTILS_API XMLCompareDouble : public XMLValueComparator {
public:
    // Strictly less than the tolerance apart: a difference of exactly the tolerance is a difference.
    // Without options or with tolerance 0 the reals must be equal; a negative tolerance makes every pair
    // differ.
    bool IsEqual() const override;
};

class TAVOXMLUTILS_API XMLCompareString : public XMLValueComparator {
public:
    bool IsEqual() const override;
};

class TAVOXMLUTILS_API XMLCompareStringCaseSensitive : public XMLCompareString {
public:
    bool IsEqual() const override;
};

} // namespace TavoXML
