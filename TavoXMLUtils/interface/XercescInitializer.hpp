// TavoXML::XercescInitializer keeps Xerces-C++ initialised while the library is loaded.
//
// All instances share one flag, false at load. The first instance constructed initialises Xerces-C++
// (a failure is reported once through DBBreak and never thrown); the first instance destroyed
// terminates it for all, and a later instance initialises it again. The instances are not counted:
// the library's own instances are static objects whose order is fixed at start-up (see
// TavoXMLUtils/interface/LibraryStartup.hpp), so the first destructor runs only at unload.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

namespace TavoXML {

class TAVOXMLUTILS_API XercescInitializer {
public:
    XercescInitializer() noexcept;
    XercescInitializer(XercescInitializer const&) = delete;
    XercescInitializer& operator=(XercescInitializer const&) = delete;
    virtual ~XercescInitializer();
};

} // namespace TavoXML
