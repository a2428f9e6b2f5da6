// tavoxml: one command for the everyday questions around the library.
//   tavoxml check [--schema FILE.xsd] [--no-validate] [--quiet] FILE...
//   tavoxml diff [--eps X] [--attr-ruled] [--skip-whitespace] [--case-sensitive] LEFT RIGHT
//   tavoxml format [--encoding NAME] [--output FILE] FILE
// Exit codes: 0 good or equal, 1 invalid or different, 2 trouble (missing file, bad option).
#include "tools/tavoxml/Commands.hpp"
#include "tools/tavoxml/Input.hpp"

int main(int argc, char** argv) {
    CLI::App app("Check, compare and format XML documents the way TavoXMLUtils reads and writes them.",
                 "tavoxml");
    app.require_subcommand(1);
    int result = Tool::ExitGood;
    auto const setResult = [&result](int code) { result = code; };
    Tool::AddCheckCommand(app, setResult);
    Tool::AddDiffCommand(app, setResult);
    Tool::AddFormatCommand(app, setResult);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        int const code = app.exit(error);
        return code == 0 ? Tool::ExitGood : Tool::ExitTrouble;
    }
    return result;
}
