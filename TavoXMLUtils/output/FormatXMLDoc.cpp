// The formatter's entries: choose the encoding, make the transcoder and the printer, write mark and
// declaration, walk the tree.
#include "TavoXMLUtils/output/FormatXMLDoc.hpp"

#include "TavoRoot/OChannel.hpp"
#include "TavoXMLUtils/interface/internal/LibraryStartup.hpp"
#include "TavoXMLUtils/output/internal/FormatNode.hpp"
#include "TavoXMLUtils/output/internal/XMLPrint.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/framework/XMLRecognizer.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <memory>
#include <new>
#include <string>

using TavoXML::detail::XMLPrint;
using TavoXML::detail::XMLPrintTarget;
using xercesc::XMLString;
using xercesc::XMLUni;

namespace {

constexpr XMLCh gXMLDecl1[] = u"<?xml version=\"";
constexpr XMLCh gXMLDecl2[] = u"\" encoding=\"";
constexpr XMLCh gXMLDecl4[] = u"\"?>\n";
constexpr XMLCh gVersion[] = u"1.0";
constexpr XMLSize_t gBlockSize = 16384;

constexpr unsigned char gUTF8Mark[] = {0xEF, 0xBB, 0xBF};
constexpr unsigned char gUTF16LEMark[] = {0xFF, 0xFE};
constexpr unsigned char gUTF16BEMark[] = {0xFE, 0xFF};

struct ByteOrderMark {
    unsigned char const* bytes = nullptr;
    unsigned long length = 0;
};

// The copy of the document's declared encoding, or empty when it declares none. A failed copy counts
// as no encoding.
std::u16string DocumentEncoding(xercesc::DOMNode const* node) {
    if (node == nullptr) {
        return {};
    }
    auto const* document = dynamic_cast<xercesc::DOMDocument const*>(node);
    if (document == nullptr) {
        document = node->getOwnerDocument();
    }
    XMLCh const* declared = document != nullptr ? document->getXmlEncoding() : nullptr;
    if (declared == nullptr || *declared == 0) {
        return {};
    }
    try {
        return std::u16string(declared);
    } catch (std::bad_alloc const&) {
        return {};
    }
}

bool EqualsAnyIgnoringCase(XMLCh const* name, std::initializer_list<XMLCh const*> candidates) {
    for (XMLCh const* candidate : candidates) {
        if (XMLString::compareIString(name, candidate) == 0) {
            return true;
        }
    }
    return false;
}

// The byte-order mark of an encoding class; plain UTF-16 is renamed to its little-endian form.
ByteOrderMark ClassifyEncoding(XMLCh const*& name) {
    if (EqualsAnyIgnoringCase(name, {XMLUni::fgUTF8EncodingString, XMLUni::fgUTF8EncodingString2})) {
        return {gUTF8Mark, sizeof gUTF8Mark};
    }
    if (EqualsAnyIgnoringCase(name, {XMLUni::fgUTF16EncodingString, XMLUni::fgUTF16EncodingString2,
                                     XMLUni::fgUTF16EncodingString3, XMLUni::fgUTF16EncodingString4})) {
        name = xercesc::XMLRecognizer::nameForEncoding(xercesc::XMLRecognizer::UTF_16L);
        return {gUTF16LEMark, sizeof gUTF16LEMark};
    }
    if (EqualsAnyIgnoringCase(name, {XMLUni::fgUTF16BEncodingString, XMLUni::fgUTF16BEncodingString2})) {
        return {gUTF16BEMark, sizeof gUTF16BEMark};
    }
    if (EqualsAnyIgnoringCase(name, {XMLUni::fgUTF16LEncodingString, XMLUni::fgUTF16LEncodingString2})) {
        return {gUTF16LEMark, sizeof gUTF16LEMark};
    }
    return {};
}

// The name for the declaration: the transcoder's, except that a byte-ordered UTF-16 name is declared
// as plain UTF-16, since the mark gives the order.
XMLCh const* DeclaredName(xercesc::XMLTranscoder const& transcoder) {
    XMLCh const* name = transcoder.getEncodingName();
    for (XMLCh const* ordered : {XMLUni::fgUTF16BEncodingString, XMLUni::fgUTF16BEncodingString2,
                                 XMLUni::fgUTF16LEncodingString, XMLUni::fgUTF16LEncodingString2}) {
        if (XMLString::equals(name, ordered)) {
            return XMLUni::fgUTF16EncodingString;
        }
    }
    return name;
}

// Null for an encoding that the transcoding service does not know.
xercesc::XMLTranscoder* MakeTranscoder(XMLCh const* name) {
    xercesc::XMLTransService::Codes failure = xercesc::XMLTransService::Ok;
    try {
        return xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
            name, failure, gBlockSize, xercesc::XMLPlatformUtils::fgMemoryManager);
    } catch (xercesc::XMLException const&) {
        return nullptr;
    }
}

void PrintDeclaration(XMLPrint& printer, xercesc::XMLTranscoder const& transcoder) {
    printer << TavoXML::AsUShort(gXMLDecl1) << TavoXML::AsUShort(gVersion) << TavoXML::AsUShort(gXMLDecl2)
            << TavoXML::AsUShort(DeclaredName(transcoder)) << TavoXML::AsUShort(gXMLDecl4);
}

} // namespace

bool FormatXMLDoc(xercesc::DOMNode const* node, Tavo::OChannel* channel, unsigned short const* encoding,
                  bool forceEncoding) {
    // A null node has nothing to walk; it is refused before anything is written.
    if (channel == nullptr || node == nullptr) {
        return false;
    }
    std::u16string const documentEncoding = DocumentEncoding(node);
    XMLCh const* document = documentEncoding.empty() ? nullptr : documentEncoding.c_str();
    XMLCh const* requested = TavoXML::AsXMLCh(encoding);
    XMLCh const* name = forceEncoding ? (requested != nullptr ? requested : document)
                                      : (document != nullptr ? document : requested);
    if (name == nullptr) {
        name = TavoXML::AsXMLCh(DefaultEncName);
    }
    ByteOrderMark const mark = ClassifyEncoding(name);

    std::unique_ptr<xercesc::XMLTranscoder> const transcoder(MakeTranscoder(name));
    if (transcoder == nullptr) {
        return false;
    }
    XMLPrintTarget printer(*transcoder, false, XMLPrint::NoEscapes, XMLPrint::UnRep_CharRef, channel);
    if (!printer.InitOk()) {
        return false;
    }
    try {
        if (mark.bytes != nullptr) {
            printer.PrintTarget(mark.bytes, mark.length);
        }
        PrintDeclaration(printer, *transcoder);
        TavoXML::detail::FormatNode(node, &printer);
    } catch (xercesc::DOMException const&) {
        return false;
    } catch (xercesc::XMLException const&) {
        return false;
    }
    return printer.ok;
}

bool FormatXMLDocUTF8(xercesc::DOMNode const* node, Tavo::OChannel* channel) {
    XMLCh const* utf8 = xercesc::XMLRecognizer::nameForEncoding(xercesc::XMLRecognizer::UTF_8);
    return FormatXMLDoc(node, channel, TavoXML::AsUShort(utf8), true);
}
