// The document formatter: prints a DOM tree, behind an XML declaration, as text in a chosen encoding
// into a Tavo::OChannel, without the DOM serialiser of Xerces-C++. It adds no layout of its own: line
// ends and indentation are the text nodes of the tree (the one exception: each child of a document node
// is followed by a line end).
//
// Output, in order: the byte-order mark of the encoding (EF BB BF for UTF-8, FF FE for UTF-16 and
// UTF-16LE, FE FF for UTF-16BE, none for every other encoding), the declaration
// <?xml version="1.0" encoding="NAME"?> and a line feed (a byte-ordered UTF-16 name is declared as
// "UTF-16", the mark gives the order), then the node and everything below it. Text escapes "&", "<" and
// the ">" of "]]>"; attribute values escape "&", "<", double quote and apostrophe. A character that the
// encoding cannot represent becomes a reference "&#xHEX;", one per 16-bit unit, even in names, comments
// and CDATA sections, where it is not read back as one. The children of an entity reference are not
// written, only the reference itself.
//
// Depth: the tree is walked iteratively, with the open elements kept on the heap, so any depth of
// nesting is formatted (100,000 nested elements included) without stack growth and without a depth
// limit.
//
// State: none between calls; each call owns its transcoder and printer. Xerces-C++ must be initialised
// (loading the library does that).
//
// Failure: the result is false and nothing is reported beyond it. A null channel, an encoding that the
// transcoding service does not know, or no memory for the print block: false, nothing written. A
// channel whose WriteBin returns a non-zero status: nothing more reaches it, formatting runs on to its
// end, false. A DOMException or XMLException during output: false, what was written stays in the
// channel. Any other exception passes to the caller. A null node, which has nothing to walk, gives
// false with nothing written.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace Tavo {
class OChannel;
}

// Writes `node` and everything below it to `channel`. The encoding: with `forceEncoding` true,
// `encoding` if not null, else the document's own; with false, the document's own if it declares one,
// else `encoding`; "UTF-8" when neither names one. True when everything was written.
TAVOXMLUTILS_API bool FormatXMLDoc(XERCES_CPP_NAMESPACE::DOMNode const* node, Tavo::OChannel* channel,
                                   unsigned short const* encoding, bool forceEncoding);

// FormatXMLDoc in UTF-8, whatever the document declares; the output starts with the UTF-8 mark.
TAVOXMLUTILS_API bool FormatXMLDocUTF8(XERCES_CPP_NAMESPACE::DOMNode const* node, Tavo::OChannel* channel);

namespace TavoXML {

// A copy of `text` with apostrophe, double quote, "&", "<" and ">" replaced, in this order, by their
// entity references. The ampersand comes third and so hits the two references made before it: an
// apostrophe comes out as "&amp;apos;", a double quote as "&amp;quot;". Independent of the formatter.
TAVOXMLUTILS_API Tavo::UniString Encode(Tavo::UniString const& text);

} // namespace TavoXML
