// tavoxml check: will this library accept this file, with its settings?
#include "tools/tavoxml/Commands.hpp"
#include "tools/tavoxml/Input.hpp"

#include <cstdio>

namespace Tool {

void AddCheckCommand(CLI::App& app, std::function<void(int)> const& setResult) {
    struct Settings {
        std::string schema;
        bool noValidate = false;
        bool quiet = false;
        std::vector<std::string> files;
    };
    auto settings = std::make_shared<Settings>();
    CLI::App* command = app.add_subcommand(
        "check",
        "Parse each FILE as the library does (line tracking; validation when a DTD or the schema asks "
        "for it) and print FILE: ok or FILE:LINE: message.");
    command->add_option("--schema", settings->schema, "Validate against this XML schema")
        ->check(CLI::ExistingFile);
    command->add_flag("--no-validate", settings->noValidate, "Check well-formedness only");
    command->add_flag("-q,--quiet", settings->quiet, "Print only the failures");
    command->add_option("files", settings->files, "Files to check; - reads standard input")->required();
    command->callback([settings, setResult] {
        ValidatingXMLParser parser;
        ParseSettings parse{!settings->noValidate, &parser};
        if (!settings->schema.empty()) {
            NodeLocationInfo where;
            Tavo::UniString message;
            if (!parser.LoadSchema(Vesk::Location(settings->schema.c_str()), &where, &message)) {
                std::fprintf(stderr, "%s:%u: %s\n", settings->schema.c_str(), where.lineNumber,
                             Tavo::ToUTF8String(message).c_str());
                setResult(ExitTrouble);
                return;
            }
        }
        int result = ExitGood;
        for (std::string const& file : settings->files) {
            ParsedInput const input = Parse(file, parse);
            if (!input.readable) {
                std::fprintf(stderr, "%s: %s\n", file.c_str(), input.message.c_str());
                result = ExitTrouble;
            } else if (!input.document) {
                std::printf("%s:%u: %s\n", file.c_str(), input.line, input.message.c_str());
                result = result == ExitTrouble ? ExitTrouble : ExitBad;
            } else if (!settings->quiet) {
                std::printf("%s: ok\n", file.c_str());
            }
        }
        setResult(result);
    });
}

} // namespace Tool
