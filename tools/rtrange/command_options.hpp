// Options that several commands have.
#pragma once

#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/rtrange/decode_command.hpp"
#include "tools/rtrange/run_options.hpp"

/// Arguments are UTF-8. A path made of a plain string would be in the system's code page on
/// Windows.
template <>
bool CLI::detail::lexical_cast(const std::string& argument, std::filesystem::path& file);

namespace rtrange {

inline constexpr const char* plugin_help = "Plug-in file (default: the one installed with rtrange)";

/// --overwrite.
void add_overwrite(CLI::App& parser, bool& overwrite);

/// The captures to decode.
CLI::Option* add_captures(CLI::App& parser, run_options& options);

/// The frames to decode: those of captures, or of an interface.
void add_source(CLI::App& parser, decode_options& options);

/// Which tables are written, and where. What the texts say depends on the command, here and below.
void add_tables(CLI::App& parser, decode_options& options, const char* output_help,
                const char* samples_help);

/// Which fields and units are shown.
void add_content(CLI::App& parser, selection_options& options, const char* fields_help);

/// How frames are decoded, and what is told of it.
void add_decoder(CLI::App& parser, run_options& options, const char* restart_gap_help);

/// Everything about a run of captures: content, times, decoder and view.
void add_run(CLI::App& parser, run_options& options);

} // namespace rtrange
