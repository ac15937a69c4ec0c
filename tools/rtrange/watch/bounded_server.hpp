// A server whose visitors cost little, whatever they send and however slowly they read.
#pragma once

#include <memory>

namespace httplib {
class Server;
} // namespace httplib

namespace rtrange {

/// A server that answers each connection once, in one of so many threads. It refuses requests above
/// 16 kB and those that do not arrive within two seconds, or do not begin within half a second, and
/// disconnects whoever takes nothing for five seconds. When it is stopped, it waits for nobody.
std::unique_ptr<httplib::Server> make_bounded_server(int threads);

} // namespace rtrange
