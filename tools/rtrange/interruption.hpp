// Interruption by the user.
#pragma once

namespace rtrange {

/// From now on, SIGINT, SIGTERM and (where it exists, unless it is ignored) SIGHUP only set
/// interrupted(), so that the current command can complete its output. Further signals are ignored
/// for two seconds; a later one ends the program at once.
void catch_interruptions();

/// Whether one of these signals has been received.
bool interrupted();

} // namespace rtrange
