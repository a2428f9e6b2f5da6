#include "TavoXMLUtils/interface/XercescInitializer.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoRoot/TavoException.hpp"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace TavoXML {

namespace {

// True while Xerces-C++ is initialised by this library. Shared by all instances; touched only while the
// library loads and unloads (and by instances that a client builds itself), so it needs no lock.
bool xercescInited = false;

} // namespace

XercescInitializer::XercescInitializer() noexcept {
    if (xercescInited) {
        return;
    }
    try {
        xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr,
                                              nullptr);
        xercescInited = true;
    } catch (...) {
        // Loading goes on; every later DOM call fails in its own way.
        DBBreak(std::string(detail::SourceName(detail::SourceLocation::current())).c_str(), __LINE__,
                "XML Initialize error", "XercescInitializer", nullptr, nullptr);
    }
}

// The first instance destroyed terminates Xerces-C++ for all; the instances are deliberately not
// counted (see the header).
XercescInitializer::~XercescInitializer() {
    if (xercescInited) {
        xercesc::XMLPlatformUtils::Terminate();
        xercescInited = false;
    }
}

} // namespace TavoXML
