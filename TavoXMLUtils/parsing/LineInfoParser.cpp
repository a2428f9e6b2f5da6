#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/PlatformUtils.hpp>

ValidatingXMLParser::LineInfoParser::LineInfoParser()
    : xercesc::XercesDOMParser(nullptr, xercesc::XMLPlatformUtils::fgMemoryManager, nullptr),
      nodeLocations(nullptr), locator(getScanner()->getLocator()) {}

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
    InsertNodeLocInfo();
}

void ValidatingXMLParser::LineInfoParser::startEntityReference(const xercesc::XMLEntityDecl& entDecl) {
    xercesc::XercesDOMParser::startEntityReference(entDecl);
    InsertNodeLocInfo();
}
