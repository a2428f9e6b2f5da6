#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include "TavoXMLUtils/parsing/internal/ParseGuard.hpp"

#include <xercesc/internal/ReaderMgr.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

ValidatingXMLParser::LineInfoParser::LineInfoParser()
    : LineInfoParser(xercesc::XMLPlatformUtils::fgMemoryManager) {}

ValidatingXMLParser::LineInfoParser::LineInfoParser(xercesc::MemoryManager* memory)
    : xercesc::XercesDOMParser(nullptr, memory, nullptr), nodeLocations(nullptr),
      locator(getScanner()->getLocator()) {}

ValidatingXMLParser::LineInfoParser::~LineInfoParser() = default;

void ValidatingXMLParser::LineInfoParser::InsertNodeLocInfo() {
    if (nodeLocations == nullptr) {
        return;
    }
    xercesc::DOMNode const* const node = getCurrentNode();
    if (node == nullptr) {
        return;
    }
    // A line that can't be recorded is lost; the parse itself must not be disturbed.
    try {
        nodeLocations->AddNew(node, static_cast<unsigned int>(locator->getLineNumber()));
    } catch (...) {
    }
}

void ValidatingXMLParser::LineInfoParser::docCharacters(const XMLCh* const chars, const XMLSize_t length,
                                                        const bool cdataSection) {
    xercesc::XercesDOMParser::docCharacters(chars, length, cdataSection);
    // Text is recorded, CDATA sections are not: only element, text, comment and entity reference
    // nodes carry lines.
    if (!cdataSection) {
        InsertNodeLocInfo();
    }
}

void ValidatingXMLParser::LineInfoParser::docComment(const XMLCh* const comment) {
    xercesc::XercesDOMParser::docComment(comment);
    InsertNodeLocInfo();
}

void ValidatingXMLParser::LineInfoParser::startElement(const xercesc::XMLElementDecl& elemDecl,
                                                       const unsigned int urlId,
                                                       const XMLCh* const elemPrefix,
                                                       const xercesc::RefVectorOf<xercesc::XMLAttr>& attrList,
                                                       const XMLSize_t attrCount, const bool isEmpty,
                                                       const bool isRoot) {
    xercesc::XercesDOMParser::startElement(elemDecl, urlId, elemPrefix, attrList, attrCount, isEmpty, isRoot);
    if (guard != nullptr) {
        guard->OnStartElement();
    }
    InsertNodeLocInfo();
}

void ValidatingXMLParser::LineInfoParser::RecoverFromFailedParse(bool releaseDocument) noexcept {
    // The library leaves its in-progress mark set after running out of memory, on purpose, and its
    // stack of readers as it was: the next parse would go on reading the old document after its own.
    setParseInProgress(false);
    if (!releaseDocument) {
        return;
    }
    try {
        // The reader manager belongs to the scanner and is not const; the scanner only shows it so.
        const_cast<xercesc::ReaderMgr*>(getScanner()->getReaderMgr())->reset();
        resetPool();
    } catch (...) {
    }
}

void ValidatingXMLParser::LineInfoParser::startDocument() {
    xercesc::XercesDOMParser::startDocument();
    if (guard != nullptr) {
        guard->OnStartDocument();
    }
}

void ValidatingXMLParser::LineInfoParser::entityDecl(const xercesc::DTDEntityDecl& entityDecl,
                                                     const bool isPEDecl, const bool isIgnored) {
    xercesc::XercesDOMParser::entityDecl(entityDecl, isPEDecl, isIgnored);
    if (guard != nullptr) {
        guard->OnEntityDecl(entityDecl);
    }
}

xercesc::InputSource*
ValidatingXMLParser::LineInfoParser::resolveEntity(xercesc::XMLResourceIdentifier* resourceIdentifier) {
    if (guard != nullptr && resourceIdentifier != nullptr) {
        guard->OnResolve(*resourceIdentifier);
    }
    return xercesc::XercesDOMParser::resolveEntity(resourceIdentifier);
}

void ValidatingXMLParser::LineInfoParser::startEntityReference(const xercesc::XMLEntityDecl& entDecl) {
    if (guard != nullptr) {
        guard->OnStartEntity(entDecl);
    }
    xercesc::XercesDOMParser::startEntityReference(entDecl);
    InsertNodeLocInfo();
}

namespace {
// The markup around a comment ("<!--", "-->") and a processing instruction ("<?", " ", "?>").
constexpr std::size_t gCommentMarkup = 7;
constexpr std::size_t gInstructionMarkup = 5;
} // namespace

// The DTD's comments, instructions and blanks count towards its text, markup included: parameter
// entities expanded between declarations may produce nothing else, even empty comments, and a bomb
// of them would otherwise go unmeasured.
void ValidatingXMLParser::LineInfoParser::doctypeComment(const XMLCh* const comment) {
    if (guard != nullptr) {
        guard->OnDoctypeText(xercesc::XMLString::stringLen(comment) + gCommentMarkup);
    }
    xercesc::XercesDOMParser::doctypeComment(comment);
}

void ValidatingXMLParser::LineInfoParser::doctypePI(const XMLCh* const target, const XMLCh* const data) {
    if (guard != nullptr) {
        guard->OnDoctypeText(xercesc::XMLString::stringLen(target) + xercesc::XMLString::stringLen(data) +
                             gInstructionMarkup);
    }
    xercesc::XercesDOMParser::doctypePI(target, data);
}

void ValidatingXMLParser::LineInfoParser::doctypeWhitespace(const XMLCh* const chars,
                                                            const XMLSize_t length) {
    if (guard != nullptr) {
        guard->OnDoctypeText(length);
    }
    xercesc::XercesDOMParser::doctypeWhitespace(chars, length);
}
