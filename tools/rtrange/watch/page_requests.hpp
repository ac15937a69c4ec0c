// Which requests the server of the live page answers.
#pragma once

#include <functional>

#include "tools/rtrange/watch/listen_address.hpp"

namespace httplib {
struct Response;
class Server;
} // namespace httplib

namespace rtrange {

/// The two answers of the live page. Each is called with status 200, and sets the content.
struct page_answers {
    std::function<void(httplib::Response&)> page;   ///< to "/"
    std::function<void(httplib::Response&)> events; ///< to "/events"
};

/// Lets a server that is reached at this address give the two answers and refuse everything else.
/// May be called until the server answers requests.
void answer_requests(httplib::Server& server, const listen_address& address, page_answers answers);

} // namespace rtrange
