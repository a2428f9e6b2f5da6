// The start-up order of the library's static objects. Library-internal: not part of the public
// interface.
//
// Loading the shared library constructs these objects in the order of their steps below, and unloading
// destroys them in the reverse order:
//   1. TAVOXML_STARTUP_IMAGE: TavoInitImage runs (learns the library's own file name);
//   2. TAVOXML_STARTUP_BRIDGE: the object-state bridge's XercescInitializer;
//   3. TAVOXML_STARTUP_ENCODING: DefaultEncName, the encoding name "UTF-8" of the document formatter;
//   4. TAVOXML_STARTUP_FACTORIES: the channel factories' XercescInitializer;
//   5. TAVOXML_STARTUP_HARNESS: the round-trip harness's XercescInitializer.
// A step whose unit is not (yet) part of the library is simply absent. The XercescInitializer objects
// share one flag: the first one constructed initialises Xerces-C++ (the bridge's where it exists, else
// the factories'), the later ones find it initialised. At unload the first one destroyed, the last
// constructed (the harness's), terminates Xerces-C++ for all, and the others find it terminated.
//
// Mechanism: C++ orders dynamic initialisation only within one translation unit; across units the order
// is whatever the linker gives. Each object therefore carries a GCC/Clang init priority (an entry in
// .init_array.NNNNN), and the static linker sorts those entries by number for the whole shared library
// before any unprioritised initialiser. Each constructed object registers its destructor at that moment,
// so destruction at unload runs exactly backwards. An object that a unit defines without a priority is
// constructed after all of these and destroyed before them, which the shared flag of
// XercescInitializer also tolerates.
//
// A unit that uses the DOM defines its initialiser with its own step, for instance the harness's:
//   namespace TavoXML {
//   static XercescInitializer xercescInitializer TAVOXML_STARTUP_AT(TAVOXML_STARTUP_HARNESS);
//   }
#pragma once

#include "TavoRoot/UniString.hpp"

// Init priorities; lower numbers start earlier and stop later. 0-100 are reserved by the toolchain.
#define TAVOXML_STARTUP_IMAGE 101
#define TAVOXML_STARTUP_BRIDGE 102
#define TAVOXML_STARTUP_ENCODING 103
#define TAVOXML_STARTUP_FACTORIES 104
#define TAVOXML_STARTUP_HARNESS 105

#define TAVOXML_STARTUP_AT(step) __attribute__((init_priority(step)))

// "UTF-8": the encoding name that the document formatter uses by default. It stands in the start-up
// unit, at its place in the order above, so that it is built before any later initialiser of the
// library could need it.
extern Tavo::UniString const DefaultEncName;
