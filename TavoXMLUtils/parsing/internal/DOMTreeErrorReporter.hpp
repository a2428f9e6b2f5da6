// DOMTreeErrorReporter: the error handler of the parser front-end. Warnings are dropped; an error or a
// fatal error is thrown as a copy, so the first error of a document ends its parse.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

class TAVOXMLUTILS_API DOMTreeErrorReporter : public xercesc::ErrorHandler {
public:
    DOMTreeErrorReporter() = default;
    ~DOMTreeErrorReporter() override;

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    void resetErrors() override;
};
