// The output-side factories, disposal and export of a channel.
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/XercescInitializer.hpp"
#include "TavoXMLUtils/interface/internal/LibraryStartup.hpp"

#include <xercesc/dom/DOMException.hpp>

#include <new>
#include <utility>

namespace TavoXML {

// Keeps Xerces-C++ initialised for the channels that the factories hand out; step 4 of the start-up.
static XercescInitializer xercescInitializer TAVOXML_STARTUP_AT(TAVOXML_STARTUP_FACTORIES);

namespace {

// Only the value 1 throws; the caught exception is not attached.
void OnOChannelError(ExceptionPolicy policy, Tavo::UniString const& text) {
    if (policy == ThrowOnError) {
        detail::Throw<XMLOChannelException>(text, detail::ConstructionErrorCode);
    }
}

} // namespace

// The exception's own text is deliberately not used: every failure of one kind gets the fixed text of
// its rung, also a DOMBuilderException that says more.
Tavo::XMLOChannel* CreateXMLOChannelInternal(std::function<DOMBuilder*()> const& construct,
                                             ExceptionPolicy policy) {
    try {
        return construct();
    } catch (std::bad_alloc const&) {
        OnOChannelError(policy, "Not enough memory in CreateXMLOChannel");
    } catch (xercesc::DOMException const&) {
        OnOChannelError(policy, "XercesC DOMException");
    } catch (DOMBuilderException const&) {
        OnOChannelError(policy, "TavoXML DOMBuilderException");
    } catch (...) {
        OnOChannelError(policy, "Unknown Exception in CreateXMLOChannel");
    }
    return nullptr;
}

// Each factory hands a construction to the worker. If the constructor throws, new-expression frees the
// memory of the object before the exception reaches the worker.
Tavo::XMLOChannel* CreateXMLOChannel(char const* topLevelTag, ExceptionPolicy policy) {
    return CreateXMLOChannelInternal([topLevelTag] { return new DOMBuilder(topLevelTag, true); }, policy);
}

Tavo::XMLOChannel* CreateXMLOChannel(Tavo::XMLNoTopLevelTagType noTag, ExceptionPolicy policy) {
    return CreateXMLOChannelInternal([noTag] { return new DOMBuilder(noTag, true); }, policy);
}

Tavo::XMLOChannel* CreateXMLOChannel(Vesk::Location const& location, char const* topLevelTag,
                                     ExceptionPolicy policy) {
    return CreateXMLOChannelInternal(
        [&location, topLevelTag] { return new DOMBuilder(location, topLevelTag, true); }, policy);
}

Tavo::XMLOChannel* CreateXMLOChannel(Vesk::Location const& location, Tavo::XMLNoTopLevelTagType noTag,
                                     ExceptionPolicy policy) {
    return CreateXMLOChannelInternal([&location, noTag] { return new DOMBuilder(location, noTag, true); },
                                     policy);
}

void DisposeXMLOChannel(Tavo::XMLOChannel*& channel) {
    delete channel;
    channel = nullptr;
}

Tavo::UniString ExportOChannelToUniString(Tavo::XMLOChannel* channel) {
    if (auto* builder = dynamic_cast<DOMBuilder*>(channel)) {
        return builder->Export(true);
    }
    return Tavo::UniString();
}

void ExportOChannel(Tavo::XMLOChannel* channel, std::function<void(char const*, unsigned int)> sink) {
    if (auto* builder = dynamic_cast<DOMBuilder*>(channel)) {
        builder->Export(std::move(sink), true);
    }
}

} // namespace TavoXML
