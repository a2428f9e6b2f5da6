// Helpers of the reader tests: readers over literal documents, and the channel's state as plain text
// that GoogleTest can compare and print.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ReaderTest {

inline std::string Utf8(Tavo::UniString const& text) {
    std::unique_ptr<char[]> const bytes(text.CopyUTF8(0, Tavo::UniString::kAll, 0));
    return std::string(bytes.get());
}

inline Tavo::UniString FromUtf8(std::string const& text) {
    return Tavo::UniString(text.c_str(), static_cast<unsigned int>(text.size()), TavoCharCodeUTF8);
}

// A reader over the UTF-8 document `xml`, built from memory.
inline std::unique_ptr<TavoXML::DOMReader> Open(std::string_view xml, char const* topLevelTag = nullptr) {
    auto const* data = reinterpret_cast<unsigned char const*>(xml.data());
    auto const size = static_cast<unsigned int>(xml.size());
    if (topLevelTag == nullptr) {
        return std::make_unique<TavoXML::DOMReader>(data, size, Tavo::XMLNoTopLevelTag);
    }
    return std::make_unique<TavoXML::DOMReader>(data, size, topLevelTag);
}

struct Message {
    std::string text;
    int line;
    bool operator==(Message const&) const = default;
    friend std::ostream& operator<<(std::ostream& out, Message const& message) {
        return out << '"' << message.text << "\" @" << message.line;
    }
};

inline std::vector<Message> Messages(Tavo::XMLIChannel& channel) {
    std::vector<Message> result;
    int const count = channel.GetNumberOfMessage();
    for (int index = 0; index < count; ++index) {
        Tavo::UniString text;
        int line = -1;
        channel.GetMessage(index, text, line);
        result.push_back(Message{Utf8(text), line});
    }
    return result;
}

// The cursor as "S:name" or "E:name" ("N" for no token); the error status is left as it was found.
inline std::string Token(TavoXML::DOMReader& reader) {
    if (reader.GetActualNode() == nullptr || reader.GetErrorStatus() != 0) {
        return "N";
    }
    Tavo::UniString name;
    Tavo::XMLTokenType const type = reader.GetTokenTypeName(name);
    return std::string(type == Tavo::XMLStartToken ? "S:"
                       : type == Tavo::XMLEndToken ? "E:"
                                                   : "?:") +
           Utf8(name);
}

// The status of an operation and the cursor after it: "ok S:b", "fail E:a", or the status as a number.
inline std::string After(int status, TavoXML::DOMReader& reader) {
    std::string const result = status == Tavo::NoError        ? "ok"
                               : status == Tavo::GeneralError ? "fail"
                                                              : std::to_string(status);
    return result + " " + Token(reader);
}

} // namespace ReaderTest
