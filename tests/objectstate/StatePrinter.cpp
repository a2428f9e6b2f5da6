// Readable states in the messages of failed comparisons: {name:kind value, ...} with [..] for lists.
#include "TavoRoot/ObjectState.hpp"
#include "common/TestText.hpp"

#include <ostream>

namespace Tavo {

namespace {

void PrintValue(ObjectState::Value const& value, std::ostream& out);

void PrintState(ObjectState const& state, std::ostream& out) {
    out << '{';
    char const* separator = "";
    for (ObjectState::Field const& field : state) {
        out << separator << field.name.Str() << ':';
        PrintValue(field.value, out);
        separator = ", ";
    }
    out << '}';
}

void PrintValue(ObjectState::Value const& value, std::ostream& out) {
    using Kind = ObjectState::Value::Kind;
    switch (value.GetKind()) {
        case Kind::Bool:
            out << "b " << (value.GetBool() ? "true" : "false");
            break;
        case Kind::Int:
            out << "i " << value.GetInt();
            break;
        case Kind::UInt:
            out << "u " << value.GetUInt();
            break;
        case Kind::Real:
            out << "r " << value.GetReal();
            break;
        case Kind::String:
            out << "s \"" << TavoTest::Utf8(value.GetString()) << '"';
            break;
        case Kind::Object:
            PrintState(value.GetObject(), out);
            break;
        case Kind::List: {
            out << '[';
            char const* separator = "";
            for (ObjectState::Value const& element : value.GetList()) {
                out << separator;
                PrintValue(element, out);
                separator = ", ";
            }
            out << ']';
            break;
        }
    }
}

} // namespace

// Found by argument-dependent lookup from GoogleTest's printers.
void PrintTo(ObjectState const& state, std::ostream* out) {
    PrintState(state, *out);
}

} // namespace Tavo
