// Interruption by the user.
#pragma once

namespace rtrange {

/// From now on, SIGINT and SIGTERM only set interrupted(), so that the current command can complete
/// its output. A second signal ends the program at once.
void catch_interruptions();

/// Whether SIGINT or SIGTERM has been received.
bool interrupted();

} // namespace rtrange
