#include "tools/tavoxml/Input.hpp"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>
#include <unistd.h>

namespace Tool {

namespace {

std::string ReadStandardInput() {
    std::string bytes{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    return bytes;
}

xercesc::AbstractDOMParser::ValSchemes Scheme(ParseSettings const& settings) {
    return settings.validate ? xercesc::AbstractDOMParser::Val_Auto : xercesc::AbstractDOMParser::Val_Never;
}

} // namespace

// A node the table does not hold (a text) gives the line of its nearest ancestor that it does.
unsigned int ParsedInput::LineOf(xercesc::DOMNode const* node) const {
    for (; node != nullptr; node = node->getParentNode()) {
        if (NodeLocationInfo const* info = lines->Find(node); info != nullptr && info->lineNumber != 0) {
            return info->lineNumber;
        }
    }
    return 0;
}

ParsedInput Parse(std::string const& name, ParseSettings const& settings) {
    ParsedInput input;
    NodeLocationInfo where;
    Tavo::UniString message;
    xercesc::DOMDocument* document = nullptr;
    if (name == "-") {
        std::string const bytes = ReadStandardInput();
        document = ParseXMLDoc(reinterpret_cast<unsigned char const*>(bytes.data()),
                               static_cast<unsigned int>(bytes.size()), Scheme(settings), false,
                               Tavo::UniString("-"), input.lines.get(), &where, &message);
    } else {
        std::error_code error;
        if (!std::filesystem::is_regular_file(name, error)) {
            input.readable = false;
            input.message = "cannot read the file";
            return input;
        }
        Vesk::Location const location(name.c_str());
        document = settings.parser != nullptr
                       ? settings.parser->Parse(location, Scheme(settings), false, input.lines.get(), &where,
                                                &message)
                       : ParseXMLDoc(location, Scheme(settings), false, input.lines.get(), &where, &message);
    }
    input.document.reset(document);
    input.line = where.lineNumber;
    input.message = Tavo::ToUTF8String(message);
    return input;
}

bool WriteOutput(std::string const& bytes, std::string const& path) {
    if (path.empty() || path == "-") {
        return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
    }
    std::filesystem::path const target(path);
    std::filesystem::path const temporary =
        target.parent_path() / ("." + target.filename().string() + "." + std::to_string(getpid()) + ".tmp");
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            std::error_code ignored;
            std::filesystem::remove(temporary, ignored);
            std::fprintf(stderr, "%s: cannot write\n", path.c_str());
            return false;
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::filesystem::remove(temporary, error);
        std::fprintf(stderr, "%s: cannot replace the file\n", path.c_str());
        return false;
    }
    return true;
}

} // namespace Tool
