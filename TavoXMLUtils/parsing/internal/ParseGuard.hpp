// ParseGuard: the rules of one parse against hostile documents, fed by the parser's callbacks.
//
// - External general entities are refused unless the parser was told to read them: resolving an
//   external entity once the root element has started can only be for a general entity (external
//   parameter entities and the external DTD subset are read before the root element), so such a
//   resolution ends the parse at the reference.
// - Entity expansion is bounded by size: the replacement texts of the general entities expanded in
//   content, and the values of all entity declarations (which hold their expanded parameter
//   entities), must stay below ExpansionLimit(): 10 MiB characters, or 10 times the document's bytes
//   read so far when that is more. The parser's own count of expansions stays in force beside it.
//
// State: one guard per parse, on the stack of the parse; it learns where the parse stands from
// OnStartDocument and OnStartElement. Every refusal throws xercesc::SAXParseException with the
// scanner's current line and a text that names the rule.
#pragma once

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
    // Before an external resource is resolved.
    void OnResolve(xercesc::XMLResourceIdentifier const& resource);

private:
    [[noreturn]] void Refuse(char const* format, XMLCh const* detail = nullptr) const;
    void AddExpanded(std::size_t& total, std::size_t count) const;

    ParseMemory const& memory;
    xercesc::Locator const& locator;
    bool readExternalGeneralEntities;
    bool inContent = false;
    std::size_t expanded = 0; // replacement text of the general entities expanded in content
    std::size_t declared = 0; // values of all entity declarations
};

} // namespace TavoXML::detail
