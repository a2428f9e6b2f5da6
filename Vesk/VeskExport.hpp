// Export macro of the Vesk shared library: symbols are hidden unless marked VESK_API.
#pragma once

#define VESK_API __attribute__((visibility("default")))
