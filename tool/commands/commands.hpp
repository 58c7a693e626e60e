#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

#include "terminal/tell.hpp"

namespace campotipo::tool {

// What the command that was asked for does; its result is the exit status.
using Action = std::function<int()>;

// Each adds one command with its arguments, and sets `action` if that command is chosen.
void add_types(CLI::App &app, Action &action);
void add_show(CLI::App &app, Action &action);
void add_make(CLI::App &app, Action &action);
void add_layout(CLI::App &app, Action &action);
void add_dump(CLI::App &app, Action &action);
void add_load(CLI::App &app, Action &action);
void add_check(CLI::App &app, Action &action);
void add_stats(CLI::App &app, Action &action);
void add_report(CLI::App &app, Action &action);
void add_document(CLI::App &app, Action &action);

// Answers the option --strict of earlier versions, so that nobody takes its absence for a change of
// what is refused.
void refuse_strict(CLI::App &command);

}  // namespace campotipo::tool
