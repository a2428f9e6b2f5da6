// The one place where the 16-bit text of the channels (unsigned short, char16_t) meets the parser's
// XMLCh. All three have one layout on this platform; these helpers say so once instead of casting at
// every call.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <type_traits>

namespace TavoXML {

static_assert(sizeof(XMLCh) == sizeof(unsigned short) && alignof(XMLCh) == alignof(unsigned short),
              "XMLCh must have the layout of the channels' 16-bit characters");
static_assert(std::is_same_v<XMLCh, char16_t>, "XMLCh is expected to be char16_t");

inline XMLCh const* AsXMLCh(unsigned short const* text) noexcept {
    return reinterpret_cast<XMLCh const*>(text);
}
inline XMLCh* AsXMLCh(unsigned short* text) noexcept {
    return reinterpret_cast<XMLCh*>(text);
}
inline unsigned short const* AsUShort(XMLCh const* text) noexcept {
    return reinterpret_cast<unsigned short const*>(text);
}
inline unsigned short* AsUShort(XMLCh* text) noexcept {
    return reinterpret_cast<unsigned short*>(text);
}
// The whole text of a string, zero-terminated, without a copy.
inline XMLCh const* AsXMLCh(Tavo::UniString const& text) noexcept {
    return text.GetU16Str();
}

} // namespace TavoXML
