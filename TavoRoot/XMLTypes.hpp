// Status codes, token types and tag types shared by the XML channels.
#pragma once

namespace Tavo {

// Status of every write, read and token operation of the XML channels.
inline constexpr int NoError = 0;
inline constexpr int GeneralError = -7003;

// Token types; the values are also bit flags for ReadToken(mask).
enum XMLTokenType : unsigned int {
    XMLStartToken = 1,
    XMLEndToken = 2,
    XMLNoToken = 128,
};

// Selects, by overload, the constructors and factories of a channel without a named top-level element.
enum XMLNoTopLevelTagType : int {
    XMLNoTopLevelTag = 0,
};

} // namespace Tavo
