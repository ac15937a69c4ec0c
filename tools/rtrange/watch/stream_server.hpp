// An HTTP server for connections of any kind.
#pragma once

#include <functional>
#include <string>

#include <httplib.h>

namespace rtrange {

/// A server that can be handed connections.
class stream_server : public httplib::Server {
public:
    /// Reads one request and answers it. Returns false if there was none to answer.
    bool answer(httplib::Stream& stream) { return answer(stream, &stream_server::process_request); }

private:
    using setup = std::function<void(httplib::Request&)>;

    bool answer(httplib::Stream& stream,
                bool (httplib::Server::*process)(httplib::Stream&, bool, bool&, const setup&)) {
        bool is_closed = false;
        return (this->*process)(stream, true, is_closed, nullptr);
    }

    /// Later versions of the library keep the addresses, which nobody here asks for.
    bool answer(httplib::Stream& stream,
                bool (httplib::Server::*process)(httplib::Stream&, const std::string&, int,
                                                 const std::string&, int, bool, bool&,
                                                 const setup&)) {
        bool is_closed = false;
        return (this->*process)(stream, "", 0, "", 0, true, is_closed, nullptr);
    }
};

} // namespace rtrange
