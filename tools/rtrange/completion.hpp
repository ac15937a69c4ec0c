// What can follow on a command line, for the completion of a shell.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace rtrange {

/// The hidden first argument with which the completion script asks.
inline constexpr const char* completion_command = "__complete";

/// Prints how the last of the words can be completed. `words` are those after the program's name,
/// as bash splits a command line: the last one is being typed and may be empty. The first line is
/// the kind of what follows: "words", "list" (a comma and further names may come after it),
/// "captures" or "files" (the shell knows them); then comes one candidate per line. The candidates
/// come from the parser, so that every option of every command is known.
void print_completions(const CLI::App& parser, std::vector<std::string> words);

} // namespace rtrange
