#include "TavoXMLUtils/parsing/internal/DOMTreeErrorReporter.hpp"

DOMTreeErrorReporter::~DOMTreeErrorReporter() = default;

void DOMTreeErrorReporter::warning(const xercesc::SAXParseException&) {}

void DOMTreeErrorReporter::error(const xercesc::SAXParseException& exception) {
    throw exception;
}

void DOMTreeErrorReporter::fatalError(const xercesc::SAXParseException& exception) {
    throw exception;
}

void DOMTreeErrorReporter::resetErrors() {}
