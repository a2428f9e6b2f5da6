// Helpers of the reader tests: readers over literal documents, and the channel's state as plain text.
#pragma once

#include "common/TestText.hpp"

#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ReaderTest {

using TavoTest::Utf8;

// A reader over the UTF-8 document `xml`, built from memory.
inline std::unique_ptr<TavoXML::DOMReader> Open(std::string_view xml, char const* topLevelTag = nullptr) {
    auto const* data = reinterpret_cast<unsigned char const*>(xml.data());
    auto const size = static_cast<unsigned int>(xml.size());
    if (topLevelTag == nullptr) {
        return std::make_unique<TavoXML::DOMReader>(data, size, Tavo::XMLNoTopLevelTag);
    }
    return std::make_unique<TavoXML::DOMReader>(data, size, topLevelTag);
}

// A message of the channel: its text and its line.
using Message = std::pair<std::string, int>;

inline std::vector<Message> Messages(Tavo::XMLIChannel& channel) {
    std::vector<Message> result(channel.GetNumberOfMessage());
    for (int index = 0; index < static_cast<int>(result.size()); ++index) {
        Tavo::UniString text;
        channel.GetMessage(index, text, result[index].second);
        result[index].first = Utf8(text);
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
    return (type == Tavo::XMLStartToken ? "S:" : type == Tavo::XMLEndToken ? "E:" : "?:") + Utf8(name);
}

// The status of an operation and the cursor after it: "ok S:b", "fail E:a", or the status as a number.
inline std::string After(int status, TavoXML::DOMReader& reader) {
    return (status == Tavo::NoError        ? std::string("ok")
            : status == Tavo::GeneralError ? std::string("fail")
                                           : std::to_string(status)) +
           " " + Token(reader);
}

} // namespace ReaderTest
