// Throwing an exception of the Tavo::TavoException family with the thrower's place filled in: the
// source file's name without folder or extension (so no build path leaks into messages) and the line,
// both taken from std::source_location at the call site (or, with a compiler whose library lacks it, such
// as clang 14 on libstdc++ 12, from the same compiler built-ins it rests on). Throw never returns; it throws
// ExceptionType, or std::bad_alloc when the name cannot be copied.
#pragma once

#include "TavoRoot/TavoException.hpp"
#include "TavoRoot/UniString.hpp"

#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>

namespace TavoXML::detail {

#if defined(__cpp_lib_source_location)
using SourceLocation = std::source_location;
#else
class SourceLocation {
public:
    static constexpr SourceLocation current(char const* file = __builtin_FILE(),
                                            unsigned int line = __builtin_LINE()) noexcept {
        return SourceLocation(file, line);
    }
    constexpr char const* file_name() const noexcept { return file; }
    constexpr unsigned int line() const noexcept { return number; }

private:
    constexpr SourceLocation(char const* file, unsigned int line) noexcept : file(file), number(line) {}
    char const* file;
    unsigned int number;
};
#endif

// "/src/TavoXMLUtils/reader/TavoXMLDOMReader.cpp" gives "TavoXMLDOMReader".
constexpr std::string_view SourceName(SourceLocation where) noexcept {
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
                        SourceLocation where = SourceLocation::current()) {
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
                        SourceLocation where = SourceLocation::current()) {
    std::string const file(SourceName(where));
    throw ExceptionType(message, file.c_str(), where.line(), previous, errorCode);
}

} // namespace TavoXML::detail
