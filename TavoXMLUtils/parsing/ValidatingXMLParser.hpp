// ValidatingXMLParser and ParseXMLDoc: the one way of the library from a location, a memory block or
// an input source to a DOMDocument. A result other than null belongs to the caller, who ends it with
// release(). On failure the result is null, and the line and the text of the failure go to the two
// optional output pointers; nothing thrown by the parser gets out, running out of memory included
// (the text is then "out of memory").
//
// Parsing and the outside world. Documents are untrusted input, so the parser is safe by default:
// - Only local files are read for a DTD or an entity: a "file:" URL whose host is empty or
//   "localhost", or a plain path (a relative one against the working directory). Any other scheme or
//   host is never opened, and only regular files are: no FIFO, device, socket or folder.
// - External general entities (`<!ENTITY e SYSTEM "...">` referenced as `&e;` in content) are refused:
//   the parse fails at the reference, and no byte of the named resource reaches the document. External
//   DTD subsets and external parameter entities are read, so declarations and DTD validation work. A
//   caller who trusts its documents may allow external general entities on its own parser
//   (AllowExternalGeneralEntities); ParseXMLDoc and the channels never do.
// - Entity expansion is bounded by count: 50000 expansions of general entities, or one for each 16
//   bytes of a document whose size is known beforehand when that is more; and that many plus 1000
//   entities read in all, parameter entities expanded inside the DTD included. And by size: the
//   replacement text of the general entities expanded in content, and the DTD's own text (entity
//   values, comments, processing instructions and blanks), may each not exceed 10 MiB characters, or
//   10 times the document's size when that is more.
// - A parse has a memory budget of 128 MiB plus 256 bytes for each byte of the document; beyond it
//   the parse fails as if memory ran out, with a text that names the limit.
// - A failed parse leaves no memory behind, also where the parser's library would leak.
#pragma once

#include <cstddef>

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/Locator.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DTDEntityDecl;
class MemoryManager;
class XMLResourceIdentifier;
XERCES_CPP_NAMESPACE_END

namespace TavoXML::detail {
class ParseGuard;
class ParseMemory;
} // namespace TavoXML::detail

class TAVOXMLUTILS_API ValidatingXMLParser {
public:
    using ValSchemes = xercesc::AbstractDOMParser::ValSchemes;

    // A DOM parser that records the source line of every element, text, comment and entity reference
    // node in a NodeLocations table while it builds the tree.
    class TAVOXMLUTILS_API LineInfoParser : public xercesc::XercesDOMParser {
    public:
        // On the parser library's global memory manager.
        LineInfoParser();
        // On `memory`, which must outlive the parser and every document it hands out.
        explicit LineInfoParser(xercesc::MemoryManager* memory);
        ~LineInfoParser() override;

        // The scanner's position, for texts that name a line.
        xercesc::Locator const& GetLocator() const noexcept { return *locator; }
        // The rules of the running parse; null (the default) checks nothing. Not owned.
        void SetGuard(TavoXML::detail::ParseGuard* parseGuard) noexcept { guard = parseGuard; }
        // Makes the parser usable again after a parse that ended by an exception, running out of memory
        // included (after which the parser library would refuse every further call). With
        // `releaseDocument` the partly built document goes at once, so that its memory is free.
        void RecoverFromFailedParse(bool releaseDocument) noexcept;

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
        void startDocument() override;
        void entityDecl(const xercesc::DTDEntityDecl& entityDecl, const bool isPEDecl,
                        const bool isIgnored) override;
        xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resourceIdentifier) override;
        void doctypeComment(const XMLCh* const comment) override;
        void doctypePI(const XMLCh* const target, const XMLCh* const data) override;
        void doctypeWhitespace(const XMLCh* const chars, const XMLSize_t length) override;

    private:
        NodeLocations* nodeLocations;
        xercesc::Locator const* locator;
        TavoXML::detail::ParseGuard* guard = nullptr;
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

    // Off by default. When on, the external general entities of later parses are read from local
    // regular files as the resolution above says; only for documents that the caller trusts.
    void AllowExternalGeneralEntities(bool allow) noexcept { externalGeneralEntities = allow; }
    bool ExternalGeneralEntitiesAllowed() const noexcept { return externalGeneralEntities; }

    LineInfoParser& GetParser() noexcept { return parser; }

private:
    // Owns the parser's memory manager and retires it when the parser is gone: declared first, so that
    // it is destroyed last.
    class MemoryOwner {
    public:
        MemoryOwner();
        MemoryOwner(MemoryOwner const&) = delete;
        MemoryOwner& operator=(MemoryOwner const&) = delete;
        ~MemoryOwner();
        TavoXML::detail::ParseMemory& operator*() const noexcept { return *memory; }

    private:
        TavoXML::detail::ParseMemory* memory;
    };

    // Parse with the document's size when it is known beforehand (0 otherwise), for the count limit.
    xercesc::DOMDocument* ParseSized(xercesc::InputSource& source, std::size_t size, ValSchemes scheme,
                                     bool createEntityRefs, NodeLocations* nodeLocations,
                                     NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage);
    // The report of a parse ended by OutOfMemoryException: the guard's refusal for size, the entity
    // limit, the budget or the heap.
    void ReportOutOfMemory(TavoXML::detail::ParseGuard const& guard, NodeLocationInfo* errorLocation,
                           Tavo::UniString* errorMessage) noexcept;
    xercesc::DOMDocument* ParseGuarded(xercesc::InputSource& source, std::size_t size, ValSchemes scheme,
                                       bool createEntityRefs, NodeLocationInfo* errorLocation,
                                       Tavo::UniString* errorMessage);

    MemoryOwner memory;
    LineInfoParser parser;
    bool externalGeneralEntities = false;
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
