// Export macro of the TavoXMLUtils shared library: symbols are hidden unless marked TAVOXMLUTILS_API.
#pragma once

#define TAVOXMLUTILS_API __attribute__((visibility("default")))
