// ValidatingXMLParser and ParseXMLDoc: the one way of the library from a location, a memory block or
// an input source to a DOMDocument. A result other than null belongs to the caller, who ends it with
// release(). On failure the result is null, and the line and the text of the failure go to the two
// optional output pointers; nothing thrown by the parser gets out.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/Locator.hpp>

class TAVOXMLUTILS_API ValidatingXMLParser {
public:
    using ValSchemes = xercesc::AbstractDOMParser::ValSchemes;

    // A DOM parser that records the source line of every element, text, comment and entity reference
    // node in a NodeLocations table while it builds the tree.
    class TAVOXMLUTILS_API LineInfoParser : public xercesc::XercesDOMParser {
    public:
        LineInfoParser();
        ~LineInfoParser() override;

        // Where entries go; null turns the tracking off. The table is not owned.
        void SetNodeLocations(NodeLocations* locations) noexcept { nodeLocations = locations; }
        NodeLocations* GetNodeLocations() const noexcept { return nodeLocations; }

        // Records the parser's current node with the scanner's current line; never throws.
        void InsertNodeLocInfo();

        void docCharacters(const XMLCh* const chars, const XMLSize_t length,
                           const bool cdataSection) override;
        void docComment(const XMLCh* const comment) override;
        void startElement(const xercesc::XMLElementDecl& elemDecl, const unsigned int urlId,
                          const XMLCh* const elemPrefix,
                          const xercesc::RefVectorOf<xercesc::XMLAttr>& attrList, const XMLSize_t attrCount,
                          const bool isEmpty, const bool isRoot) override;
        void startEntityReference(const xercesc::XMLEntityDecl& entDecl) override;

    private:
        NodeLocations* nodeLocations;
        xercesc::Locator const* locator;
    };

    ValidatingXMLParser();
    ValidatingXMLParser(ValidatingXMLParser const&) = delete;
    ValidatingXMLParser& operator=(ValidatingXMLParser const&) = delete;
    ~ValidatingXMLParser();

    // Loads an XML schema into this parser's grammar cache; every later Parse validates against it with
    // namespaces on, whatever scheme it is given.
    bool LoadSchema(Vesk::Location const& location, NodeLocationInfo* errorLocation = nullptr,
                    Tavo::UniString* errorMessage = nullptr);

    // The one parsing routine. `createEntityRefs` keeps entity reference nodes in the tree.
    xercesc::DOMDocument* Parse(xercesc::InputSource& source, ValSchemes scheme, bool createEntityRefs,
                                NodeLocations* nodeLocations = nullptr,
                                NodeLocationInfo* errorLocation = nullptr,
                                Tavo::UniString* errorMessage = nullptr);
    // The file at `location`, read through Vesk.
    xercesc::DOMDocument* Parse(Vesk::Location const& location, ValSchemes scheme, bool createEntityRefs,
                                NodeLocations* nodeLocations = nullptr,
                                NodeLocationInfo* errorLocation = nullptr,
                                Tavo::UniString* errorMessage = nullptr);
    // A memory block that is not copied; `name` becomes the system id and the document's URI.
    xercesc::DOMDocument* Parse(unsigned char const* bytes, unsigned int size, ValSchemes scheme,
                                bool createEntityRefs, Tavo::UniString const& name,
                                NodeLocations* nodeLocations = nullptr,
                                NodeLocationInfo* errorLocation = nullptr,
                                Tavo::UniString* errorMessage = nullptr);
    // A memory block named by the path of `location`.
    xercesc::DOMDocument* Parse(unsigned char const* bytes, unsigned int size, ValSchemes scheme,
                                bool createEntityRefs, Vesk::Location const& location,
                                NodeLocations* nodeLocations = nullptr,
                                NodeLocationInfo* errorLocation = nullptr,
                                Tavo::UniString* errorMessage = nullptr);

    LineInfoParser& GetParser() noexcept { return parser; }

private:
    LineInfoParser parser;
};

// One throw-away ValidatingXMLParser (without schema) and the matching Parse.
TAVOXMLUTILS_API xercesc::DOMDocument*
ParseXMLDoc(Vesk::Location const& location, ValidatingXMLParser::ValSchemes scheme, bool createEntityRefs,
            NodeLocations* nodeLocations = nullptr, NodeLocationInfo* errorLocation = nullptr,
            Tavo::UniString* errorMessage = nullptr);
TAVOXMLUTILS_API xercesc::DOMDocument*
ParseXMLDoc(unsigned char const* bytes, unsigned int size, ValidatingXMLParser::ValSchemes scheme,
            bool createEntityRefs, Tavo::UniString const& name, NodeLocations* nodeLocations = nullptr,
            NodeLocationInfo* errorLocation = nullptr, Tavo::UniString* errorMessage = nullptr);
TAVOXMLUTILS_API xercesc::DOMDocument*
ParseXMLDoc(unsigned char const* bytes, unsigned int size, ValidatingXMLParser::ValSchemes scheme,
            bool createEntityRefs, Vesk::Location const& location, NodeLocations* nodeLocations = nullptr,
            NodeLocationInfo* errorLocation = nullptr, Tavo::UniString* errorMessage = nullptr);
