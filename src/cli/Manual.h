#pragma once

#include <ostream>

#include <CLI/CLI.hpp>

// What is installed beside the tool, made of its commands and options as they stand, so that it never tells of others.
namespace tallymar::cli {

// Its page of the manual, as the man command reads it.
void WriteManual(const CLI::App& app, std::ostream& out);
// Completion of commands, options, choices and file names for bash.
void WriteCompletion(const CLI::App& app, std::ostream& out);

}  // namespace tallymar::cli
