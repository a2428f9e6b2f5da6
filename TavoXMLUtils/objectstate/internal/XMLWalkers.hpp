// The walkers of EnumerateXML: each reports the children of `node` (never `node` itself) to the
// processor. `depth` counts the objects and lists open below the walk's root; see ObjectStateChecks.hpp
// for the bound.
//
// Plain dialect: EnumerateXMLNode and IsList. Failures of a value end the walk of its level with
// GeneralError and nothing is thrown by the walk itself; exceptions of NameFound and of the entry and
// exit events pass.
// Typed dialect: EnumerateXMLNodeWithAttributeProvider (the fields of an object; always GeneralError),
// EnumerateXMLListWithAttributeProvider (the elements of a list) and ProcessTypedXMLNode (one value by
// its declared type). Nothing is caught: Xerces-C++'s number exceptions and XMLObjectStateException for
// unreadable shapes pass to the caller. These need a processor with a provider.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/objectstate/XMLContentProcessor.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXML::detail {

int EnumerateXMLNode(xercesc::DOMNode const* node, XMLContentProcessor& processor, bool inList,
                     unsigned int depth);
// True when every child of `node` that has children is called "list_value" (also when there is none).
bool IsList(xercesc::DOMNode const* node);

int EnumerateXMLNodeWithAttributeProvider(xercesc::DOMNode const* node, XMLContentProcessor& processor,
                                          bool inList, unsigned int depth);
void EnumerateXMLListWithAttributeProvider(xercesc::DOMNode const* node, XMLContentProcessor& processor,
                                           unsigned int depth);
// A value's text as both dialects read strings: the narrow form of XMLString::transcode, taken in the
// default 8-bit code, so that a character survives only as far as that code page allows. Throws what
// the transcoder throws.
Tavo::UniString NarrowText(XMLCh const* value);

void ProcessTypedXMLNode(XMLContentProcessor& processor, XMLCh const* type, XMLCh const* value,
                         xercesc::DOMNode const* node, unsigned int depth);

} // namespace TavoXML::detail
