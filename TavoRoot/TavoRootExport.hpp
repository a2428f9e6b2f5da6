// Export macro of the TavoRoot shared library: symbols are hidden unless marked TAVOROOT_API.
#pragma once

#define TAVOROOT_API __attribute__((visibility("default")))
