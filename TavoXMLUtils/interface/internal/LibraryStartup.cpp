// The start-up unit of the library: the image initialiser and the objects whose place in the start-up
// order is fixed here rather than in a unit of their own (see LibraryStartup.hpp for the order and how
// it is enforced).
#include "TavoXMLUtils/interface/internal/LibraryStartup.hpp"

#include <dlfcn.h>

#include <cstdio>
#include <cstring>

namespace {

// The library's own file name as UTF-8 (the path's last component). Nothing in the library reads it;
// it is there for a debugger or a core dump.
char gDllFileName[256];

} // namespace

// The image's first initialiser; 0 in every case. The foundation library of this platform offers no
// deferred image initialisation, so the first run is the one that counts; running it again is harmless.
// The dynamic loader's record of the mapped file gives the library's own path, from any address inside
// the library.
extern "C" int TavoInitImage() {
    Dl_info info{};
    if (dladdr(static_cast<void const*>(gDllFileName), &info) != 0 && info.dli_fname != nullptr) {
        char const* slash = std::strrchr(info.dli_fname, '/');
        std::snprintf(gDllFileName, sizeof gDllFileName, "%s", slash != nullptr ? slash + 1 : info.dli_fname);
    }
    return 0;
}

namespace {

__attribute__((constructor(TAVOXML_STARTUP_IMAGE))) void RunTavoInitImage() {
    TavoInitImage();
}

} // namespace

Tavo::UniString const DefaultEncName TAVOXML_STARTUP_AT(TAVOXML_STARTUP_ENCODING)("UTF-8");
