// Throwing an exception of the Tavo::TavoException family with the thrower's place filled in: the
// source file's name without folder or extension (so no build path leaks into messages) and the line,
// both taken from std::source_location at the call site. Throw never returns; it throws ExceptionType,
// or std::bad_alloc when the name cannot be copied.
#pragma once

#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/UniString.hpp"

#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>

namespace TavoXML::detail {

// "/src/TavoXMLUtils/reader/TavoXMLDOMReader.cpp" gives "TavoXMLDOMReader".
constexpr std::string_view SourceName(std::source_location where) noexcept {
    std::string_view path = where.file_name();
    if (auto slash = path.find_last_of("/\\"); slash != std::string_view::npos) {
        path.remove_prefix(slash + 1);
    }
    if (auto dot = path.find('.'); dot != std::string_view::npos) {
        path = path.substr(0, dot);
    }
    return path;
}

// The message is a char const* (TavoCharCodeDefault) or a Tavo::UniString.
template <class ExceptionType, class Message>
[[noreturn]] void Throw(Message const& message, int errorCode,
                        std::source_location where = std::source_location::current()) {
    std::string const file(SourceName(where));
    // The root class takes its cause as a pointer only; the family's classes also without one.
    if constexpr (std::is_constructible_v<ExceptionType, Message const&, char const*, unsigned int, int>) {
        throw ExceptionType(message, file.c_str(), where.line(), errorCode);
    } else {
        throw ExceptionType(message, file.c_str(), where.line(), nullptr, errorCode);
    }
}

template <class ExceptionType, class Message>
[[noreturn]] void Throw(Message const& message, Tavo::TavoException const& previous, int errorCode,
                        std::source_location where = std::source_location::current()) {
    std::string const file(SourceName(where));
    throw ExceptionType(message, file.c_str(), where.line(), previous, errorCode);
}

} // namespace TavoXML::detail
