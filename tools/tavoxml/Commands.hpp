// The subcommands of tavoxml. Each adds itself to the application; its callback reports the exit code
// through setResult.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>

namespace Tool {

void AddCheckCommand(CLI::App& app, std::function<void(int)> const& setResult);
void AddDiffCommand(CLI::App& app, std::function<void(int)> const& setResult);
void AddFormatCommand(CLI::App& app, std::function<void(int)> const& setResult);

} // namespace Tool
