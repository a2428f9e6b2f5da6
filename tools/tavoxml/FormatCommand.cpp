// tavoxml format: the document printed by the library's own formatter in a chosen encoding.
#include "tools/tavoxml/Commands.hpp"
#include "tools/tavoxml/Input.hpp"

#include <cstdio>

namespace Tool {

void AddFormatCommand(CLI::App& app, std::function<void(int)> const& setResult) {
    struct Settings {
        std::string encoding = "UTF-8";
        std::string output;
        std::string file;
    };
    auto settings = std::make_shared<Settings>();
    CLI::App* command =
        app.add_subcommand("format", "Print FILE with the library's formatter (a byte-order mark and an XML "
                                     "declaration for the encoding come first).");
    command
        ->add_option("-e,--encoding", settings->encoding, "Output encoding, e.g. UTF-8, UTF-16LE, ISO-8859-1")
        ->capture_default_str();
    command->add_option("-o,--output", settings->output, "Write to this file instead of standard output");
    command->add_option("file", settings->file, "The document; - reads standard input")->required();
    command->callback([settings, setResult] {
        ParsedInput const input = Parse(settings->file, ParseSettings{false, nullptr});
        if (!input.document) {
            std::fprintf(stderr, "%s:%u: %s\n", settings->file.c_str(), input.line, input.message.c_str());
            setResult(input.readable ? ExitBad : ExitTrouble);
            return;
        }
        Tavo::MemoryOChannel bytes;
        Tavo::UniString const encoding(settings->encoding.c_str(), TavoCharCodeUTF8);
        if (!FormatXMLDoc(input.document.get(), &bytes, encoding.GetUStr(), true)) {
            std::fprintf(stderr, "%s: cannot be written in %s\n", settings->file.c_str(),
                         settings->encoding.c_str());
            setResult(ExitTrouble);
            return;
        }
        setResult(WriteOutput(bytes.GetData(), settings->output) ? ExitGood : ExitTrouble);
    });
}

} // namespace Tool
