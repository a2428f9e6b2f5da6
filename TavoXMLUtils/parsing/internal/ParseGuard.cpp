#include "TavoXMLUtils/parsing/internal/ParseGuard.hpp"

#include "TavoXMLUtils/parsing/internal/ParseMemory.hpp"

#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include <algorithm>

namespace TavoXML::detail {

namespace {

constexpr std::size_t gMinimumExpansionLimit = std::size_t{10} << 20;
constexpr std::size_t gExpansionPerInputByte = 10;

constexpr char const* gExternalEntityRefused =
    "External entity \"%T\" is not read: external general entities are disabled for this parser";
constexpr char const* gExpansionTooLarge = "Entity expansion exceeds the limit of %zu characters";

} // namespace

ParseGuard::ParseGuard(ParseMemory const& memory, xercesc::Locator const& locator,
                       bool readExternalGeneralEntities)
    : memory(memory), locator(locator), readExternalGeneralEntities(readExternalGeneralEntities) {}

std::size_t ParseGuard::ExpansionLimit() const {
    return std::max(gMinimumExpansionLimit, memory.InputBytes() * gExpansionPerInputByte);
}

void ParseGuard::OnStartDocument() noexcept {
    inContent = false;
    expanded = 0;
    declared = 0;
}

void ParseGuard::RefuseResource(XMLCh const* systemId) const {
    Tavo::UniString const text =
        Tavo::UniString::PrintfFwd(gExternalEntityRefused, Tavo::UniString(systemId).ToPrintf());
    throw xercesc::SAXParseException(text.GetU16Str(), locator);
}

void ParseGuard::RefuseSize() {
    refusalLine = locator.getLineNumber();
    refusalText = Tavo::UniString::PrintfFwd(gExpansionTooLarge, ExpansionLimit());
    throw xercesc::OutOfMemoryException();
}

void ParseGuard::AddExpanded(std::size_t& total, std::size_t count) {
    total += count;
    if (total > ExpansionLimit()) {
        RefuseSize();
    }
}

void ParseGuard::OnStartEntity(xercesc::XMLEntityDecl const& entity) {
    // An external entity's text is bounded by its file; an internal one is known before it is read.
    if (!entity.isExternal()) {
        AddExpanded(expanded, entity.getValueLen());
    }
}

void ParseGuard::OnEntityDecl(xercesc::DTDEntityDecl const& entity) {
    AddExpanded(declared, entity.getValueLen());
}

void ParseGuard::OnDoctypeText(std::size_t length) {
    AddExpanded(declared, length);
}

void ParseGuard::OnResolve(xercesc::XMLResourceIdentifier const& resource) {
    if (inContent && !readExternalGeneralEntities &&
        resource.getResourceIdentifierType() == xercesc::XMLResourceIdentifier::ExternalEntity) {
        RefuseResource(resource.getSystemId());
    }
}

} // namespace TavoXML::detail
