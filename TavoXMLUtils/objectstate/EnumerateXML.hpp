// EnumerateXML: reports the children of one DOM node to an XMLContentProcessor as the fields of one
// object, framed by ObjectEntered and ObjectExited (the exit comes on every way out, exceptions
// included). The node's own name doesn't matter. The processor's provider selects the dialect.
//
// Plain dialect (no provider). Elements without children (and text, comments) are skipped. An element
// with one child is a value: a text that Xerces-C++'s XMLBigDecimal accepts is a number - with fraction
// digits a real (XMLDouble); otherwise XMLString::parseInt of its digits, a 32-bit result widened with
// sign, reported by UIntFound, or by IntFound when negative. Xerces-C++ gives a zero no digits, which
// parseInt refuses, so "0" comes back as the string "0"; digits beyond 32 bits wrap (5000000000 reads as
// 705032704) and beyond 64 bits make the text a string. Any other text is "true"/"false" (BoolFound) or
// a string (StringFound), untrimmed, through the narrow form of XMLString::transcode read as Windows-1252.
// An element with more children is a list when all its non-empty children are called "list_value",
// otherwise an object. Failures don't throw: a text that can't be transcoded, a single child that is no
// text (an element, a comment), or nesting beyond 1000 levels stops the walk of that level; the status
// is then GeneralError there, and the levels above go on.
//
// Typed dialect. Every non-empty element needs the provider's type attribute and a text as first child
// (the whitespace of an indented document serves for structures); values are trimmed and read by their
// declared type: integers as above, but a refused number throws Xerces-C++'s NumberFormatException, so
// a declared zero throws. A bool other than "true"/"false" and an unknown type give no value event. A list
// takes the type of its subtype attribute (homogeneous providers) or of its first element for all its
// elements. A missing attribute, a first child that is no text, nesting beyond 1000 levels or a null word
// from the provider throw TavoXML::XMLObjectStateException. Nothing is caught; the status is always
// GeneralError and tells nothing.
//
// A null node reports an empty object and gives GeneralError.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/objectstate/XMLContentProcessor.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

TAVOXMLUTILS_API int EnumerateXML(XERCES_CPP_NAMESPACE::DOMNode const* node, XMLContentProcessor& processor);
