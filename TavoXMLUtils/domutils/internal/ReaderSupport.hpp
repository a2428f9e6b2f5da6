// Helpers shared by the tag, CDATA and attribute readers: owned result arrays, the tag name that goes
// into messages, the growing message wrapper, and the boolean vocabulary. Library-internal.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"

#include <xercesc/dom/DOMNode.hpp>

#include <cstring>
#include <memory>
#include <new>

namespace TavoXML::detail {

using CharArray = std::unique_ptr<char[]>;
using UShortArray = std::unique_ptr<unsigned short[]>;

inline constexpr char gMemoryError[] = "Memory error";

// Thrown where a copy cannot get its memory: no location, the wrappers add theirs.
[[noreturn]] inline void ThrowMemoryError() {
    throw TavoXMLUtils::ConvException(gMemoryError, static_cast<const NodeLocationInfo*>(nullptr));
}

// The name of a node for messages; a null node (outside the readers' contract) has the empty name.
inline Tavo::UniString NodeNameOf(const xercesc::DOMNode* node) {
    return node == nullptr ? Tavo::UniString() : Tavo::UniString(node->getNodeName());
}

// head + name of `tag` + "'": the form of every message about a tag.
inline Tavo::UniString TagMessage(const char* head, const xercesc::DOMNode* tag) {
    return Tavo::UniString(head) + NodeNameOf(tag) + "'";
}

// The wrapper's step on a failure: more words in front, then the line of `node` unless the message
// already has one.
inline void Prefix(TavoXMLUtils::ConvException& exception, const Tavo::UniString& prefix,
                   const xercesc::DOMNode* node) {
    exception.message = prefix + exception.message;
    exception.StoreErrLoc(node);
}

// A fresh copy of a zero-terminated 8-bit text; "Memory error" when there is no room.
inline char* CopyText(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    char* const copy = new (std::nothrow) char[size];
    if (copy == nullptr) {
        ThrowMemoryError();
    }
    std::memcpy(copy, text, size);
    return copy;
}

// "true", "yes", "1" and "false", "no", "0", exactly; anything else throws with no location.
inline bool ParseBoolean(const char* text) {
    for (const char* word : {"true", "yes", "1"}) {
        if (std::strcmp(text, word) == 0) {
            return true;
        }
    }
    for (const char* word : {"false", "no", "0"}) {
        if (std::strcmp(text, word) == 0) {
            return false;
        }
    }
    throw TavoXMLUtils::ConvException(Tavo::UniString("'yes/true' or 'no/false' expected, '") +
                                          Tavo::UniString(text, TavoCharCodeDefault) + "' found",
                                      static_cast<const NodeLocationInfo*>(nullptr));
}

} // namespace TavoXML::detail
