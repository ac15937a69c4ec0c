// Ctrl-C.
#pragma once

namespace rtrange {

/// From here on, SIGINT and SIGTERM do not end the program: the work in hand looks at interrupted()
/// and completes its output.
void catch_interruptions();

/// Whether the user wants the work to stop.
bool interrupted();

} // namespace rtrange
