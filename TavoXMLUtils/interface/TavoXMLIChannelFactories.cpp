// Input channel factories: each packs the construction of a DOMReader into a callable and hands it to
// CreateXMLIChannelInternal, which applies the exception policy.
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/dom/DOMException.hpp>

#include <cstring>
#include <memory>
#include <new>

namespace TavoXML {

namespace {

// Throws the factory exception under ThrowOnError; returns for every other policy value. Called from
// inside a catch block; the caught exception is not attached.
void OnIChannelError(ExceptionPolicy policy, Tavo::UniString const& text) {
    if (static_cast<int>(policy) == ThrowOnError) {
        detail::Throw<XMLIChannelException>(text, detail::ConstructionErrorCode);
    }
}

// The UTF-8 form of `text`, measured up to its first zero byte, handed to `create`.
template <class Create>
Tavo::XMLIChannel* WithUTF8(Tavo::UniString const& text, Create const& create) {
    std::unique_ptr<char[]> const utf8(text.CopyUTF8(0, Tavo::UniString::kAll, 0));
    return create(reinterpret_cast<unsigned char const*>(utf8.get()),
                  static_cast<unsigned int>(std::strlen(utf8.get())));
}

} // namespace

Tavo::XMLIChannel* CreateXMLIChannelInternal(std::function<DOMReader*()> const& construct,
                                             ExceptionPolicy policy) {
    try {
        return construct();
    } catch (std::bad_alloc const&) {
        OnIChannelError(policy, Tavo::UniString("Not enough memory in CreateXMLIChannel"));
    } catch (xercesc::DOMException const&) {
        OnIChannelError(policy, Tavo::UniString("XercesC DOMException"));
    } catch (DOMReaderException const& exception) {
        // Unlike the output side, the reader's own text goes on: it holds the parse report.
        OnIChannelError(policy, exception.GetMessage());
    } catch (...) {
        OnIChannelError(policy, Tavo::UniString("Unknown Exception in CreateXMLIChannel"));
    }
    return nullptr;
}

Tavo::XMLIChannel* CreateXMLIChannelFromMemory(unsigned char const* data, unsigned int length,
                                               char const* topLevelTag, ExceptionPolicy policy) {
    return CreateXMLIChannelInternal([&] { return new DOMReader(data, length, topLevelTag); }, policy);
}

Tavo::XMLIChannel* CreateXMLIChannelFromMemory(unsigned char const* data, unsigned int length,
                                               Tavo::XMLNoTopLevelTagType noTag, ExceptionPolicy policy) {
    return CreateXMLIChannelInternal([&] { return new DOMReader(data, length, noTag); }, policy);
}

Tavo::XMLIChannel* CreateXMLIChannelFromMemory(Tavo::UniString const& text, char const* topLevelTag,
                                               ExceptionPolicy policy) {
    return WithUTF8(text, [&](unsigned char const* data, unsigned int length) {
        return CreateXMLIChannelFromMemory(data, length, topLevelTag, policy);
    });
}

Tavo::XMLIChannel* CreateXMLIChannelFromMemory(Tavo::UniString const& text, Tavo::XMLNoTopLevelTagType noTag,
                                               ExceptionPolicy policy) {
    return WithUTF8(text, [&](unsigned char const* data, unsigned int length) {
        return CreateXMLIChannelFromMemory(data, length, noTag, policy);
    });
}

Tavo::XMLIChannel* CreateXMLIChannel(Vesk::Location const& location, char const* topLevelTag,
                                     ExceptionPolicy policy) {
    return CreateXMLIChannelInternal([&] { return new DOMReader(location, topLevelTag); }, policy);
}

Tavo::XMLIChannel* CreateXMLIChannel(Vesk::Location const& location, Tavo::XMLNoTopLevelTagType noTag,
                                     ExceptionPolicy policy) {
    return CreateXMLIChannelInternal([&] { return new DOMReader(location, noTag); }, policy);
}

void DisposeXMLIChannel(Tavo::XMLIChannel*& channel) {
    delete channel;
    channel = nullptr;
}

} // namespace TavoXML
