#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoRoot/TavoException.hpp"
#include "TavoXMLUtils/parsing/LocationInputSource.hpp"
#include "TavoXMLUtils/parsing/internal/CountingInputSource.hpp"
#include "TavoXMLUtils/parsing/internal/DOMTreeErrorReporter.hpp"
#include "TavoXMLUtils/parsing/internal/ParseGuard.hpp"
#include "TavoXMLUtils/parsing/internal/ParseMemory.hpp"
#include "TavoXMLUtils/parsing/internal/TavoEntityResolver.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "Vesk/File.hpp"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>

namespace {

constexpr char const* gParseFailed = "Failed to parse XML document";
constexpr char const* gMemoryError = "Memory error";
constexpr char const* gSchemaNotOpened = "Could not open the XML Schema file.";
constexpr char const* gSchemaNotLoaded = "Could not load the XML Schema.";
constexpr char const* gOutOfMemory = "out of memory";
constexpr XMLSize_t gMinimumExpansions = 50000;
constexpr XMLSize_t gBytesPerExpansion = 16;
// Entity readers allowed beside the expansions the parser counts itself: the document's own, those of
// its external DTD files, and the parameter-entity expansions inside the DTD, which the parser doesn't
// count. Generous, so that an expansion in content meets the parser's count first, which names a line.
constexpr XMLSize_t gReadersBesideExpansions = 1000;
constexpr char const* gOverBudget =
    "out of memory: the document needs more than the parser allows for its size "
    "(128 MiB and 256 bytes per byte of the document)";
constexpr char const* gTooManyEntities = "Entity expansion exceeds the limit of %zu entities read";

// Expansions of general entities allowed by the parser's count: 50000, above what even heavy real use
// of entities needs, or one for each 16 bytes of a larger document.
XMLSize_t ExpansionLimit(std::size_t size) {
    return std::max(gMinimumExpansions, size / gBytesPerExpansion);
}

// Writes the outputs that were asked for. Never throws: it runs on the failure path, possibly with
// memory short, where a second exception would end the process or escape the front-end.
void Report(NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage, XMLFileLoc line,
            Tavo::UniString const& text) noexcept {
    if (errorLocation != nullptr) {
        errorLocation->lineNumber = static_cast<std::uint32_t>(line);
    }
    if (errorMessage != nullptr) {
        try {
            *errorMessage = text;
        } catch (...) {
        }
    }
}
void Report(NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage, XMLFileLoc line,
            XMLCh const* text) noexcept {
    try {
        Report(errorLocation, errorMessage, line, Tavo::UniString(text));
    } catch (...) {
        Report(errorLocation, errorMessage, line, Tavo::UniString());
    }
}
void Report(NodeLocationInfo* errorLocation, Tavo::UniString* errorMessage, XMLFileLoc line,
            char const* text) noexcept {
    try {
        Report(errorLocation, errorMessage, line, Tavo::UniString(text));
    } catch (...) {
        Report(errorLocation, errorMessage, line, Tavo::UniString());
    }
}

// The error handler, entity resolver, security manager and guard of one call live on its stack; they
// are taken off the parser when the call ends, so that the parser never points at objects that are
// gone. The parser is made usable first: its setters refuse to work while the library believes a parse
// is still running, which it does after running out of memory.
class CallScope {
public:
    explicit CallScope(ValidatingXMLParser::LineInfoParser& parser) : parser(parser) {}
    CallScope(CallScope const&) = delete;
    CallScope& operator=(CallScope const&) = delete;
    ~CallScope() {
        try {
            parser.RecoverFromFailedParse(false);
            parser.SetGuard(nullptr);
            parser.setErrorHandler(nullptr);
            parser.setEntityResolver(nullptr);
            parser.setSecurityManager(nullptr);
            parser.setDisableDefaultEntityResolution(false);
        } catch (...) {
        }
    }

private:
    ValidatingXMLParser::LineInfoParser& parser;
};

} // namespace

ValidatingXMLParser::MemoryOwner::MemoryOwner() : memory(TavoXML::detail::ParseMemory::Create()) {}

ValidatingXMLParser::MemoryOwner::~MemoryOwner() {
    memory->Retire();
}

ValidatingXMLParser::ValidatingXMLParser() : parser(&*memory) {}

ValidatingXMLParser::~ValidatingXMLParser() = default;

bool ValidatingXMLParser::LoadSchema(Vesk::Location const& location, NodeLocationInfo* errorLocation,
                                     Tavo::UniString* errorMessage) {
    {
        // Only proves that the file opens; the grammar itself is read by the parser below.
        Vesk::File file(location, Vesk::File::OnNotFoundIgnore);
        if (file.Open(Vesk::File::OpenRead, Vesk::AccessDeniedReport) != Vesk::StatusOK) {
            Report(errorLocation, errorMessage, 0, gSchemaNotOpened);
            return false;
        }
    }
    Tavo::UniString path;
    try {
        location.ToPath(&path);
        DOMTreeErrorReporter reporter;
        CallScope const scope(parser);
        parser.setErrorHandler(&reporter);
        if (parser.loadGrammar(TavoXML::AsXMLCh(path), xercesc::Grammar::SchemaGrammarType, true) ==
            nullptr) {
            TavoXML::detail::Throw<Tavo::TavoException>("", TavoXML::detail::GeneralError);
        }
        parser.setValidationScheme(xercesc::AbstractDOMParser::Val_Always);
        parser.setDoSchema(true);
        parser.setDoNamespaces(true);
        parser.useCachedGrammarInParse(true);
        return true;
    } catch (xercesc::SAXParseException const& exception) {
        Report(errorLocation, errorMessage, exception.getLineNumber(),
               Tavo::UniString(exception.getMessage()));
    } catch (xercesc::SAXException const& exception) {
        Report(errorLocation, errorMessage, 0, Tavo::UniString(exception.getMessage()));
    } catch (xercesc::XMLException const& exception) {
        Report(errorLocation, errorMessage, exception.getSrcLine(), Tavo::UniString(exception.getMessage()));
    } catch (xercesc::DOMException const& exception) {
        Report(errorLocation, errorMessage, 0, Tavo::UniString(exception.msg));
    } catch (...) {
        Report(errorLocation, errorMessage, 0, gSchemaNotLoaded);
    }
    return false;
}

xercesc::DOMDocument* ValidatingXMLParser::Parse(xercesc::InputSource& source, ValSchemes scheme,
                                                 bool createEntityRefs, NodeLocations* nodeLocations,
                                                 NodeLocationInfo* errorLocation,
                                                 Tavo::UniString* errorMessage) {
    return ParseSized(source, 0, scheme, createEntityRefs, nodeLocations, errorLocation, errorMessage);
}

xercesc::DOMDocument* ValidatingXMLParser::ParseSized(xercesc::InputSource& source, std::size_t size,
                                                      ValSchemes scheme, bool createEntityRefs,
                                                      NodeLocations* nodeLocations,
                                                      NodeLocationInfo* errorLocation,
                                                      Tavo::UniString* errorMessage) {
    parser.SetNodeLocations(nodeLocations);
    xercesc::DOMDocument* document = nullptr;
    try {
        (*memory).BeginParse(ExpansionLimit(size) + gReadersBesideExpansions);
        document = ParseGuarded(source, size, scheme, createEntityRefs, errorLocation, errorMessage);
    } catch (...) {
        Report(errorLocation, errorMessage, 0, gOutOfMemory);
    }
    // The most derived object: the start of what the library allocated for the document.
    (*memory).EndParse(document != nullptr ? dynamic_cast<void const*>(document) : nullptr);
    return document;
}

xercesc::DOMDocument* ValidatingXMLParser::ParseGuarded(xercesc::InputSource& source, std::size_t size,
                                                        ValSchemes scheme, bool createEntityRefs,
                                                        NodeLocationInfo* errorLocation,
                                                        Tavo::UniString* errorMessage) {
    DOMTreeErrorReporter reporter;
    TavoEntityResolver resolver;
    // Nested entities can make a small document expand without end ("billion laughs"). The parser's
    // security manager ends such a parse with a fatal error after ExpansionLimit() expansions of general
    // entities (character references and the predefined entities don't count); the memory manager
    // counts every entity read, parameter entities included, with some room beside. Each expansion
    // costs the parser a reader of its own, so the counts bound the time. The guard adds the bound by
    // size and the refusal of external general entities; the counting source lets both grow with the
    // document.
    xercesc::SecurityManager securityManager;
    securityManager.setEntityExpansionLimit(ExpansionLimit(size));
    TavoXML::detail::ParseGuard guard(*memory, parser.GetLocator(), externalGeneralEntities);
    TavoXML::detail::CountingInputSource counted(source, *memory);
    CallScope const scope(parser);
    try {
        parser.reset();
        // With a loaded schema the caller's scheme doesn't count: the document is validated against it,
        // and namespaces are processed exactly then.
        if (parser.getDoSchema()) {
            scheme = xercesc::AbstractDOMParser::Val_Always;
        }
        parser.setValidationScheme(scheme);
        parser.setDoNamespaces(parser.getDoSchema());
        parser.setErrorHandler(&reporter);
        parser.setCreateEntityReferenceNodes(createEntityRefs);
        parser.setEntityResolver(&resolver);
        parser.setSecurityManager(&securityManager);
        // The resolver answers for every external resource; the library's own resolution must never
        // step in behind it.
        parser.setDisableDefaultEntityResolution(true);
        parser.SetGuard(&guard);
        parser.parse(counted);
        return parser.adoptDocument();
    } catch (xercesc::OutOfMemoryException const&) {
        ReportOutOfMemory(guard, errorLocation, errorMessage);
    } catch (std::bad_alloc const&) {
        parser.RecoverFromFailedParse(true);
        Report(errorLocation, errorMessage, 0, gOutOfMemory);
    } catch (xercesc::SAXParseException const& exception) {
        Report(errorLocation, errorMessage, exception.getLineNumber(), exception.getMessage());
    } catch (xercesc::XMLException const& exception) {
        // The line in the parser's own source, not in the document; kept as the parser gives it.
        Report(errorLocation, errorMessage, exception.getSrcLine(), exception.getMessage());
    } catch (...) {
        Report(errorLocation, errorMessage, 0, gParseFailed);
    }
    return nullptr;
}

void ValidatingXMLParser::ReportOutOfMemory(TavoXML::detail::ParseGuard const& guard,
                                            NodeLocationInfo* errorLocation,
                                            Tavo::UniString* errorMessage) noexcept {
    if (guard.Refused()) {
        parser.RecoverFromFailedParse(true);
        Report(errorLocation, errorMessage, guard.RefusalLine(), guard.RefusalText());
        return;
    }
    if ((*memory).EntitiesExceeded()) {
        // Not short of memory: the readers are still in place and tell the line.
        XMLFileLoc const line = parser.GetLocator().getLineNumber();
        parser.RecoverFromFailedParse(true);
        try {
            Report(errorLocation, errorMessage, line,
                   Tavo::UniString::PrintfFwd(gTooManyEntities, (*memory).EntityLimit()));
        } catch (...) {
            Report(errorLocation, errorMessage, line, gOutOfMemory);
        }
        return;
    }
    // Memory first, so that the report itself finds some.
    parser.RecoverFromFailedParse(true);
    Report(errorLocation, errorMessage, 0, (*memory).BudgetExceeded() ? gOverBudget : gOutOfMemory);
}

xercesc::DOMDocument* ValidatingXMLParser::Parse(Vesk::Location const& location, ValSchemes scheme,
                                                 bool createEntityRefs, NodeLocations* nodeLocations,
                                                 NodeLocationInfo* errorLocation,
                                                 Tavo::UniString* errorMessage) {
    std::unique_ptr<xercesc::InputSource> source;
    try {
        source.reset(new LocationInputSource(location));
    } catch (...) {
    }
    if (!source) {
        Report(errorLocation, errorMessage, 0, gMemoryError);
        return nullptr;
    }
    std::error_code ignored;
    auto const size = std::filesystem::file_size(location.GetNativePath(), ignored);
    return ParseSized(*source, ignored ? 0 : static_cast<std::size_t>(size), scheme, createEntityRefs,
                      nodeLocations, errorLocation, errorMessage);
}

xercesc::DOMDocument* ValidatingXMLParser::Parse(unsigned char const* bytes, unsigned int size,
                                                 ValSchemes scheme, bool createEntityRefs,
                                                 Tavo::UniString const& name, NodeLocations* nodeLocations,
                                                 NodeLocationInfo* errorLocation,
                                                 Tavo::UniString* errorMessage) {
    // The buffer is not adopted: it must outlive the call. The name becomes the system id and so the
    // document's URI.
    Tavo::UniString::UStrHolder const nameText = name.ToUStr(0, Tavo::UniString::kAll);
    xercesc::MemBufInputSource source(bytes, size, TavoXML::AsXMLCh(nameText.Get()), false,
                                      xercesc::XMLPlatformUtils::fgMemoryManager);
    return ParseSized(source, size, scheme, createEntityRefs, nodeLocations, errorLocation, errorMessage);
}

xercesc::DOMDocument* ValidatingXMLParser::Parse(unsigned char const* bytes, unsigned int size,
                                                 ValSchemes scheme, bool createEntityRefs,
                                                 Vesk::Location const& location, NodeLocations* nodeLocations,
                                                 NodeLocationInfo* errorLocation,
                                                 Tavo::UniString* errorMessage) {
    Tavo::UniString path;
    location.ToPath(&path);
    return Parse(bytes, size, scheme, createEntityRefs, path, nodeLocations, errorLocation, errorMessage);
}
