// rtrange watch: shows a run on a live page.
#pragma once

#include "tools/rtrange/decode_command.hpp"
#include "tools/rtrange/watch/listen_address.hpp"

namespace rtrange {

/// Arguments of the command.
struct watch_options {
    decode_options decode; ///< tables are written if there is an output
    listen_address listen{"127.0.0.1", 8080};
    double speed = 1.0; ///< of captures; 0: as fast as possible
};

/// Decodes captures, or the traffic of a network interface, and serves a page that shows them until
/// the user interrupts. Prints a summary. Returns the exit code. Throws failure when the address
/// cannot be listened on, or nothing could be decoded.
int watch(const watch_options& options);

} // namespace rtrange
