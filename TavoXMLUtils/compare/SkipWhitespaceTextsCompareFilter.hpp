// TavoXML::SkipWhitespaceTextsCompareFilter: a node filter for the tree walkers of a comparison that
// lines children up by elements and by texts with content. Elements are accepted; texts that are empty
// after trimming are skipped; every other node type (comments, processing instructions, CDATA
// sections, ...) is rejected with its subtree.
//
// Stateless; acceptNode never fails.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/dom/DOMNodeFilter.hpp>

namespace TavoXML {

class TAVOXMLUTILS_API SkipWhitespaceTextsCompareFilter : public xercesc::DOMNodeFilter {
public:
    FilterAction acceptNode(xercesc::DOMNode const* node) const override;
};

} // namespace TavoXML
