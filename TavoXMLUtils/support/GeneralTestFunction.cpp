// The channel round-trip harness.
#include "TavoXMLUtils/support/GeneralTestFunction.hpp"

#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/interface/XercescInitializer.hpp"
#include "TavoXMLUtils/interface/internal/LibraryStartup.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "Vesk/FileSystem.hpp"
#include "Vesk/Name.hpp"

namespace TavoXML {
// Like every unit that works with the DOM, this one keeps Xerces-C++ initialised while it is loaded; it
// is the last of the library's initialisers to start and so the first to stop.
static XercescInitializer xercescInitializer TAVOXML_STARTUP_AT(TAVOXML_STARTUP_HARNESS);
} // namespace TavoXML

namespace GeneralTestFunction {

namespace {

constexpr char gRootTag[] = "XMLRoot";
constexpr char gFileName[] = "XMLReadWriteTest.xml";

} // namespace

Vesk::Location GetLocationInTemporaryFolder() {
    Vesk::Location location;
    Vesk::fileSystem.GetSpecialLocation(Vesk::SpecialLocationTemporary, &location);
    location.AppendToLocal(Vesk::Name(gFileName));
    return location;
}

int WriteToXMLFile(Vesk::Location const& location, std::function<int(Tavo::XMLOChannel&)> const& writer) {
    Tavo::XMLOChannel* channel = TavoXML::CreateXMLOChannel(location, gRootTag, TavoXML::ReturnNullOnError);
    if (channel == nullptr) {
        return Tavo::GeneralError;
    }
    // Deleting the channel writes the file, also when a call below throws.
    TavoXML::XMLOChannelGuard const guard(&channel);
    int status = channel->WriteStartDocument();
    if (status == Tavo::NoError) {
        status = writer(*channel);
        if (status == Tavo::NoError) {
            status = channel->WriteEndDocument();
        }
    }
    return status;
}

int ReadFromXMLFile(Vesk::Location const& location, std::function<int(Tavo::XMLIChannel&)> const& reader) {
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannel(location, gRootTag, TavoXML::ReturnNullOnError);
    if (channel == nullptr) {
        return Tavo::GeneralError;
    }
    TavoXML::XMLIChannelGuard const guard(&channel);
    // The factory accepts any root element; a file with another root is not one that WriteToXMLFile
    // wrote, so it is refused here.
    if (!static_cast<TavoXML::DOMReader*>(channel)->CheckTopLevelTag(gRootTag)) {
        return Tavo::GeneralError;
    }
    return reader(*channel);
}

int XMLReadWriteTest(std::function<int(Tavo::XMLOChannel&)> const& writer,
                     std::function<int(Tavo::XMLIChannel&)> const& reader,
                     std::function<bool()> const& verifier) {
    Vesk::Location const location = GetLocationInTemporaryFolder();
    int status = WriteToXMLFile(location, writer);
    if (status == Tavo::NoError) {
        status = ReadFromXMLFile(location, reader);
    }
    if (status == Tavo::NoError) {
        status = verifier() ? Tavo::NoError : Tavo::GeneralError;
    }
    // Not a scope guard on purpose: when a callable throws, the file stays for inspection.
    Vesk::fileSystem.Delete(location, Vesk::DeleteFileOrEmptyFolder, Vesk::DeleteForce);
    return status;
}

} // namespace GeneralTestFunction
