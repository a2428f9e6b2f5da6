// Percent-encoding of URL text: the bytes of a UTF-8 text to "%XX" escapes and back. Internal to Vesk.
#pragma once

#include <string>
#include <string_view>

namespace Vesk::PercentCoding {

// Which bytes stay as they are; every other byte becomes "%XX" (upper-case hex).
enum class Keep {
    // RFC 3986 unreserved characters and "/": a whole path in the strictest form that URL parsers take.
    PathStrict,
    // The characters RFC 3986 allows in one path segment (unreserved, sub-delims, ":" and "@"); "/"
    // is encoded, so the segment stays one segment.
    Segment,
};

std::string Encode(std::string_view bytes, Keep keep);

// Replaces every "%XX" escape by its byte. A "%" that does not start a valid escape stays as it is.
std::string Decode(std::string_view text);

} // namespace Vesk::PercentCoding
