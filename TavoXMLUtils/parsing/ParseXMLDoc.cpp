#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

// Each call builds and destroys a whole parser: nothing is shared between calls, so they may run on
// several threads at once. The document outlives the parser because the parser gave it away.

xercesc::DOMDocument* ParseXMLDoc(Vesk::Location const& location, ValidatingXMLParser::ValSchemes scheme,
                                  bool createEntityRefs, NodeLocations* nodeLocations,
                                  NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage) {
    ValidatingXMLParser parser;
    return parser.Parse(location, scheme, createEntityRefs, nodeLocations, errorLocation, errorMessage);
}

xercesc::DOMDocument* ParseXMLDoc(unsigned char const* bytes, unsigned int size,
                                  ValidatingXMLParser::ValSchemes scheme, bool createEntityRefs,
                                  Tavo::UniString const& name, NodeLocations* nodeLocations,
                                  NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage) {
    ValidatingXMLParser parser;
    return parser.Parse(bytes, size, scheme, createEntityRefs, name, nodeLocations, errorLocation,
                        errorMessage);
}

xercesc::DOMDocument* ParseXMLDoc(unsigned char const* bytes, unsigned int size,
                                  ValidatingXMLParser::ValSchemes scheme, bool createEntityRefs,
                                  Vesk::Location const& location, NodeLocations* nodeLocations,
                                  NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage) {
    Tavo::UniString path;
    location.ToPath(&path);
    return ParseXMLDoc(bytes, size, scheme, createEntityRefs, path, nodeLocations, errorLocation,
                       errorMessage);
}
