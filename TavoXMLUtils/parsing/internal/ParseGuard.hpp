// ParseGuard: the rules of one parse against hostile documents, fed by the parser's callbacks.
//
// - External general entities are refused unless the parser was told to read them: resolving an
//   external entity once the root element has started can only be for a general entity (external
//   parameter entities and the external DTD subset are read before the root element), so such a
//   resolution ends the parse at the reference.
// - Entity expansion is bounded by size: the replacement texts of the general entities expanded in
//   content, and the DTD's own text (the values of all entity declarations, which hold their expanded
//   parameter entities, and the comments, processing instructions and blanks between declarations,
//   where parameter entities expand too), must each stay below ExpansionLimit(): 10 MiB characters,
//   or 10 times the document's bytes read so far when that is more. The counts of expansions (the
//   parser's own, and the memory manager's of entity readers) stay in force beside it.
//
// State: one guard per parse, on the stack of the parse; it learns where the parse stands from
// OnStartDocument and OnStartElement. Every refusal names the rule and the scanner's current line.
// The refusal of an external entity comes from the entity resolver and throws
// xercesc::SAXParseException, which resolvers may throw. A refusal for size can come from deep inside
// the DTD scanner, whose unwinding is reliable only for the parser's out-of-memory exception (any
// other one loses the scanner's reader stack and ends the parse with an unrelated text); so it keeps
// its text and line here (Refused, RefusalText, RefusalLine) and throws xercesc::OutOfMemoryException.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>

XERCES_CPP_NAMESPACE_BEGIN
class DTDEntityDecl;
class Locator;
class XMLEntityDecl;
class XMLResourceIdentifier;
XERCES_CPP_NAMESPACE_END

namespace TavoXML::detail {

class ParseMemory;

class ParseGuard {
public:
    // `memory` tells how many document bytes were read; `locator` gives lines for the refusals.
    ParseGuard(ParseMemory const& memory, xercesc::Locator const& locator, bool readExternalGeneralEntities);
    ParseGuard(ParseGuard const&) = delete;
    ParseGuard& operator=(ParseGuard const&) = delete;

    std::size_t ExpansionLimit() const;

    void OnStartDocument() noexcept;
    void OnStartElement() noexcept { inContent = true; }
    // Before a general entity is expanded in content.
    void OnStartEntity(xercesc::XMLEntityDecl const& entity);
    // After an entity (general or parameter) was declared, with its value complete.
    void OnEntityDecl(xercesc::DTDEntityDecl const& entity);
    // After a comment, processing instruction or blank run of the DTD was read.
    void OnDoctypeText(std::size_t length);
    // Before an external resource is resolved.
    void OnResolve(xercesc::XMLResourceIdentifier const& resource);

    // After an out-of-memory exception: whether it was a refusal for size, and its text and line.
    bool Refused() const noexcept { return !refusalText.IsEmpty(); }
    Tavo::UniString const& RefusalText() const noexcept { return refusalText; }
    XMLFileLoc RefusalLine() const noexcept { return refusalLine; }

private:
    [[noreturn]] void RefuseResource(XMLCh const* systemId) const;
    [[noreturn]] void RefuseSize();
    void AddExpanded(std::size_t& total, std::size_t count);

    ParseMemory const& memory;
    xercesc::Locator const& locator;
    bool readExternalGeneralEntities;
    bool inContent = false;
    std::size_t expanded = 0; // replacement text of the general entities expanded in content
    std::size_t declared = 0; // the DTD's text: entity values, comments, instructions, blanks
    Tavo::UniString refusalText;
    XMLFileLoc refusalLine = 0;
};

} // namespace TavoXML::detail
