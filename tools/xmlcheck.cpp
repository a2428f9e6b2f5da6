// xmlcheck: checks XML files the way the library reads them, optionally against an XML schema.
//
//   xmlcheck [--schema FILE.xsd] FILE...
//
// Prints "FILE: ok" or "FILE:LINE: message" for each file; the exit status is 1 if any file failed,
// 2 for a usage error or a schema that does not load.
#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

std::string Utf8(Tavo::UniString const& text) {
    return text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeUTF8).Get();
}

} // namespace

int main(int argc, char** argv) {
    int first = 1;
    char const* schema = nullptr;
    if (argc > 2 && std::strcmp(argv[1], "--schema") == 0) {
        schema = argv[2];
        first = 3;
    }
    if (first >= argc) {
        std::fprintf(stderr, "usage: %s [--schema FILE.xsd] FILE...\n", argv[0]);
        return 2;
    }

    ValidatingXMLParser parser;
    if (schema != nullptr) {
        NodeLocationInfo where;
        Tavo::UniString message;
        if (!parser.LoadSchema(Vesk::Location(schema), &where, &message)) {
            std::fprintf(stderr, "%s:%u: %s\n", schema, where.lineNumber, Utf8(message).c_str());
            return 2;
        }
    }

    int result = 0;
    for (int i = first; i < argc; ++i) {
        NodeLocationInfo where;
        Tavo::UniString message;
        xercesc::DOMDocument* document = parser.Parse(
            Vesk::Location(argv[i]), xercesc::AbstractDOMParser::Val_Auto, true, nullptr, &where, &message);
        if (document != nullptr) {
            document->release();
            std::printf("%s: ok\n", argv[i]);
        } else {
            std::printf("%s:%u: %s\n", argv[i], where.lineNumber, Utf8(message).c_str());
            result = 1;
        }
    }
    return result;
}
