#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <gtest/gtest.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// A client that uses the library from its own static initialiser, with no set-up of its own.
std::string const gExportedDuringStartup = [] {
    Tavo::XMLOChannel* channel = TavoXML::CreateXMLOChannel("early", TavoXML::ReturnNullOnError);
    std::string text = TavoXML::ExportOChannelToUniString(channel).ToCStr().Get();
    TavoXML::DisposeXMLOChannel(channel);
    return text;
}();

// fgMemoryManager of a private copy of Xerces-C++ (see below), null after Terminate.
void** gPrivateMemoryManager = nullptr;

// Runs at the very end, after the loader has finalised the libraries of the other link-map namespaces.
__attribute__((destructor)) void ReportPrivateXercesAtExit() {
    if (gPrivateMemoryManager != nullptr) {
        bool const terminated = *gPrivateMemoryManager == nullptr;
        std::fputs(terminated ? "terminated at unload\n" : "still initialised at unload\n", stderr);
        std::_Exit(terminated ? 0 : 1);
    }
}

} // namespace

TEST(LibraryStartup, FirstCallWorksWithoutSetUpAndAnExtraInitializerTerminatesForAll) {
    EXPECT_EQ(gExportedDuringStartup,
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n<early/>");
    { TavoXML::XercescInitializer extra; }
    EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    static TavoXML::XercescInitializer const again; // stays for the other tests of the program
    EXPECT_NE(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
}

// A private copy of the library in a new link-map namespace; the end of the process is its unload.
TEST(LibraryStartupDeathTest, LoadingInitialisesAndUnloadingTerminatesXerces) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer runtime cannot be loaded into a second namespace";
#else
    auto loadAndExit = [] {
        Dl_info info{};
        dladdr(reinterpret_cast<void*>(&TavoXML::DisposeXMLOChannel), &info);
        void* library = dlmopen(LM_ID_NEWLM, info.dli_fname, RTLD_NOW | RTLD_LOCAL);
        Lmid_t space = 0;
        if (library == nullptr || dlinfo(library, RTLD_DI_LMID, &space) != 0) {
            std::_Exit(3);
        }
        void* xerces = dlmopen(space, "libxerces-c-3.2.so", RTLD_NOW | RTLD_NOLOAD);
        if (xerces != nullptr) {
            gPrivateMemoryManager =
                static_cast<void**>(dlsym(xerces, "_ZN11xercesc_3_216XMLPlatformUtils15fgMemoryManagerE"));
        }
        if (gPrivateMemoryManager == nullptr || *gPrivateMemoryManager == nullptr) {
            std::_Exit(4); // loading did not initialise Xerces-C++
        }
        std::exit(0);
    };
    EXPECT_EXIT(loadAndExit(), ::testing::ExitedWithCode(0), "terminated at unload");
#endif
}
