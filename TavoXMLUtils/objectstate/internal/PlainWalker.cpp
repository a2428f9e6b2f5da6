// The plain walker: types inferred from the shape and the text of the tree.
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/objectstate/internal/ObjectStateChecks.hpp"
#include "TavoXMLUtils/objectstate/internal/XMLWalkers.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLBigDecimal.hpp>
#include <xercesc/util/XMLDouble.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstdint>
#include <memory>

namespace TavoXML::detail {

namespace {

using xercesc::DOMNode;

constexpr XMLCh gListValue[] = u"list_value";

// XMLString::parseInt's 32-bit result, widened with sign.
long long ParseDigits(XMLCh const* digits) {
    return xercesc::XMLString::parseInt(digits, xercesc::XMLPlatformUtils::fgMemoryManager);
}

// False when XMLBigDecimal would certainly refuse the text: it takes nothing but digits, a sign, a point
// and surrounding XML whitespace. Such texts go to the text path at once, which ends as the refusal
// would, without the cost of Xerces-C++ building its exception for every word of a document.
bool MayBeDecimal(XMLCh const* value) noexcept {
    for (; *value != 0; ++value) {
        XMLCh const c = *value;
        bool const allowed = (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.' || c == u' ' ||
                             c == u'\t' || c == u'\n' || c == u'\r';
        if (!allowed) {
            return false;
        }
    }
    return true;
}

// The number path. Throws whatever Xerces-C++ or the processor throws; the caller takes that as "no
// number". A zero has no digits, which parseInt refuses, so a zero never leaves this path as a number.
void ReportNumber(XMLContentProcessor& processor, XMLCh const* value) {
    xercesc::XMLBigDecimal const decimal(value, xercesc::XMLPlatformUtils::fgMemoryManager);
    if (decimal.getScale() != 0) {
        xercesc::XMLDouble const real(value, xercesc::XMLPlatformUtils::fgMemoryManager);
        processor.RealFound(real.getValue());
    } else if (decimal.getSign() >= 0) {
        processor.UIntFound(static_cast<unsigned long long>(ParseDigits(decimal.getValue())));
    } else {
        // The product is taken in 32 bits; unsigned arithmetic makes its wrap-around defined.
        auto const product =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(ParseDigits(decimal.getValue())) *
                                      static_cast<std::uint32_t>(decimal.getSign()));
        processor.IntFound(product);
    }
}

// The text path, untrimmed. False when anything in it threw.
bool ReportText(XMLContentProcessor& processor, XMLCh const* value) noexcept {
    try {
        Tavo::UniString const text = NarrowText(value);
        if (text == "true") {
            processor.BoolFound(true);
        } else if (text == "false") {
            processor.BoolFound(false);
        } else {
            processor.StringFound(text);
        }
        return true;
    } catch (...) {
        return false;
    }
}

// One value: a number if the number path takes it, else the text path. False when the value failed.
bool ReportScalar(XMLContentProcessor& processor, DOMNode const* child) {
    // A single child that is no text (an element, a comment, a processing instruction) is unreadable.
    // This library's choice: it takes the failure of the text path rather than being read as text.
    auto const type = child->getNodeType();
    if (type != DOMNode::TEXT_NODE && type != DOMNode::CDATA_SECTION_NODE) {
        return false;
    }
    XMLCh const* value = child->getNodeValue();
    if (MayBeDecimal(value)) {
        try {
            ReportNumber(processor, value);
            return true;
        } catch (...) {
            // Not a number (or its event threw): the text path follows, with a second event if so.
        }
    }
    return ReportText(processor, value);
}

} // namespace

int EnumerateXMLNode(DOMNode const* node, XMLContentProcessor& processor, bool inList, unsigned int depth) {
    // Siblings rather than the child list by index: Xerces-C++ counts and indexes that list from its
    // start on every call. The walk doesn't change the tree, so both visit the same children.
    for (DOMNode const* child = node->getFirstChild(); child; child = child->getNextSibling()) {
        DOMNode const* first = child->getFirstChild();
        if (!first) {
            continue;
        }
        if (!inList) {
            processor.NameFound(Tavo::UniString(AsUShort(child->getNodeName())));
        }
        if (!first->getNextSibling()) {
            if (!ReportScalar(processor, first)) {
                return Tavo::GeneralError;
            }
            continue;
        }
        // This library's choice: nesting beyond the bound fails the level like an unreadable value.
        if (depth >= MaxObjectStateDepth) {
            return Tavo::GeneralError;
        }
        if (IsList(child)) {
            processor.ListEntered();
            EnumerateXMLNode(child, processor, true, depth + 1);
            processor.ListExited();
        } else {
            processor.ObjectEntered();
            EnumerateXMLNode(child, processor, false, depth + 1);
            processor.ObjectExited();
        }
    }
    return Tavo::NoError;
}

Tavo::UniString NarrowText(XMLCh const* value) {
    auto release = [](char* text) {
        xercesc::XMLString::release(&text, xercesc::XMLPlatformUtils::fgMemoryManager);
    };
    std::unique_ptr<char, decltype(release)> const narrow(
        xercesc::XMLString::transcode(value, xercesc::XMLPlatformUtils::fgMemoryManager), release);
    return Tavo::UniString(narrow.get(), TavoCharCodeDefault);
}

bool IsList(DOMNode const* node) {
    for (DOMNode const* child = node->getFirstChild(); child; child = child->getNextSibling()) {
        if (child->hasChildNodes() && !xercesc::XMLString::equals(child->getNodeName(), gListValue)) {
            return false;
        }
    }
    return true;
}

} // namespace TavoXML::detail
